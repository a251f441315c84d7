#include "export/export_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace {

constexpr double powers[] = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

/// Below this a whole number in double precision fits an integer.
constexpr double whole_limit = 0x1p53;

constexpr size_t most_digits = 32; // of a number below the limit, with sign and point

/// Writes the digits of `units`, in units of the last decimal, so that they end at `end`;
/// where they begin.
char *write_digits(char *end, uint64_t units, int decimals) {
    char *at = end;
    for (int i = 0; i < decimals; ++i, units /= 10) {
        *--at = static_cast<char>('0' + units % 10);
    }
    if (decimals > 0) {
        *--at = '.';
    }
    do {
        *--at = static_cast<char>('0' + units % 10);
        units /= 10;
    } while (units > 0);
    return at;
}

} // namespace

void ExportText::print(const char *format, ...) {
    std::array<char, 512> room; // holds all but the longest; the text itself takes those
    va_list values;
    va_start(values, format);
    va_list again;
    va_copy(again, values);
    const int length = std::vsnprintf(room.data(), room.size(), format, values);
    va_end(values);
    const auto wanted = static_cast<size_t>(std::max(length, 0));
    if (wanted < room.size()) {
        text.append(room.data(), wanted);
    } else {
        const size_t before = text.size();
        text.resize(before + wanted + 1);
        std::vsnprintf(text.data() + before, wanted + 1, format, again);
        text.pop_back();
    }
    va_end(again);
}

void ExportText::whole(int32_t value) {
    std::array<char, most_digits> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    text.append(digits.data(), static_cast<size_t>(end - digits.data()));
}

void ExportText::fixed(float value, int width, int decimals) {
    // A float has 24 binary digits and a power of ten up to the sixth another 20, so that the
    // product is exact; rounding it to even is what printf does with the exact decimals.
    const double units = std::rint(std::fabs(static_cast<double>(value)) * powers[decimals]);
    if (!(units < whole_limit)) {
        print("%*.*f", width, decimals, static_cast<double>(value));
        return;
    }
    std::array<char, most_digits> digits;
    char *end = digits.data() + digits.size();
    char *at = write_digits(end, static_cast<uint64_t>(units), decimals);
    if (std::signbit(value)) {
        *--at = '-';
    }
    for (const char *full = end - std::min<int>(width, most_digits); at > full;) {
        *--at = ' ';
    }
    text.append(at, static_cast<size_t>(end - at));
}
