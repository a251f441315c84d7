#include "synth/voices.h"

#include "live/shared.h"
#include "synth/sound.h"

#include <algorithm>

namespace {

/// Level of a point, kept for the segment behind it, which starts from the same one.
class Levels {
  public:
    explicit Levels(const Breakpoint *point) : point_(point) {}

    float at(int32_t i) {
        if (i == index_) {
            return level_;
        }
        index_ = i;
        return level_ = db2amp(point_[i].amp);
    }

  private:
    const Breakpoint *point_;
    int32_t index_ = -1;
    float level_ = 0.0f;
};

/// The segment from point i of partial p to the next, without its end.
Segment slopes(int32_t p, int32_t i, Levels &levels, const OscillatorRate &rate) {
    const Breakpoint *at = parray[p] + i;
    const float from = levels.at(i);
    const float to = levels.at(i + 1);
    const float da = ((to - from) / (at[1].time - at[0].time)) / rate.per_sec;
    return {from, da, at[0].freq, find_tanfreq(p, i) / rate.per_sec, 0};
}

void fade_segment(Segment &segment, int32_t p, int32_t i, bool fade_in, Levels &levels,
                  const OscillatorRate &rate) {
    const Breakpoint *at = parray[p] + i;
    const float seconds = at[1].time - at[0].time;
    const float level = segment.a;
    if (fade_in) {
        segment.da = (levels.at(i + 1) / seconds) / rate.per_sec;
        segment.a = 0.0f;
    }
    if (peek(at[1].selected) == 0) {
        segment.da = ((0.0f - level) / seconds) / rate.per_sec;
    }
}

void open_voice(VoiceList &list, float phase, int64_t first) {
    Voice voice = {};
    voice.o.ph = phase;
    voice.first = voice.stop = voice.end = first;
    list.voices.push_back(voice);
}

void append_segment(VoiceList &list, Segment segment, int64_t stop) {
    segment.stop = stop;
    list.segments.push_back(segment);
    list.voices.back().end = stop;
}

/// Notes where the last voice ends; forgets it when it has no frames.
void close_voice(VoiceList &list) {
    if (list.voices.back().first == list.voices.back().end) {
        list.voices.pop_back();
        return;
    }
    list.ends_.push_back(list.segments.size());
}

} // namespace

void VoiceList::clear() {
    segments.clear();
    voices.clear();
    ends_.clear();
}

void VoiceList::finish() {
    size_t from = 0;
    for (size_t v = 0; v < voices.size(); ++v) {
        voices[v].next = segments.data() + from;
        voices[v].behind = segments.data() + ends_[v];
        from = ends_[v];
    }
}

bool orderly(int32_t p) {
    const Breakpoint *point = parray[p];
    for (int32_t i = 0; i < npoints[p]; ++i) {
        if (peek(point[i].selected) > 1) {
            return false;
        }
        // Also false where a time is no number, or below 0.
        if (!(point[i].time >= (i > 0 ? point[i - 1].time : 0.0f))) {
            return false;
        }
    }
    return true;
}

void append_partial(VoiceList &list, int32_t p, int64_t frames) {
    const Breakpoint *point = parray[p];
    const int32_t last = npoints[p] - 1;
    if (last < 1) {
        return;
    }
    const OscillatorRate rate = oscillator_rate(R);
    Levels levels(point);
    int64_t n = frame_of(point[0].time, rate.hz);
    open_voice(list, point[0].phase, n);
    for (int32_t i = 0; i < last && n < frames; ++i) {
        const int64_t stop = std::min(frame_of(point[i + 1].time, rate.hz), frames);
        if (stop > n) {
            append_segment(list, slopes(p, i, levels, rate), stop);
            n = stop;
        }
    }
    close_voice(list);
}

namespace {

/// Appends the stretch from point i on. Returns the point that ended it.
int32_t append_stretch(VoiceList &list, int32_t p, int32_t i, StretchFade &fade, int64_t frames) {
    const Breakpoint *point = parray[p];
    const OscillatorRate rate = oscillator_rate(R);
    const int64_t end = frame_of(point[npoints[p] - 1].time, rate.hz);
    Levels levels(point);
    int64_t n = frame_of(point[i].time, rate.hz);
    open_voice(list, point[i].phase, n);
    for (;;) {
        const bool fade_in = fade.due;
        fade.due = false;
        if (n >= end) {
            break;
        }
        const int64_t next = frame_of(point[i + 1].time, rate.hz);
        const int64_t stop = std::min(next, frames);
        if (stop > n) {
            Segment segment = slopes(p, i, levels, rate);
            fade_segment(segment, p, i, fade_in, levels, rate);
            append_segment(list, segment, stop);
        }
        if (next > n && next >= end) {
            i = npoints[p] - 1; // the partial is done
            break;
        }
        n = next;
        ++i;
        if (peek(point[i].selected) == 0) {
            fade.due = true;
            break;
        }
    }
    close_voice(list);
    return i;
}

} // namespace

void append_stretches(VoiceList &list, int32_t p, StretchFade &fade, int64_t frames) {
    const Breakpoint *point = parray[p];
    for (int32_t i = 0; i < npoints[p]; ++i) {
        if (peek(point[i].selected) != 1) {
            continue;
        }
        if (fade.look_behind && i > 0 && peek(point[i - 1].selected) == 0) {
            fade.due = true;
        }
        i = append_stretch(list, p, i, fade, frames);
    }
}
