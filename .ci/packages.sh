# The Debian packages that Quillgrove is built, run and tested with. Sourced by ./run and ./test.

build_packages=(build-essential cmake freeglut3-dev libgl-dev libglu1-mesa-dev libhwy-dev
    librtaudio-dev librtmidi-dev libasound2-dev pkg-config)
# What ./run shows the window with where no display is found.
show_packages=(xvfb libgl1-mesa-dri x11-utils x11-apps xdotool netpbm)
test_packages=(git libgtest-dev libbenchmark-dev libx11-dev xvfb libgl1-mesa-dri xdotool
    clang-14 libclang-rt-14-dev clang-format-14 clang-tidy-14 sox sndfile-programs pulseaudio
    pulseaudio-utils jackd2 libjack-jackd2-dev x11-apps netpbm python3)

# Prints those of the packages that are not installed.
missing_packages() {
    local package
    for package in "$@"; do
        if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            echo "$package"
        fi
    done
}

# Installs those of the packages that are missing; asks nothing.
install_packages() {
    local missing as_root=()
    if ! command -v dpkg-query >/dev/null; then
        echo "This system has no Debian packages; these are taken to be here: $*"
        return 0
    fi
    mapfile -t missing < <(missing_packages "$@")
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    echo "Installing ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq </dev/null
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null >/dev/null
}
