// The oscillator bank, plain form.
#include "synth/plain_bank.h"

#include "live/shared.h"
#include "synth/oscillator.h"
#include "synth/sound.h"

#include <algorithm>

namespace {

/// Sets the oscillator on point i of partial p, on its way to the next point. The phase stays.
void start_segment(Oscillator &o, int32_t p, int32_t i, const OscillatorRate &rate) {
    const Breakpoint *at = parray[p] + i;
    o.a = db2amp(at[0].amp);
    o.da = ((db2amp(at[1].amp) - o.a) / (at[1].time - at[0].time)) / rate.per_sec;
    o.f = at[0].freq;
    o.df = find_tanfreq(p, i) / rate.per_sec;
}

/// The same for a segment of a selected stretch: a due fade-in starts it from silence, an
/// unselected next point makes it run down to silence.
void start_stretch_segment(Oscillator &o, int32_t p, int32_t i, bool fade_in,
                           const OscillatorRate &rate) {
    const Breakpoint *at = parray[p] + i;
    const float seconds = at[1].time - at[0].time;
    start_segment(o, p, i, rate);
    const float level = o.a;
    if (fade_in) {
        o.da = (db2amp(at[1].amp) / seconds) / rate.per_sec;
        o.a = 0.0f;
    }
    if (peek(at[1].selected) == 0) {
        o.da = ((0.0f - level) / seconds) / rate.per_sec;
    }
}

/// One selected stretch of a partial, on its walk from point to point.
class Stretch {
  public:
    Stretch(int32_t p, int32_t first, StretchFade &fade, const OscillatorRate &rate)
        : p_(p), i_(first), point_(parray[p]), fade_(fade), rate_(rate),
          end_(frame_of(point_[npoints[p] - 1].time, rate.hz)) {
        o_.ph = point_[first].phase;
    }

    /// Adds the stretch to out[0..frames). Returns the point that ended it.
    int32_t render(float *out, int64_t frames) {
        if (!start()) {
            return i_;
        }
        while (n_ < end_) {
            if (next_ <= n_) {
                ++i_;
                if (peek(point_[i_].selected) == 0) {
                    fade_.due = true;
                    return i_;
                }
                if (peek(point_[i_].selected) == 1) {
                    if (!start()) {
                        return i_;
                    }
                    continue;
                }
                next_ = frame_of(point_[i_ + 1].time, rate_.hz);
            }
            if (n_ >= frames) { // nothing is heard any more; only the walk goes on
                n_ = std::max(n_ + 1, next_);
                continue;
            }
            advance(o_, rate_.per_hz);
            out[n_] += sample_at(o_.ph, o_.a);
            ++n_;
        }
        return npoints[p_] - 1;
    }

  private:
    /// Starts the segment at the present point; false where nothing is left to render. A due
    /// fade-in is used up in either case.
    bool start() {
        const bool fade_in = fade_.due;
        fade_.due = false;
        n_ = frame_of(point_[i_].time, rate_.hz);
        if (n_ >= end_) {
            return false;
        }
        start_stretch_segment(o_, p_, i_, fade_in, rate_);
        next_ = frame_of(point_[i_ + 1].time, rate_.hz);
        return true;
    }

    int32_t p_;
    int32_t i_; // the point that the running segment started from
    const Breakpoint *point_;
    StretchFade &fade_;
    const OscillatorRate &rate_;
    int64_t end_;      // frame of the partial's last point
    int64_t n_ = 0;    // present frame
    int64_t next_ = 0; // frame of the next point
    Oscillator o_ = {};
};

} // namespace

void plain_partial(int32_t p, float *out, int64_t frames) {
    const Breakpoint *point = parray[p];
    const int32_t last = npoints[p] - 1;
    if (last < 1) {
        return;
    }
    const OscillatorRate rate = oscillator_rate(R);
    const int64_t end = frame_of(point[last].time, rate.hz);
    Oscillator o = {};
    o.ph = point[0].phase;
    for (int32_t i = 0; i < last; ++i) {
        int64_t n = frame_of(point[i].time, rate.hz);
        const int64_t stop = std::min(frame_of(point[i + 1].time, rate.hz), end);
        if (n >= stop) {
            continue; // no frames: the slopes, infinite where two times are equal, are not used
        }
        if (n < frames) {
            start_segment(o, p, i, rate);
        }
        for (const int64_t heard = std::min(stop, frames); n < heard; ++n) {
            advance(o, rate.per_hz);
            out[n] += sample_at(o.ph, o.a);
        }
        if (stop == end) {
            return;
        }
    }
}

void plain_stretches(int32_t p, StretchFade &fade, float *out, int64_t frames) {
    const OscillatorRate rate = oscillator_rate(R);
    for (int32_t i = 0; i < npoints[p]; ++i) {
        if (peek(parray[p][i].selected) != 1) {
            continue;
        }
        if (fade.look_behind && i > 0 && peek(parray[p][i - 1].selected) == 0) {
            fade.due = true;
        }
        i = Stretch(p, i, fade, rate).render(out, frames);
    }
}
