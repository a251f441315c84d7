#include "tests/e2e/recorded.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float noise = 1e-4f; // below it nothing is heard
constexpr size_t piece = 64;   // frames; longer than a pitch stays near zero

bool audible(float sample) {
    return std::fabs(sample) > noise;
}

/// Whether each piece of the recording can be heard.
std::vector<bool> heard_pieces(const Samples &samples) {
    std::vector<bool> heard;
    for (size_t from = 0; from + piece <= samples.size(); from += piece) {
        const auto at = samples.begin() + static_cast<std::ptrdiff_t>(from);
        heard.push_back(std::any_of(at, at + piece, audible));
    }
    return heard;
}

double seconds_of(size_t pieces) {
    return static_cast<double>(pieces * piece) / rate;
}

} // namespace

Samples heard_part(const Samples &samples) {
    const auto first = std::find_if(samples.begin(), samples.end(), audible);
    const auto last = std::find_if(samples.rbegin(), samples.rend(), audible).base();
    return first < last ? Samples(first, last) : Samples();
}

double largest_step(const Samples &samples) {
    double largest = 0.0;
    for (size_t k = 1; k < samples.size(); k++) {
        largest = std::max(largest, std::fabs(static_cast<double>(samples[k]) -
                                              static_cast<double>(samples[k - 1])));
    }
    return largest;
}

double heard_seconds(const Samples &samples) {
    const std::vector<bool> heard = heard_pieces(samples);
    return seconds_of(static_cast<size_t>(std::count(heard.begin(), heard.end(), true)));
}

double longest_pause(const Samples &samples) {
    size_t longest = 0, length = 0;
    for (const bool heard : heard_pieces(heard_part(samples))) {
        length = heard ? 0 : length + 1;
        longest = std::max(longest, length);
    }
    return seconds_of(longest);
}
