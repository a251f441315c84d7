#include "display/staff.h"

#include "display/axes.h"
#include "display/clefs.h"
#include "display/view.h"
#include "store/store.h"

#include <GL/freeglut.h>

namespace {

constexpr float reference_a = 440.0f; // Hz
constexpr int staff_lines = 10;
constexpr int bass_clef_line = 3; // the line of F3, from 0

// Equal-tempered ratios of whole semitones.
constexpr double semitones_2 = 1.122462048309373;
constexpr double semitones_3 = 1.189207115002721;
constexpr double semitones_4 = 1.2599210498948732;
constexpr double semitones_5 = 1.3348398541700344;
constexpr double semitones_7 = 1.4983070768766815;
constexpr double semitones_8 = 1.5874010519681996;
constexpr double semitones_10 = 1.7817974362806785;

float height(float f) {
    return static_cast<float>(frequency_height(f, tick_octave));
}

/// The lower end of the range counts in the log view alone.
bool on_show(float f) {
    return f < maxfreq && (logpos == 0 || minfreq < f);
}

void draw_line(float f) {
    const float y = height(f);
    glBegin(GL_LINES);
    glVertex3f(0.0f, y, 0.0f);
    glVertex3f(1.0f, y, 0.0f);
    glEnd();
}

/// The bass clef falls to the foot of the axis where its line is not on show; the treble clef
/// goes on outside the range.
void draw_clefs(float bass, float treble) {
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    bass_clef(0.0f, on_show(bass) ? height(bass) : 0.0f);
    treble_clef(0.0f, height(treble));
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
}

} // namespace

void make_et_staff(const float *a, float *f1, float *f2, float *f3, float *f4, float *f5, float *f6,
                   float *f7, float *f8, float *f9, float *f10) {
    const double reference = *a;
    *f1 = static_cast<float>(reference * 0.25 / semitones_2);
    *f2 = static_cast<float>(reference * 0.5 / semitones_10);
    *f3 = static_cast<float>(reference * 0.5 / semitones_7);
    *f4 = static_cast<float>(reference * 0.5 / semitones_4);
    *f5 = static_cast<float>(reference * 0.5);
    *f6 = static_cast<float>(reference / semitones_5);
    *f7 = static_cast<float>(reference / semitones_2);
    *f8 = static_cast<float>(reference * semitones_2);
    *f9 = static_cast<float>(reference * semitones_5);
    *f10 = static_cast<float>(reference * semitones_8);
}

void make_fs(const float *a, float *fs) {
    *fs = static_cast<float>(*a / semitones_3);
}

void draw_staff() {
    float f[staff_lines];
    float fs;
    make_et_staff(&reference_a, &f[0], &f[1], &f[2], &f[3], &f[4], &f[5], &f[6], &f[7], &f[8],
                  &f[9]);
    make_fs(&reference_a, &fs);
    glColor4f(0.29f, 0.27f, 0.3f, 0.55f);
    if (gShowStaff != 1) {
        return;
    }
    for (const float line : f) {
        if (on_show(line)) {
            draw_line(line);
        }
    }
    if (logpos != 0 && gShowClef != 0) {
        draw_clefs(f[bass_clef_line], fs);
    }
}
