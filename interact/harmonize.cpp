// Frequency tracks of the selected partials against a constant ratio to the source's.

#include "display/view.h"
#include "interact/gesture_source.h"
#include "interact/gestures.h"
#include "interact/log_position.h"
#include "interact/selection.h"
#include "live/shared.h"
#include "store/recompute.h"
#include "store/store.h"
#include "toolbox/auxilliary3d.h"

#include <GL/freeglut.h>

namespace {

constexpr GestureTexts texts = {"Harmonize: Select both breakpoints from the source partial",
                                "Harmonize: No target selected"};

constexpr double no_mean_yet = 0.0001;   // Hz: spare1 up to here holds no mean
constexpr double hop_left_out = 0.4;     // of the mean hop, at the end of the compared stretch
constexpr float highest_freq = 22050.0f; // Hz

double step_factor(int direction) {
    if (direction == 1) {
        return 1.0399999991059303;
    }
    return direction == -1 ? 0.9200000017881393 : 1.0;
}

/// Mean frequency from point j to the partial's end, beyond the selected stretch too.
float mean_to_the_end(int32_t i, int32_t j) {
    float sum = 0.0f;
    for (int32_t at = j; at < npoints[i]; ++at) {
        sum += parray[i][at].freq;
    }
    return sum / static_cast<float>(npoints[i] - j);
}

/// The source's mean frequency between the times t0 and t1, less a part of a hop at the end. A
/// source that ends before t0 counts with its last point.
float source_mean(int32_t source, float t0, float t1) {
    const Breakpoint *points = parray[source];
    const int32_t last = npoints[source] - 1;
    int32_t at = 0;
    while (at < last && !(points[at].time >= t0)) {
        ++at;
    }
    const int32_t first = at;
    const double end = t1 - hop_left_out * meant;
    float sum = points[first].freq;
    while (at < last && points[at].time < end) {
        ++at;
        sum += points[at].freq;
    }
    return sum / static_cast<float>(at - first + 1);
}

/// One step of the run that starts at point j of partial i.
void move_run(int32_t i, int32_t j, int32_t source, double w) {
    for (; j < npoints[i] && parray[i][j].selected != 0; ++j) {
        Breakpoint &point = parray[i][j];
        const float target = peval[i].spare2 * linear_interpol(parray, npoints, j, i, source);
        const float dev = point.freq - target;
        poke(point.freq, (point.freq - dev) + static_cast<float>(dev * w));
        if (point.freq > highest_freq) {
            poke(point.freq, highest_freq);
        }
        widen_range(point.freq);
        point.logfreq = log_position(point.freq);
    }
}

void harmonize_target(int32_t i, int32_t source, double w) {
    const int32_t j = first_selected_point(i);
    if (j == npoints[i]) {
        return; // marked by a sweep, but its points were deselected since
    }
    PartialEval &work = peval[i];
    if (work.spare1 <= no_mean_yet) {
        work.spare1 = mean_to_the_end(i, j);
    }
    const float t0 = parray[i][j].time;
    const float fsrc = source_mean(source, t0, parray[i][npoints[i] - 1].time);
    if (work.spare1 >= no_mean_yet) {
        work.spare2 = work.spare1 / fsrc;
    }
    move_run(i, j, source, w);
}

} // namespace

void partialsHarmonize(int direction) {
    if (bps == 0 || flat == 0) {
        return;
    }
    const int32_t source = gesture_source(texts);
    if (source < 0 || source_is_target(source)) {
        return;
    }
    const double w = step_factor(direction);
    for (int32_t i = 0; i < partials; ++i) {
        if (peval[i].selected == 1) {
            harmonize_target(i, source, w);
        }
    }
    for (int32_t i = 0; i < partials; ++i) {
        peval[i].spare1 = 0.0f;
    }
    recompute_all_pitch();
    recompute_all_phase();
    glutPostRedisplay();
}
