#include "export/score.h"

#include "store/console.h"
#include "store/settings.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

bool read_score_parameters(ScoreParameters &parameters, const char *instrument,
                           const char *lower_name) {
    std::printf("Enter \"%s\" parameters: ", instrument);
    std::puts("start-offset  time-stretch  overall-amp  stereo-spread");
    if (verbose) {
        std::printf("(Consult Orvane's prototype of \"%s\" in RTcmix)\n", lower_name);
    }
    // A reply of fewer numbers ends at the first word that is none.
    if (!read_float(parameters.offset)) {
        return !std::feof(stdin);
    }
    static_cast<void>(read_float(parameters.stretch) && read_float(parameters.amplitude) &&
                      read_float(parameters.spread));
    return true;
}

void tell_score(const char *kind, const char *name) {
    if (!verbose) {
        std::printf("Writing %scmix score to file: \"%s\"\n", kind, name);
    }
}

int32_t whole_part(float value) {
    // The largest float below the end of the range.
    constexpr float most = 0x1.fffffep30f;
    return std::isnan(value) ? 0 : static_cast<int32_t>(std::clamp(value, -0x1p31f, most));
}
