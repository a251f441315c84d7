#include "export/export3d.h"
#include "export/guard.h"
#include "live/live.h"
#include "live/oscillator_block.h"
#include "live/shared.h"
#include "store/console.h"
#include "store/settings.h"
#include "synth/sound.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <vector>

// Every frame holds all tracks at one time, so the partials are sampled on a grid. Time only
// grows from frame to frame, and so does, in each partial, the place of the first point behind
// it: the search goes on from the frame before instead of starting at the partial's head.

namespace {

constexpr double least_step = 0.001;        // seconds
constexpr double frames_per_step = 512.0;   // at the sample rate, of the step where none is given
constexpr double largest_part = 0.25;       // of the sound, that a step may take
constexpr double nudge = 0.001;             // seconds, see sample_whole
constexpr float unselected_level = -100.0f; // dB, where a selection fades out

/// One partial on its way through the grid.
struct Track {
    const Breakpoint *points;
    int32_t n;
    int32_t later;  // at least 1: all points before it, but the first, are not behind the time
    bool ascending; // in time
};

/// What a row is made of: the segment and its levels at both ends.
struct Segment {
    const Breakpoint *left;
    const Breakpoint *right;
    float right_amp;
    float ceiling; // Hz
};

bool ascends(const Breakpoint *points, int32_t n) {
    for (int32_t j = 0; j + 1 < n; ++j) {
        if (!(points[j].time <= points[j + 1].time)) {
            return false;
        }
    }
    return true;
}

LiveCandidate sample(const Segment &segment, float t) {
    const Breakpoint &a = *segment.left;
    const Breakpoint &b = *segment.right;
    LiveCandidate row = {};
    row.time = t;
    row.freq = linear_interpolation(t, b.time, a.time, b.freq, a.freq);
    row.freq = row.freq > segment.ceiling ? segment.ceiling : row.freq;
    row.freq = row.freq < 0.0f ? -row.freq : row.freq;
    const float level = linear_interpolation(t, b.time, a.time, segment.right_amp, a.amp);
    row.amp = db2amp(level) * peek(live_gain);
    row.phase = linear_interpolation(t, b.time, a.time, b.phase, a.phase);
    row.status = 1;
    return row;
}

/// Moves on to the first point behind `t`; false when there is none.
bool find_later(Track &track, float t) {
    while (track.later < track.n && !(track.points[track.later].time > t)) {
        ++track.later;
    }
    return track.later < track.n;
}

/// The row of track i at `t`, status 0 for none. Each row but that of track 0 moves `t` on, for
/// the rest of the frame and of the run.
LiveCandidate sample_whole(Track &track, int32_t i, float &t) {
    constexpr float ceiling = 20000.0f; // Hz
    if (track.n < 2 || !(t >= track.points[0].time && t <= track.points[track.n - 1].time) ||
        !find_later(track, t)) {
        return {};
    }
    if (i != 0) {
        t = static_cast<float>(static_cast<double>(t) + nudge);
        std::fputs("ascending time order error present", stdout);
    }
    const Breakpoint *right = track.points + track.later;
    return sample({right - 1, right, right->amp, ceiling}, t);
}

/// Whether segment j is selected and holds `t`.
bool selected_at(const Track &track, int32_t j, float t) {
    const Breakpoint &left = track.points[j];
    const Breakpoint &right = track.points[j + 1];
    return (right.selected != 0 || left.selected == 1) && t >= left.time && t < right.time;
}

/// The last selected segment that holds `t`, -1 for none. Where times ascend at most one does.
int32_t selected_segment(Track &track, float t) {
    if (track.ascending) {
        return find_later(track, t) && selected_at(track, track.later - 1, t) ? track.later - 1
                                                                              : -1;
    }
    int32_t last = -1;
    for (int32_t j = 0; j + 1 < track.n; ++j) {
        last = selected_at(track, j, t) ? j : last;
    }
    return last;
}

LiveCandidate sample_selected(Track &track, float t) {
    constexpr float ceiling = 22050.0f; // Hz
    const int32_t j = track.n < 2 ? -1 : selected_segment(track, t);
    if (j == -1) {
        return {};
    }
    const Breakpoint *right = track.points + j + 1;
    return sample({right - 1, right, right->selected != 0 ? right->amp : unselected_level, ceiling},
                  t);
}

/// Leaves a row where the zone player looks for it.
void show_candidate(int32_t i, const LiveCandidate &row) {
    if (qcandidates == nullptr) {
        return; // before start-up has allocated them
    }
    LiveCandidate &candidate = qcandidates[i];
    if (row.status == 1) {
        poke(candidate.time, row.time);
        poke(candidate.freq, row.freq);
        poke(candidate.amp, row.amp);
        poke(candidate.phase, row.phase);
    }
    poke(candidate.status, row.status);
}

/// The export's frames, one after another.
class Frames {
  public:
    Frames(Breakpoint *const *points, const int32_t *counts, int32_t count, bool selection)
        : selection(selection), rows(static_cast<size_t>(count)) {
        for (int32_t i = 0; i < count; ++i) {
            tracks.push_back({points[i], counts[i], 1, ascends(points[i], counts[i])});
        }
    }

    /// Appends the frame at `t`, which comes back as the time that its head carries.
    void write(ExportText &text, float &t) {
        int32_t active = 0;
        for (size_t k = 0; k < rows.size(); ++k) {
            const auto i = static_cast<int32_t>(k);
            rows[k] = selection ? sample_selected(tracks[k], t) : sample_whole(tracks[k], i, t);
            show_candidate(i, rows[k]);
            active += rows[k].status;
        }
        text.print("\n1TRC\t1\t0\t%f\n", static_cast<double>(t));
        text.print("  1TRC\t0x0004\t%d\t4\n", active);
        for (size_t k = 0; k < rows.size(); ++k) {
            if (rows[k].status == 1) {
                write_row(text, static_cast<int32_t>(k) + 1, rows[k]);
            }
        }
    }

  private:
    static void write_row(ExportText &text, int32_t index, const LiveCandidate &row) {
        text.put("\t");
        text.whole(index);
        for (const float value : {row.freq, row.amp, row.phase}) {
            text.put("\t");
            text.fixed(value, 0, 6);
        }
        text.put("\n");
    }

    bool selection;
    std::vector<Track> tracks;
    std::vector<LiveCandidate> rows;
};

void write_head(ExportText &text, const tm &now) {
    static const char *const days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char *const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    text.put("SDIF\n\n");
    text.put("1NVT\n{\n");
    text.print("Date\t%s %s %d %d:%d:%d ", days[now.tm_wday], months[now.tm_mon], now.tm_mday,
               now.tm_hour, now.tm_min, now.tm_sec);
    text.print("%d ;\n", now.tm_year + 1900);
    text.put("TableName\tSinusoidalTracks;\n");
    text.print("WrittenBy\t%s_Version_%s;\n}\n\n\nSDFC\n", app_name, version);
}

/// Prints what was appended from `mark` on, then lets the file have it.
void echo(NewFile &file, size_t mark) {
    const std::string_view part = file.text.since(mark);
    std::fwrite(part.data(), 1, part.size(), stdout);
    file.drain();
}

/// Asks for the step, in seconds. False at the end of input.
bool read_step(float &step, float end) {
    const auto usual = static_cast<float>(frames_per_step / R);
    step = usual;
    say("Enter time step:\t");
    if (!read_float(step) && std::feof(stdin)) {
        return false;
    }
    if (static_cast<double>(step) < least_step) {
        step = usual;
    }
    if (static_cast<double>(step) > static_cast<double>(end) * largest_part) {
        step = static_cast<float>(static_cast<double>(end) * largest_part);
    }
    return true;
}

void write_grid(NewFile &file, Frames &frames, float start, float end, float step) {
    float t = start;
    while (t < end && file.good()) {
        const size_t mark = file.text.size();
        const float before = t;
        frames.write(file.text, t);
        echo(file, mark);
        t += step;
        if (!(t > before)) {
            return; // so late that the step is lost in the width: no further frame would come
        }
    }
}

} // namespace

void sdif(float start, float end, float, Breakpoint *const *points, const int32_t *counts,
          int32_t count, int32_t selection) {
    const time_t seconds = std::time(nullptr);
    tm now = {};
    localtime_r(&seconds, &now);
    std::printf("Quillgrove > Export %s partials to SDIF file\n",
                selection == 0 ? "all" : "selected");
    char name[path_size] = "";
    std::puts("Enter file name: ");
    std::fputs(name_prompt, stdout);
    float step;
    NewFile file;
    if (!read_path(name, true) || !read_step(step, end) || !pass_guard(file, name, plain_guard)) {
        return;
    }
    const int32_t tracks = std::min(count, most_oscillators);
    poke(numbOfCands, tracks);
    Frames frames(points, counts, tracks, selection != 0);
    write_head(file.text, now);
    echo(file, 0);
    write_grid(file, frames, start, end, step);
    const size_t mark = file.text.size();
    file.text.put("\nENDC\nENDF\n");
    echo(file, mark);
    file.finish();
}
