// A struck bell. Each mode of a real bell is a doublet, two frequencies a fraction of a hertz
// apart, since no casting is perfectly round: the pair beats while it rings.

#include "random.h"
#include "shape.h"

namespace {

constexpr double prime = 311.1; // Hz
constexpr double longest = 7.0; // seconds

struct Mode {
    double ratio;   // to the prime
    double level;   // dB at the strike
    double decay;   // seconds to fall by 60 dB
    double doublet; // Hz between the two halves
};

const Mode modes[] = {
    {0.500, -17.0, 14.0, 0.21}, // hum
    {1.000, -15.0, 9.0, 0.37},  // prime
    {1.183, -9.0, 8.0, 0.55},   // tierce, a minor third
    {1.506, -24.0, 4.5, 0.90},  // quint
    {2.000, -7.0, 5.5, 0.72},   // nominal
    {2.514, -22.0, 3.2, 1.10},  // tenth
    {2.662, -25.0, 2.8, 1.45},  // eleventh
    {3.011, -11.0, 3.4, 1.20},  // twelfth
    {4.166, -13.0, 2.4, 1.60},  // upper octave
    {5.433, -18.0, 1.7, 2.10},  // and the uppers above it
    {6.796, -23.0, 1.2, 2.60},  {8.215, -28.0, 0.8, 3.10},
};

/// One half of a doublet. The low modes take longest to build up; the strike bends the bell and
/// raises its pitch by a trace, for a tenth of a second.
Partial half_mode(const Mode &mode, double freq, double level, double start) {
    const double attack = 0.02 + 0.03 / mode.ratio;
    const double fall = 60.0 / mode.decay;
    const double duration = std::min(longest, (level - silent) / fall);
    return trace(
        start, duration, [=](double t) { return freq * (1.0 + 0.002 * std::exp(-t / 0.1)); },
        [=](double t) { return level - fall * t + decibels(window(t, duration, attack, 0.2)); });
}

} // namespace

Sound bell() {
    Sound sound;
    Random random(11);
    for (const Mode &mode : modes) {
        const double freq = prime * mode.ratio;
        const double weaker = random.between(2.0, 7.0); // dB, by where the clapper falls
        sound.push_back(half_mode(mode, freq - mode.doublet / 2, mode.level, 0.0));
        sound.push_back(half_mode(mode, freq + mode.doublet / 2, mode.level - weaker, 0.01));
    }
    return sound;
}
