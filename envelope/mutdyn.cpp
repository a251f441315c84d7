// The envelope that moves: all pairs of neighbouring frames of a file, one after another.

#include "envelope/lpcf.h"
#include "envelope/mutate.h"
#include "envelope/source_filter.h"
#include "export/export3d.h"
#include "store/console.h"
#include "store/settings.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr int32_t offer_residual = 4;
constexpr int32_t take_flat_shape = 41;
constexpr int32_t save_residual = 44;

/// What one run of mutdyn works with.
struct Run {
    Breakpoint **parray;
    PartialEval *peval;
    const int32_t *npoints;
    LpcFrame a, b; // the span at hand
    float scale;   // seconds of the sound a second of the file
    float power;   // share that a point keeps of its own level
    int32_t dbmode;
};

/// "y" to the residual. False, too, where the input ends.
bool wants_residual() {
    char reply[lpc_text_room];
    say("Create residual? (y/n)");
    say("\n>\t");
    return read_word(reply, sizeof reply) && std::strcmp(reply, "y") == 0;
}

/// dB of a flat partial of `count` points at point `j`.
float flat_level(int32_t j, int32_t count) {
    if (j == 0) {
        return -42.0f;
    }
    if (j == count - 2) {
        return -24.0f;
    }
    return j == count - 1 ? -120.0f : -36.0f;
}

void flatten(const Run &run) {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < run.npoints[i]; ++j) {
            run.parray[i][j].amp = flat_level(j, run.npoints[i]);
        }
    }
}

/// A count below 0, above the type or not a number is shown as 0.
int32_t shown_count(const LpcRecord &head) {
    return head.freq > 0.0 && head.freq < INT32_MAX ? static_cast<int32_t>(head.freq) : 0;
}

void filter_span(const Run &run, const char *format) {
    std::printf(format, run.scale * run.a[0]->amp, shown_count(*run.a[0]),
                run.scale * run.b[0]->amp, shown_count(*run.b[0]));
    source_filter(run.scale, run.parray, run.peval, run.a, run.b, run.npoints, run.dbmode,
                  run.power);
}

/// A file is in dB when more than nine in ten of its first frame's points hold something
/// negative.
bool is_in_db(LpcFrame frame, int32_t p) {
    const int32_t records = lpc_records(frame);
    double negatives = 0;
    for (int32_t j = 1; j <= p && j < records; ++j) {
        negatives += frame[j]->amp < 0.0 ? 1 : 0;
        negatives += frame[j]->freq < 0.0 ? 1 : 0;
    }
    return p > 0 && negatives / p > 0.9;
}

/// Reads the frames and filters by each pair.
void filter_all(Run &run, int16_t p) {
    if (run.a == nullptr || run.b == nullptr) {
        return; // no memory for them
    }
    lpcf_read(run.a, p);
    lpcf_read(run.b, p);
    run.dbmode = is_in_db(run.a, p) ? 1 : 0;
    filter_span(run, "%f\t%d\t\t%f\t%d\n");
    while (lpcf_size.frames > 3 && !afPtr.ended) {
        copySpectra(run.a, run.b, p);
        lpcf_read(run.b, p);
        if (afPtr.ended) {
            Oerror = lpc_ended;
            std::puts("at EOF");
            return;
        }
        filter_span(run, "%f  %d\t\t%f  %d\n");
    }
}

void lower(Breakpoint &point, double step) {
    point.amp = static_cast<float>(point.amp - step);
}

/// Lower partials end more gently.
void shape_end(Breakpoint *points, int32_t count) {
    struct Step {
        float below; // Hz
        double loss; // dB
    };
    constexpr Step steps[] = {{2400.0f, 6.0}, {1920.0f, 7.0}, {960.0f, 10.0}, {240.0f, 12.0}};
    constexpr float low = 240.0f; // Hz
    const float freq = points[count - 1].freq;
    lower(points[count - 1], 72.0);
    for (const Step &step : steps) {
        if (count > 1 && freq < step.below) {
            lower(points[count - 2], step.loss);
        }
    }
    if (freq < low && count > 2) {
        lower(points[count - 3], 12.0);
    }
    if (freq < low && points[0].time > 0.25) {
        lower(points[0], 8.0);
    }
}

/// Allocates a frame of `p` points where there is none and marks that. True when it did.
bool provide(LpcFrame &frame, int32_t p, uint8_t &mark) {
    if (lpc_records(frame) > 0) {
        return false;
    }
    frame = lpc_initialize(0, p);
    mark = 1;
    return true;
}

void release(LpcFrame &frame) {
    clear_lpc(frame, lpc_records(frame));
    frame = nullptr;
}

/// The residual's shape for the modes that want it, saved for those that keep it, and the share
/// of their own levels that the points keep.
void prepare(Run &run, int32_t mode) {
    const bool residual = mode == offer_residual && wants_residual();
    if (residual || mode == take_flat_shape || mode == save_residual) {
        flatten(run);
    }
    run.power = mode == save_residual || residual ? 0.0f : 1.0f;
    if (mode == save_residual || residual) {
        char name[list_path_size] = "residual";
        audiosculpt3d(run.parray, run.npoints, partials, name);
        std::putchar('\n');
    }
}

} // namespace

int16_t mutdyn(float duration, Breakpoint **parray, PartialEval *peval, LpcFrame frameA,
               LpcFrame frameB, const int32_t *npoints, int32_t mode) {
    Run run = {parray, peval, npoints, frameA, frameB, 0, 0, 0};
    prepare(run, mode);
    if (!ask_for_lpc_file()) {
        return Oerror = lpc_no_file;
    }
    if (lpcf_open(afname) < 0) {
        const int16_t status = Oerror;
        close_tokens(afPtr);
        return status;
    }
    const int16_t p = Oerror;
    if (p != 0) {
        release(run.a);
        release(run.b);
    }
    run.scale = duration / lpcf_len(afname).duration;
    const bool own_a = provide(run.a, p, lpc_is);
    const bool own_b = provide(run.b, p, lpc1_is);
    filter_all(run, p);
    close_tokens(afPtr);
    if (own_a) {
        release(run.a);
    }
    if (own_b) {
        release(run.b);
    }
    for (int32_t i = 0; i < partials; ++i) {
        if (npoints[i] > 0) {
            shape_end(parray[i], npoints[i]);
        }
    }
    return Oerror;
}
