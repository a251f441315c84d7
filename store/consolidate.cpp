#include "store/consolidate.h"

#include "store/console.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr float gone = -95.0f;    // dB, below: the tracker lost the partial
constexpr float present = -90.0f; // dB, above: the partial sounds

void mend_db(Breakpoint *window) {
    const float a1 = window[1].amp;
    const float a3 = window[3].amp;
    if (window[2].amp < gone && a1 > present && a3 > present) {
        window[2].amp = static_cast<float>((a1 + a3) * 0.5);
        std::putchar(',');
    }
    if (window[3].amp < gone && window[1].amp > present && window[2].amp < gone) {
        window[2].amp = window[3].amp = window[1].amp;
        std::putchar('*');
    }
}

void mend_linear_head(Breakpoint *window) {
    float &a0 = window[0].amp;
    float &a1 = window[1].amp;
    const float a2 = window[2].amp;
    if (a0 > 0.0f && a1 < 0.0f && a2 > 0.0f) {
        a1 = std::sqrt(a0 * a2);
        std::putchar('"');
    }
    if (a2 > 0.0f && a1 > 0.0f && a0 < 0.0f) {
        a0 = a1;
        std::putchar('"');
    }
}

void mend_linear(Breakpoint *window, bool reaches_last_but_one) {
    const float a0 = window[0].amp;
    float &a1 = window[1].amp;
    float &a2 = window[2].amp;
    float &a3 = window[3].amp;
    if (a3 > 0.0f && a1 > 0.0f && a2 < 0.0f) {
        a2 = std::sqrt(a3 * a1);
        std::putchar(',');
    }
    if (a3 < 0.0f && a2 < 0.0f) {
        a2 = static_cast<float>(a1 * a1 * 3.16 / a0);
        a3 = static_cast<float>(a2 * a2 * 3.16 / a1);
        std::putchar(';');
    }
    if (a0 >= 0.0f && a1 >= 0.0f && a2 >= 0.0f && a3 < 0.0f && reaches_last_but_one) {
        a3 = 0.0f;
        std::putchar(':');
    }
}

void mend_partial(Breakpoint *points, int32_t n, bool decibels) {
    for (int32_t i = 0; i <= n - 4; ++i) {
        if (decibels) {
            mend_db(points + i);
            continue;
        }
        if (i == 0) {
            mend_linear_head(points);
        }
        mend_linear(points + i, i + 3 == n - 2);
    }
}

} // namespace

int32_t dialog__5() {
    std::fputs("Is amp in dBs? (y/n)\n>\t", stdout);
    char word[256] = "";
    while (read_word(word, sizeof word)) {
        if (word[0] == 'y') {
            return 1;
        }
        if (word[0] == 'n') {
            return 0;
        }
        std::fputs("//\tyes or no?\n>\t", stdout);
    }
    return -1;
}

void consolidate(Breakpoint **points, const int32_t *counts, int32_t n) {
    const int32_t decibels = dialog__5();
    if (decibels < 0) {
        return;
    }
    for (int32_t i = 0; i < n; ++i) {
        if (counts[i] > 3) {
            mend_partial(points[i], counts[i], decibels == 1);
        }
    }
    std::putchar('\n');
    for (int32_t i = 0; decibels == 1 && i < n; ++i) {
        if (counts[i] > 1 && points[i][counts[i] - 2].amp > -20.0f) {
            points[i][counts[i] - 2].amp -= 56.0f;
        }
    }
}
