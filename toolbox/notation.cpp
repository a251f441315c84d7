// The words of the console's pitch notation. The note table is the one that users know by
// heart, gaps and repeats included; nothing in it follows from a formula.

#include "toolbox/auxmath3d.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Note {
    const char *spelling;
    float freq; // Hz in register 1
};

const Note notes[] = {
    {"c", 261.6255798f},  {"c#", 369.9944152f}, {"db", 369.9944152f}, {"d", 391.9954224f},
    {"d#", 415.3046875f}, {"eb", 415.3046875f}, {"f", 466.1637573f},  {"f#", 493.8833008f},
    {"gb", 493.8833008f}, {"g#", 415.3046875f}, {"ab", 415.3046875f}, {"a", 440.0f},
    {"a#", 783.9908447f}, {"bb", 783.9908447f}, {"b", 783.9908447f},  {"bn", 830.6093750f},
    {"h", 830.6093750f},
};

struct Register {
    const char *before; // what stands before the spelling
    const char *after;  // and after it
    bool capital;       // the spelling's first letter is upper case
    float factor;       // of register 1
};

const Register registers[] = {
    {"et2", "", true, 0.0625f}, {"et1", "", true, 0.125f}, {"et", "", true, 0.25f},
    {"et", "", false, 0.5f},    {"et", "1", false, 1.0f},  {"et", "2", false, 2.0f},
    {"et", "3", false, 4.0f},   {"et", "4", false, 8.0f},  {"et", "5", false, 16.0f},
};

/// Which signs an interval name is known with.
enum Signs : unsigned { bare = 1, plus = 2, minus = 4, any_sign = 7 };

struct Interval {
    const char *name;
    int semitones;
    unsigned signs;
};

const Interval intervals[] = {
    {"etm2", 1, any_sign},     {"etM2", 2, any_sign},     {"etm3", 3, any_sign},
    {"etM3", 4, any_sign},     {"etP4", 5, any_sign},     {"etA4", 6, any_sign},
    {"et44", 6, bare},         {"eta4", 6, plus | minus}, {"etD5", 6, any_sign},
    {"etd5", 6, any_sign},     {"etT", 6, any_sign},      {"etP5", 7, any_sign},
    {"etm6", 8, any_sign},     {"etM6", 9, any_sign},     {"etm7", 10, any_sign},
    {"etM7", 11, bare | plus}, {"etP8", 12, any_sign},    {"et8", 12, any_sign},
    {"etm9", 13, any_sign},    {"etM9", 14, any_sign},    {"etm10", 15, any_sign},
    {"etM10", 16, any_sign},   {"etP11", 17, any_sign},   {"etA11", 18, any_sign},
    {"etd12", 18, any_sign},   {"etP12", 19, any_sign},   {"etm13", 20, any_sign},
    {"etM13", 21, any_sign},   {"etm14", 22, any_sign},   {"etM14", 23, any_sign},
    {"etP15", 24, any_sign},   {"et15", 24, any_sign},    {"et2xO", 24, any_sign},
};

constexpr size_t numerator_room = 16; // a longer numerator is refused

/// The register's way of writing a spelling.
void spell(char *token, size_t size, const Register &at, const char *spelling) {
    std::snprintf(token, size, "%s%s%s", at.before, spelling, at.after);
    if (at.capital) {
        char &letter = token[std::strlen(at.before)];
        letter = static_cast<char>(letter - 'a' + 'A');
    }
}

/// Ratio of an interval name with its sign; 0 for any other text.
float interval_ratio(const char *text) {
    unsigned sign = bare;
    if (*text == '+' || *text == '-') {
        sign = *text == '+' ? plus : minus;
        ++text;
    }
    for (const Interval &interval : intervals) {
        if ((interval.signs & sign) != 0 && std::strcmp(text, interval.name) == 0) {
            const double octaves = interval.semitones / 12.0;
            return static_cast<float>(std::exp2(sign == minus ? -octaves : octaves));
        }
    }
    return 0.0f;
}

/// The characters before the "/" over the last character of the text alone.
double fraction(const char *text, size_t length, size_t slash) {
    char numerator[numerator_room] = "";
    const char denominator[2] = {text[length - 1], '\0'};
    std::memcpy(numerator, text, slash);
    std::printf("num = %s\n", numerator);
    std::printf("len1 = %zd\n", static_cast<ssize_t>(slash));
    std::printf("den = %s\n", denominator);
    return std::atof(numerator) / std::atof(denominator);
}

} // namespace

float string2freq(const char *text) {
    for (const Register &at : registers) {
        for (const Note &note : notes) {
            char token[16];
            spell(token, sizeof token, at, note.spelling);
            if (std::strcmp(text, token) == 0) {
                return note.freq * at.factor;
            }
        }
    }
    return 0.0f;
}

float string2ratio(const char *text) {
    const float named = interval_ratio(text);
    if (named > 0.0f) {
        return named;
    }
    const size_t length = std::strlen(text);
    const size_t slash = std::strcspn(text, "/");
    std::printf("len = %zd\ti = %d\n", static_cast<ssize_t>(length), static_cast<int>(slash));
    double value;
    if (slash + 1 >= length) {
        value = std::atof(text);
    } else if (slash >= numerator_room) {
        std::fprintf(stderr, "Quillgrove: a numerator of %zu characters exceeds the limit of %zu\n",
                     slash, numerator_room - 1);
        return 1.0f;
    } else {
        value = fraction(text, length, slash);
    }
    const float ratio = static_cast<float>(value);
    if (!(ratio <= 4.0f && ratio >= 0.25f)) { // not a number is refused too
        std::printf("Bad value for transposition: %f\n", ratio);
        std::puts("\tmust be within +-2 octaves");
        return 1.0f;
    }
    return ratio;
}
