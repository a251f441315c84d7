#include "toolbox/auxmath3d.h"

#include <cmath>

namespace {
constexpr float silence = -140.0f; // dB, in both directions
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
