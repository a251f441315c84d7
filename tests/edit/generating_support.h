// tests/edit/generating_support.h -- what the tests of commands that make partials share: a
// store with two sources, the plain form of every derived value, and the texts of the trace.
#pragma once

#include "tests/edit/edit_support.h"

#include "display/view.h"
#include "store/settings.h"

#include <algorithm>
#include <cstdio>

/// A line as printf would write it.
template <typename... Args> std::string say(const char *format, Args... args) {
    char text[512];
    std::snprintf(text, sizeof text, format, args...);
    return text;
}

/// Gives the old points phases and positions that no refresh would leave.
inline void mark_old_points() {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].phase = 0.5f + 0.125f * static_cast<float>(i + 2 * j);
        }
    }
}

/// Four partials of 5, 4, 3 and 1 points. Two sources, points 1 to 3 of partial 0 and the whole
/// of partial 1; the runs of partials 2 and 3 reach their ends but are too short.
inline void fill_with_sources() {
    fill_store({even_partial(5, 0.05f, 111.1f, -9.3f), even_partial(4, 0.3f, 333.3f, -21.7f),
                even_partial(3, 0.72f, 777.7f, -33.1f), even_partial(1, 0.9f, 900.9f, -50.0f)});
    mark_old_points();
    flag(0, 1, 3);
    flag(1, 0, 3);
    flag(2, 1, 2);
    flag(3, 0, 0);
}

/// One partial of three points at 100, 101 and 102 Hz, all flagged.
inline void fill_with_one_source() {
    fill_store({{{0.0f, 100.0f, -6.0f}, {0.1f, 101.0f, -7.0f}, {0.2f, 102.0f, -8.0f}}});
    flag(0, 0, 2);
}

/// As the trace tells of the two sources.
inline const std::string two_candidates =
    "Candidate [0]:\t ord_num =0\tfirst_point =1\tlast_point =3\n"
    "Candidate [1]:\t ord_num =1\tfirst_point =0\tlast_point =3\n";

inline const std::string one_candidate =
    "Candidate [0]:\t ord_num =0\tfirst_point =0\tlast_point =2\n";

/// Points `first` to `last` of partial i.
inline std::vector<Breakpoint> stretch_of(const Points &points, size_t i, int32_t first,
                                          int32_t last) {
    const auto begin = points[i].begin();
    return {begin + first, begin + last + 1};
}

/// The plain phase recursion.
inline void plain_phases(std::vector<Breakpoint> &partial) {
    for (size_t j = 1; j < partial.size(); ++j) {
        const float cycles = (partial[j].time - partial[j - 1].time) * partial[j - 1].freq;
        double whole;
        const double fraction = std::modf(static_cast<double>(cycles), &whole);
        float x = static_cast<float>(partial[j - 1].phase / 6.283185307179586 + fraction);
        if (x >= 1.0f) {
            x -= 1.0f;
        }
        partial[j].phase = static_cast<float>(x * 6.283185307179586);
    }
}

/// The plain log positions: the lowest frequency cut to whole Hz, the highest exact.
inline void plain_positions(Points &points) {
    float low = 22050.0f;
    float high = 0.0f;
    for (const auto &partial : points) {
        for (const Breakpoint &point : partial) {
            low = std::min(low, std::trunc(point.freq));
            high = std::max(high, point.freq);
        }
    }
    const float octaves = static_cast<float>(std::log(high / low) / 0.69314718055994530942);
    for (auto &partial : points) {
        for (Breakpoint &point : partial) {
            point.logfreq =
                static_cast<float>(std::log(point.freq / low) / 0.69314718055994530942) / octaves;
        }
    }
}

inline void unflag(Points &points) {
    for (auto &partial : points) {
        for (Breakpoint &point : partial) {
            point.selected = 0;
        }
    }
}

/// Summaries as the means of the points say.
inline void expect_summaries() {
    for (int32_t i = 0; i < partials; ++i) {
        float sum = 0.0f;
        for (int32_t j = 0; j < npoints[i]; ++j) {
            sum += parray[i][j].freq;
        }
        const float last = parray[i][npoints[i] - 1].time;
        EXPECT_TRUE(close_floats(peval[i].start, parray[i][0].time));
        EXPECT_TRUE(close_floats(peval[i].dur, last - parray[i][0].time));
        EXPECT_TRUE(close_floats(peval[i].avgfreq, sum / static_cast<float>(npoints[i])));
        EXPECT_EQ(peval[i].selected, 0);
    }
}

/// One new partial by factor and decay, selected, phases 0, log positions left to the caller.
inline std::vector<Breakpoint> voice(std::vector<Breakpoint> source, float times, float over,
                                     float afac) {
    for (Breakpoint &point : source) {
        Breakpoint made = {};
        made.time = point.time;
        made.freq = point.freq * times / over;
        const double level = afac > 0.0f ? 20.0 * std::log10(static_cast<double>(afac)) : -140.0;
        made.amp = static_cast<float>(point.amp + level);
        made.selected = 1;
        point = made;
    }
    return source;
}

/// The trace of making one partial for each decay factor of each candidate, given the counts of
/// the old partials and of the candidates.
inline std::string making(const std::vector<int32_t> &old, const std::vector<int32_t> &lengths,
                          const std::vector<float> &afac) {
    const int32_t before = static_cast<int32_t>(old.size());
    const int32_t voices = static_cast<int32_t>(afac.size());
    const int32_t made = static_cast<int32_t>(lengths.size()) * voices;
    std::vector<int32_t> all = old;
    for (const int32_t length : lengths) {
        all.insert(all.end(), afac.size(), length);
    }
    std::string text = say("%d source candidates\n", static_cast<int32_t>(lengths.size())) +
                       say("%d new partials per candidate\n", voices) +
                       say("Old partials: %d\tNew partials: %d\n", before, made);
    for (size_t i = 0; i < all.size(); ++i) {
        text += say("npoints[%d] = %d\n", static_cast<int32_t>(i), all[i]);
    }
    for (int32_t m = before; m < before + made; ++m) {
        text += say("m = %d\tnpoints[%d] = %d\n", m, m, all[static_cast<size_t>(m)]);
    }
    text += say("OLD: %d\tGENERATED: %d\tNEW: %d\n", before, made, before + made);
    for (int32_t m = 0; m < made; ++m) {
        text += say("m = %d\n", before + m) + say("l = %d\t r = %d\tafac = %f\n", m % voices,
                                                  voices, afac[static_cast<size_t>(m % voices)]);
    }
    return text;
}

/// Three points for each of `count` partials, everything flagged.
inline void fill_with_many_sources(size_t count) {
    fill_store(std::vector<Partial>(count, even_partial(3, 0.0f, 200.0f, -20.0f)));
    flag_everything();
}
