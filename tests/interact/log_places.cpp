#include "tests/interact/log_places.h"

#include <cmath>

float place_between(float low, float high, float freq) {
    const double point = freq / low;
    const double range = high / low;
    return static_cast<float>((std::log(point) / 0.6931472) / (std::log(range) / 0.6931472));
}

double freq_between(float low, float high, float place) {
    const double range = high / low;
    return std::exp(std::log2(range) * place * 0.69314718) * low;
}
