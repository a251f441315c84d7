#include "tests/edit/structure.h"

#include "interact/clear.h"
#include "store/recompute.h"

#include <cmath>
#include <cstring>

namespace structure {

namespace {

template <typename Field> std::vector<float> column(int32_t i, Field field) {
    std::vector<float> values;
    for (int32_t j = 0; j < npoints[i]; ++j) {
        values.push_back(parray[i][j].*field);
    }
    return values;
}

} // namespace

Snapshot snapshot() {
    Snapshot copy;
    for (int32_t i = 0; i < partials; ++i) {
        copy.emplace_back(parray[i], parray[i] + npoints[i]);
    }
    return copy;
}

std::vector<Partial> numbered(const std::vector<int> &lengths) {
    std::vector<Partial> content;
    for (size_t k = 0; k < lengths.size(); ++k) {
        const float number = static_cast<float>(k);
        Partial partial;
        for (int j = 0; j < lengths[k]; ++j) {
            partial.push_back({number + 0.25f * static_cast<float>(j), 100.0f * (number + 1.0f),
                               -10.0f * (number + 1.0f)});
        }
        content.push_back(partial);
    }
    return content;
}

std::vector<int> labels() {
    std::vector<int> result;
    for (int32_t i = 0; i < partials; ++i) {
        result.push_back(static_cast<int>(parray[i][0].freq / 100.0f) - 1);
    }
    return result;
}

std::vector<float> times(int32_t i) {
    return column(i, &Breakpoint::time);
}
std::vector<float> freqs(int32_t i) {
    return column(i, &Breakpoint::freq);
}
std::vector<float> amps(int32_t i) {
    return column(i, &Breakpoint::amp);
}
std::vector<float> phases(int32_t i) {
    return column(i, &Breakpoint::phase);
}

std::vector<float> chained(const std::vector<Breakpoint> &points, float phase0) {
    std::vector<float> result = {phase0};
    for (size_t j = 1; j < points.size(); ++j) {
        const float cycles = (points[j].time - points[j - 1].time) * points[j - 1].freq;
        double whole;
        const double part = std::modf(static_cast<double>(cycles), &whole);
        float place = static_cast<float>(result.back() / 6.283185307179586 + part);
        if (place >= 1.0f) {
            place -= 1.0f;
        }
        result.push_back(static_cast<float>(place * 6.283185307179586));
    }
    return result;
}

void select_points(int32_t i, int32_t first, int32_t last) {
    for (int32_t j = first; j <= last; ++j) {
        parray[i][j].selected = 1;
    }
}

bool same_points(const std::vector<Breakpoint> &a, const std::vector<Breakpoint> &b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Breakpoint)) == 0);
}

bool same_points(const Snapshot &a, const Snapshot &b) {
    bool same = a.size() == b.size();
    for (size_t i = 0; same && i < a.size(); ++i) {
        same = same_points(a[i], b[i]);
    }
    return same;
}

void refresh(bool with_phases) {
    deselect_all();
    recompute_amp(&maxamp, &minamp);
    recompute_times();
    recompute_all_pitch();
    if (with_phases) {
        recompute_all_phase();
    }
    recompute_logfreq();
    averages(partials, npoints, parray, peval);
}

} // namespace structure
