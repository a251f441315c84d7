#include "toolbox/auxmath3d.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

constexpr float silence = -140.0f; // dB, in both directions

constexpr double octaves_a_decade = 3.3219283;
constexpr double c_tuning = 430.539032; // Hz of A when octave 8 starts at 256 Hz
constexpr double tuning_slope = -0.398631396;
constexpr double middle_reference = 1.02197460938; // Hz at linear octave 0
constexpr double natural_octave = 0.69314718;

double octaves_of(float freq) {
    return std::log10(static_cast<double>(freq)) * octaves_a_decade;
}

double tuning_shift(float tuning) {
    return std::log10(tuning / c_tuning) * tuning_slope;
}

/// Ratio of the pitch class behind the point of an octave.pitch-class number.
double class_ratio(float opc) {
    return std::exp2((opc - std::floor(static_cast<double>(opc))) / 0.12);
}

} // namespace

float ftpc(float freq, float tuning) {
    const double octaves = octaves_of(freq);
    return static_cast<float>((octaves - std::floor(octaves)) * 0.12 + tuning_shift(tuning));
}

float ftopc(float freq, float tuning) {
    const double octaves = octaves_of(freq);
    const double whole = std::floor(octaves);
    return static_cast<float>(whole + (octaves - whole) * 0.12 + tuning_shift(tuning));
}

float opctof(float opc, float tuning) {
    const double octave = std::exp2(std::floor(static_cast<double>(opc)));
    return static_cast<float>(octave * (tuning / c_tuning) * class_ratio(opc));
}

float opctor(float opc, float tuning) {
    return static_cast<float>(class_ratio(opc) * (tuning / c_tuning));
}

float octcps(float cps) {
    const float ratio = static_cast<float>(cps / middle_reference);
    return static_cast<float>(std::log(ratio) / natural_octave);
}

float octcpstu(float cps, float tuning) {
    const float ratio = static_cast<float>(cps / (tuning * middle_reference));
    return static_cast<float>(std::log(ratio) / natural_octave);
}

float cpsoct(float oct, float base) {
    return std::exp2(oct) * base;
}

float octc2oct(char *text) {
    const char *octaves = std::strtok(text, "*");
    const char *cents = octaves != nullptr ? std::strtok(nullptr, "*") : nullptr;
    const double whole = octaves != nullptr ? std::atof(octaves) : 0.0;
    return static_cast<float>(whole + (cents != nullptr ? std::atof(cents) / 1200.0 : 0.0));
}

double amp2db(double amp) {
    if (amp > 0.0) {
        return 20.0 * std::log10(amp);
    }
    return silence;
}

float db2amp(float db) {
    const float floored = db > silence ? db : silence;
    return std::pow(10.0f, floored / 20.0f);
}
