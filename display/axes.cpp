#include "display/axes.h"

#include "display/text.h"
#include "store/store.h"

#include <GL/freeglut.h>
#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

// A range of absurd size, as a damaged file may hold, must not keep a frame busy for ever.
constexpr int most_marks = 65536;
constexpr int most_kilohertz = 1000; // each has ten marks

constexpr double decibels_a_tick = 5.0;
constexpr double level_span = 300.0; // dB, one unit of Z

/// Toward zero, held within 0 to most_marks on either side. Not a number counts as -1.
int whole(double value) {
    if (std::isnan(value)) {
        return -1;
    }
    if (value > most_marks) {
        return most_marks;
    }
    return value < -most_marks ? -most_marks : static_cast<int>(value);
}

int whole_kilohertz(double value) {
    return std::min(whole(value), most_kilohertz);
}

void line(double x0, double y0, double z0, double x1, double y1, double z1) {
    const double sum = x0 + y0 + z0 + x1 + y1 + z1;
    if (!std::isfinite(sum)) {
        return; // 0 Hz lies infinitely far below a logarithmic axis
    }
    glVertex3f(static_cast<float>(x0), static_cast<float>(y0), static_cast<float>(z0));
    glVertex3f(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(z1));
}

/// The first tenth of kilohertz k that is shown: in the first kilohertz of the log view the
/// tenths below minfreq are passed over. 10 when none is left.
int first_tenth(int k, int i) {
    while (logpos != 0 && k == 0 && i < 10 && static_cast<float>(i * 100) < minfreq) {
        ++i;
    }
    return i;
}

void label_frequencies(const AxisScale &scale) {
    const double x = -0.05 / scale.hz;
    char text[16];
    if (logpos == 0) {
        std::snprintf(text, sizeof text, "%2d", 0);
        draw_label(x, -0.01 / scale.Vratio, 0.0, text);
    }
    const int kilohertz = whole_kilohertz(maxfreq * 0.00099);
    for (int k = 0; kilohertz >= 0 && (k == 0 || k < kilohertz); ++k) {
        double height = frequency_height(0.0, label_octave);
        for (int i = first_tenth(k, 1); i < 10; ++i) {
            height = frequency_height((i * 0.1 + k) * 1000, label_octave);
            if (height > 1.0) {
                break;
            }
            if (maxfreq < 1000.0f) {
                std::snprintf(text, sizeof text, "%3.1f", i * 0.1);
                draw_label(x, height, 0.0, text);
            }
        }
        if (height > 1.0) {
            break;
        }
        std::snprintf(text, sizeof text, "%2d", k + 1);
        draw_label(x, height + 0.01, 0.0, text);
    }
}

/// Scene X of a whole second.
float second_place(int s) {
    return static_cast<float>(s) / gr_sndlen;
}

/// How many seconds lie between two labels at this width of a second.
int seconds_a_label(float tick) {
    if (tick < 0.035) {
        return 5;
    }
    return tick < 0.07 ? 2 : 1;
}

void label_times(const AxisScale &scale) {
    if (!(gr_sndlen > 0.0f)) {
        return; // single points alone have no duration
    }
    char text[16];
    if (gr_sndlen < 1.0f) {
        for (int j = 1; j <= 10 && j * 0.1 / gr_sndlen <= 1.0; ++j) {
            std::snprintf(text, sizeof text, "%3.1f", j * 0.1);
            draw_time_label(j * 0.1 / gr_sndlen, scale, text);
        }
    }
    const int stride = seconds_a_label(scale.tick);
    for (int s = stride; s <= most_marks && second_place(s) <= 1.0f; s += stride) {
        std::snprintf(text, sizeof text, "%2d", s);
        draw_time_label(second_place(s), scale, text);
    }
}

void draw_amplitude_axis() {
    const double length = (minamp - maxamp) / level_span;
    line(0.0, 0.0, 0.0, 0.0, 0.0, length);
    const int n = std::abs(whole((minamp - maxamp) / decibels_a_tick));
    const double step = length / n;
    for (int k = 0; k < n; ++k) {
        const double e = k % 2 == 0 ? -0.007 : -0.003;
        line(0.0, e, k * step, 0.0, 0.0, k * step);
    }
}

void draw_frequency_axis() {
    line(0.0, 0.0, 0.0, 0.0, 1.0, 0.0);
    const int kilohertz = whole_kilohertz(maxfreq * 0.001);
    for (int k = 0; k <= kilohertz; ++k) {
        for (int i = first_tenth(k, 1); i < 10; ++i) {
            const double height = frequency_height((i * 0.1 + k) * 1000, tick_octave);
            if (height > 1.0) {
                break;
            }
            line(i == 5 ? -0.0065 : -0.0035, height, 0.0, 0.0, height, 0.0);
        }
        const double height = frequency_height(k * 1000.0, tick_octave);
        line(-0.008, height, 0.0, 0.0, height, 0.0);
    }
}

void time_tick(double x, double length) {
    if (x >= 0.0 && x <= 1.0) {
        line(x, -length, 0.0, x, 0.0, 0.0);
    }
}

void draw_time_axis(const AxisScale &scale) {
    line(0.0, 0.0, 0.0, 1.0, 0.0, 0.0);
    if (!(gr_sndlen > 0.0f)) {
        return;
    }
    const double q = zoom * std::sqrt(scale.Hratio * scale.Vratio);
    for (int s = 0; s <= most_marks && second_place(s) <= 1.0f; ++s) {
        if (s > 0) {
            time_tick(second_place(s), 0.015 / q);
        }
        for (int i = 1; scale.tick > 0.04 && i < 10; ++i) {
            time_tick((s + i * 0.1) / gr_sndlen, (i == 5 ? 0.012 : 0.006) / q);
        }
    }
}

} // namespace

AxisScale axis_scale(const CameraRecord &camera) {
    AxisScale scale;
    scale.Hratio = static_cast<float>(camera.viewWidth) / design_size;
    scale.Vratio = static_cast<float>(camera.viewHeight) / design_size;
    scale.hz = zoom > 1.0f ? scale.Hratio * zoom : scale.Hratio;
    scale.vz = zoom > 1.0f ? scale.Vratio * zoom : scale.Vratio;
    scale.tick = scale.Hratio * zoom / gr_sndlen;
    return scale;
}

double frequency_height(double f, double octave) {
    return logpos != 0 ? std::log(f / minfreq) / (logmaxfreq * octave) : f / maxfreq;
}

void draw_time_label(double x, const AxisScale &scale, const char *text) {
    draw_label(x - 0.015 / scale.hz, -0.06 / scale.vz, 0.0, text);
}

void draw_axes(const CameraRecord &camera) {
    thewidth = camera.viewWidth;
    theheight = camera.viewHeight;
    const AxisScale scale = axis_scale(camera);
    glColor3f(0.6f, 0.1f, 0.2f);
    label_frequencies(scale);
    label_times(scale);
    glColor3f(0.4f, 0.32f, 0.23f);
    glBegin(GL_LINES);
    if (flat == 0) {
        draw_amplitude_axis();
    }
    draw_frequency_axis();
    draw_time_axis(scale);
    glEnd();
}
