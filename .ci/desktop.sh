# Drives Quillgrove in its window on a virtual display. Sourced by ./run, docs/make-pictures,
# docs/try-walks and tests/package/try; who sources it sets `program`, `arguments` and `out`, the
# folder to work in.

fail() {
    echo "$0: $*" >&2
    exit 1
}

scratch= server= child= window=

clean_up() {
    local pid
    for pid in $child $server; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    [ -z "$scratch" ] || rm -rf "$scratch"
}

# Runs the command up to `seconds` long until it succeeds, as long as Quillgrove runs.
wait_for() {
    local seconds=$1 end
    shift
    end=$((SECONDS + seconds))
    until "$@"; do
        if [ -n "$child" ] && ! kill -0 "$child" 2>/dev/null; then
            cat "$out/console.txt" >&2
            fail "Quillgrove ended before its time"
        fi
        [ $SECONDS -lt $end ] || return 1
        sleep 0.1
    done
}

start_virtual_display() {
    Xvfb -displayfd 3 -noreset -screen 0 1280x1024x24 3>"$scratch/display" >/dev/null 2>&1 &
    server=$!
    wait_for 20 test -s "$scratch/display" || fail "the virtual display did not start"
    DISPLAY=:$(cat "$scratch/display")
    export DISPLAY
}

# Quillgrove works in out/, reads what is written to descriptor 4 and prints to console.txt.
start_program() {
    mkfifo "$scratch/input"
    (cd "$out" && exec "$program" "${arguments[@]}" <"$scratch/input" >console.txt 2>&1) &
    child=$!
    exec 4>"$scratch/input"
}

find_window() {
    window=$(xdotool search --onlyvisible --name '^Quillgrove: ' 2>/dev/null | head -n 1)
    [ -n "$window" ]
}

show_window() {
    wait_for 60 find_window || {
        cat "$out/console.txt" >&2
        fail "no window came up"
    }
    echo "Window: $(xdotool getwindowname "$window")"
}

take_picture() {
    xwd -silent -id "$window" | xwdtopnm 2>/dev/null >"$1"
}

# Two pictures taken one after the other are the same and hold more than one colour.
picture_stands() {
    take_picture "$scratch/first.ppm"
    sleep 0.3
    take_picture "$scratch/second.ppm"
    cmp -s "$scratch/first.ppm" "$scratch/second.ppm" && [ "$(colours)" -gt 1 ]
}

colours() {
    ppmhist -noheader "$scratch/second.ppm" 2>/dev/null | wc -l
}

console_says() {
    grep -qF -- "$1" "$out/console.txt"
}

# Sets `menu_width` to the width of the menu whose top left is there.
find_menu() {
    local id X Y WIDTH
    for id in $(xdotool search --onlyvisible --name '^freeglut menu$' 2>/dev/null); do
        X='' Y='' WIDTH=''
        eval "$(xdotool getwindowgeometry --shell "$id" 2>/dev/null | grep -E '^(X|Y|WIDTH)=[0-9]+$')"
        if [ "$X" = "$1" ] && [ "$Y" = "$2" ]; then
            menu_width=$WIDTH
            return 0
        fi
    done
    return 1
}

no_menu_shows() {
    [ -z "$(xdotool search --onlyvisible --name '^freeglut menu$' 2>/dev/null)" ]
}

# Opens the pop-up menu and chooses an entry: the row in each menu on the way, counted from 1.
# Rows are 25 pixels high within a border of 2. The pointer goes straight from row to row, so that
# no other row opens its submenu.
choose_entry() {
    local X Y row menu_width x y
    eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y)=[0-9]+$')"
    x=$((X + 20)) y=$((Y + 20))
    xdotool mousemove $((x - 1)) $y mousemove $x $y sleep 0.05 mousedown 3 sleep 0.05 mouseup 3
    for row in "$@"; do
        wait_for 20 find_menu $x $y || fail "the menu did not show on the way $*"
        X=$((x + menu_width / 2)) Y=$((y + 14 + 25 * (row - 1)))
        xdotool mousemove $((X - 1)) $Y sleep 0.05 mousemove $X $Y sleep 0.05
        x=$((x + menu_width)) y=$((y + 25 * (row - 1)))
    done
    xdotool mousedown 1 sleep 0.05 mouseup 1
    wait_for 20 no_menu_shows || fail "the menu did not close after the choice $*"
}

# ---- Hands -----------------------------------------------------------------------------------

# Opens a display of its own, gone with what was started on it when the script ends.
open_display() {
    scratch=$(mktemp -d)
    trap clean_up EXIT
    start_virtual_display
}

# Starts Quillgrove on the arguments given, in a window of `width` by `height` pixels.
open_analysis() {
    arguments=("$@")
    start_program
    show_window >/dev/null
    xdotool windowsize --sync "$window" "$width" "$height" mousemove --window "$window" 5 "$height"
    wait_for 30 picture_stands || fail "the window's picture never stands still"
}

# Ends Quillgrove by the menu's last entry.
quit_program() {
    choose_entry 8
    wait "$child" || fail "Quillgrove ended with status $?"
    child=
    exec 4>&-
    rm "$scratch/input"
}

# Types a line in the terminal.
reply() {
    printf '%s\n' "$1" >&4
}

# Waits for a text on the console.
heard() {
    wait_for 60 console_says "$1" || {
        cat "$out/console.txt" >&2
        fail "the console never said: $1"
    }
}

# Sets `px` and `py` to the desktop's pixel of a time in ms and a frequency in Hz, in the linear
# flat view of an analysis that ends at `end_ms` and reaches up to `top_hz`. The box of the
# picture begins at 11.83 % of the window and takes 76.35 % of it, both ways.
at() {
    local X Y
    eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y)=[0-9]+$')"
    px=$((X + (width * 1183 + width * 7635 * $1 / end_ms) / 10000))
    py=$((Y + height - (height * 1183 + height * 7635 * $2 / top_hz) / 10000))
}

click() {
    at "$1" "$2"
    xdotool mousemove $((px - 1)) $py mousemove $px $py sleep 0.05 mousedown 1 sleep 0.05 mouseup 1 \
        sleep 0.1
}

# drag BUTTON MODIFIER|"" FROM_MS FROM_HZ TO_MS TO_HZ
drag() {
    local x y step moves=() keys=() back=()
    [ -z "$2" ] || keys=(keydown "$2") back=(keyup "$2")
    at "$3" "$4"
    x=$px y=$py
    at "$5" "$6"
    for step in 1 2 3 4 5; do
        moves+=(mousemove $((x + (px - x) * step / 5)) $((y + (py - y) * step / 5)) sleep 0.05)
    done
    xdotool mousemove $x $y sleep 0.05 "${keys[@]}" mousedown "$1" sleep 0.05 "${moves[@]}" \
        mouseup "$1" "${back[@]}" sleep 0.1
}

# Strokes a key, as xdotool names it, over the window.
press() {
    xdotool mousemove --window "$window" 8 8 key "$@" sleep 0.1
}
