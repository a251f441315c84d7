#include "edit/decay.h"

#include "toolbox/auxilliary3d.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

bool is_law(const char *law, char letter) {
    return law[0] == letter && law[1] == '\0';
}

void print_factor(int32_t, float factor) {
    std::printf("AFAC = %f\n", factor);
}

void print_numbered(int32_t k, float factor) {
    std::printf("AFAC[%d] = %f\n", k, factor);
}

void print_nothing(int32_t, float) {}

template <typename Law>
void fill(const FactorTable &factors, FactorTable &afac, void (*print)(int32_t, float), Law law) {
    for (int32_t k = 0; k < factors.count; ++k) {
        const float factor = law(k);
        add_factor(afac, factor);
        print(k, factor);
    }
}

float bell(int32_t k, float factor) {
    const double wave = bessj0(k - 2.0);
    return static_cast<float>(static_cast<float>(wave * wave) * 0.5 / factor);
}

/// The laws that both commands share. False when `law` is none of them.
bool fill_shared(const char *law, const FactorTable &factors, FactorTable &afac) {
    const float *f = factors.values;
    if (is_law(law, 'c')) {
        fill(factors, afac, print_factor, [](int32_t) { return 1.0f; });
    } else if (is_law(law, 'r')) {
        fill(factors, afac, print_nothing, [f](int32_t k) { return k == 0 ? 1.0f : 1.0f / f[k]; });
    } else if (is_law(law, 'e')) {
        fill(factors, afac, print_factor,
             [](int32_t k) { return std::exp(static_cast<float>(-k)); });
    } else if (is_law(law, 'b')) {
        fill(factors, afac, print_numbered, [f](int32_t k) { return bell(k, f[k]); });
    } else {
        return false;
    }
    return true;
}

} // namespace

float factor_at(const FactorTable &table, int64_t k) {
    return k >= 0 && k < factor_room ? table.values[k] : 0.0f;
}

void add_factor(FactorTable &table, float factor) {
    if (table.count < factor_room) {
        table.values[table.count++] = factor;
    }
}

void decay_of_multipliers(const char *law, const FactorTable &multipliers, FactorTable &afac) {
    if (is_law(law, 'q')) {
        fill(multipliers, afac, print_nothing, [&multipliers](int32_t k) {
            const double root = multipliers.values[k] + 1.0;
            return static_cast<float>(1.0 / (root * root));
        });
    } else if (!fill_shared(law, multipliers, afac)) {
        std::puts("Invalid argument for f_decay (c, r, q, e, b)");
        std::puts("Fall-back value chosen: c");
        fill_shared("c", multipliers, afac);
    }
}

bool decay_of_harmonics(const char *law, const FactorTable &ffac, FactorTable &afac) {
    if (is_law(law, 'q')) {
        // The last element, which no partial uses, looks behind the series and is infinite.
        fill(ffac, afac, print_nothing, [&ffac](int32_t k) {
            const float factor = factor_at(ffac, k + 1);
            return 1.0f / (factor * factor);
        });
        return true;
    }
    const bool reciprocal = is_law(law, 'l') || is_law(law, 'i');
    if (!fill_shared(reciprocal ? "r" : law, ffac, afac)) {
        std::puts("Invalid argument for f_decay (c, l, r, q, e, b)");
        return false;
    }
    return true;
}
