// The selection commands over some thousand random stores, against a plain model of each that
// keeps whole partials as lists of flags.

#include "interact/select.h"

#include "display/view.h"
#include "interact/selection.h"
#include "tests/support/child.h"
#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

using Flags = std::vector<int>;

/// Everything that a selection command may read or write.
struct World {
    std::vector<Flags> points;
    std::vector<std::vector<float>> times;
    std::vector<int> marks; // of the partials
    float end = 0.0f;       // of the sound
    int flat = 0, bps = 0;
    int selected = 0, found = 0, sweep = 0, direct = 0, count = 0, selecting = 0;
    FoundPoints queue = {-1, -1, -1, -1, 0};

    bool soft() const {
        return flat != 0 || bps != 0;
    }
};

/// Places of the selected points of a partial, in order.
std::vector<size_t> hits(const Flags &flags) {
    std::vector<size_t> places;
    for (size_t j = 0; j < flags.size(); ++j) {
        if (flags[j] == 1) {
            places.push_back(j);
        }
    }
    return places;
}

/// The same without point 0.
std::vector<size_t> later_hits(const Flags &flags) {
    std::vector<size_t> places = hits(flags);
    std::erase(places, size_t{0});
    return places;
}

void model_left(World &w) {
    if (!w.soft()) {
        return;
    }
    for (Flags &flags : w.points) {
        if (const auto places = hits(flags); !places.empty()) {
            std::fill_n(flags.begin(), places.front(), 1);
            w.selected = w.found = 1;
        }
    }
}

void model_right(World &w) {
    if (!w.soft()) {
        return;
    }
    for (Flags &flags : w.points) {
        const auto places = hits(flags);
        if (flags.size() >= 2 && !places.empty() && places.back() != 0) {
            for (size_t j = places.back() + 1; j < flags.size(); ++j) {
                flags[j] = 1;
            }
        }
    }
}

void model_vertical(World &w) {
    if (!w.soft()) {
        return;
    }
    float tmin = w.end;
    float tmax = 0.0f;
    for (size_t i = 0; i < w.points.size(); ++i) {
        if (const auto places = hits(w.points[i]); !places.empty()) {
            tmin = w.times[i][places.front()] < tmin ? w.times[i][places.front()] : tmin;
            tmax = w.times[i][places.back()] > tmax ? w.times[i][places.back()] : tmax;
        }
    }
    for (size_t i = 0; i < w.points.size(); ++i) {
        for (size_t j = 0; j < w.points[i].size(); ++j) {
            const bool inside = tmin <= w.times[i][j] && w.times[i][j] <= tmax;
            w.points[i][j] = inside ? 1 : 0;
            if (inside) {
                w.selected = w.found = 1;
            }
        }
    }
}

void model_partials(World &w) {
    if (!w.soft()) {
        return;
    }
    for (Flags &flags : w.points) {
        if (!hits(flags).empty()) {
            flags.assign(flags.size(), 1);
            w.selected = 1;
        }
    }
}

void model_all(World &w) {
    if (w.flat == 0 || w.bps == 0) {
        return;
    }
    for (Flags &flags : w.points) {
        flags.assign(flags.size(), 1);
    }
    w.selected = 1;
}

void flip(Flags &flags) {
    for (int &flag : flags) {
        flag = flag == 0;
    }
}

void model_inverted(World &w) {
    if (w.soft()) {
        std::for_each(w.points.begin(), w.points.end(), flip);
        w.selected = 1;
    }
}

void model_p_inverted(World &w) {
    if (!w.soft()) {
        return;
    }
    for (Flags &flags : w.points) {
        if (!hits(flags).empty()) {
            flip(flags);
            w.selected = 1;
        }
    }
}

void model_deselect_group(World &w) {
    if (w.flat == 0) {
        return;
    }
    for (Flags &flags : w.points) {
        flags.assign(flags.size(), 0);
    }
    w.marks.assign(w.marks.size(), 0);
    w.selected = w.selecting = 0;
}

void model_none(World &w) {
    if (w.flat == 0) {
        return;
    }
    model_deselect_group(w);
    w.found = w.sweep = w.direct = w.count = 0;
    w.queue = {-1, -1, -1, -1, 0};
}

void model_more_left(World &w) {
    for (Flags &flags : w.points) {
        if (const auto places = later_hits(flags); !places.empty()) {
            flags[places.front() - 1] = 1;
        }
    }
}

void model_less_left(World &w) {
    for (Flags &flags : w.points) {
        const auto places = hits(flags);
        if (flags.size() >= 2 && !places.empty()) {
            flags[places.front()] = 0;
        }
    }
}

void model_more_right(World &w) {
    for (Flags &flags : w.points) {
        if (flags.size() < 3) {
            continue;
        }
        auto places = later_hits(flags);
        std::erase(places, flags.size() - 1);
        if (!places.empty()) {
            flags[places.back() + 1] = 1;
        }
    }
}

void model_less_right(World &w) {
    for (Flags &flags : w.points) {
        if (const auto places = later_hits(flags); !places.empty()) {
            flags[places.back()] = 0;
        }
    }
}

void model_remainder(World &w) {
    for (Flags &flags : w.points) {
        if (const auto places = later_hits(flags); !places.empty()) {
            for (size_t j = 0; j < flags.size(); ++j) {
                flags[j] = j > places.back() ? 1 : 0;
            }
        }
    }
}

/// The place of the first hit from `from` on.
std::optional<size_t> next_hit(const Flags &flags, size_t from) {
    for (size_t place : hits(flags)) {
        if (place >= from) {
            return place;
        }
    }
    return std::nullopt;
}

void model_trailer(World &w) {
    size_t from = 1;
    for (Flags &flags : w.points) {
        const auto place = next_hit(flags, from);
        if (!place) {
            from = 1; // searched to its end, or too short to be entered
            continue;
        }
        for (size_t j = 0; j < flags.size(); ++j) {
            flags[j] = j < *place ? 1 : 0;
        }
        from = *place + 1;
    }
}

void model_nothing(World &) {}

struct Command {
    const char *name;
    void (*run)();
    void (*model)(World &);
    const char *text; // printed
};

const Command commands[] = {
    {"select_left", select_left, model_left, ""},
    {"select_right", select_right, model_right, ""},
    {"select_vertical", select_vertical, model_vertical, ""},
    {"select_partials", select_partials, model_partials, ""},
    {"select_all", select_all, model_all, ""},
    {"select_inverted", select_inverted, model_inverted, ""},
    {"select_p_inverted", select_p_inverted, model_p_inverted, ""},
    {"deselect_group", deselect_group, model_deselect_group, ""},
    {"select_none", select_none, model_none, ""},
    {"oneMoreL", oneMoreL, model_more_left, ""},
    {"oneLessL", oneLessL, model_less_left, ""},
    {"oneMoreR", oneMoreR, model_more_right, ""},
    {"oneLessR", oneLessR, model_less_right, ""},
    {"select_remainder", select_remainder, model_remainder, ""},
    {"select_trailer", select_trailer, model_trailer, ""},
    {"select_up", select_up, model_nothing, "Not implemented yet...\n"},
    {"select_down", select_down, model_nothing, "Not implemented yet...\n"},
};

class SelectModel : public StoreTest {
  protected:
    int pick(int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    }

    /// Up to six partials of up to ten points on a coarse grid of times, so that times coincide;
    /// now and then a flag that is neither 0 nor 1.
    World dream() {
        World w;
        const int density = pick(0, 4) * 25; // per cent
        const int longest = pick(0, 3) == 0 ? 2 : 10;
        const int count = pick(0, 6);
        for (int i = 0; i < count; ++i) {
            Flags flags;
            std::vector<float> times;
            float time = 0.25f * static_cast<float>(pick(0, 8));
            for (int j = pick(0, longest); j > 0; --j) {
                flags.push_back(pick(1, 100) <= density ? 1 : pick(0, 30) == 0 ? 2 : 0);
                times.push_back(time);
                time += 0.25f * static_cast<float>(pick(0, 2));
            }
            w.points.push_back(flags);
            w.times.push_back(times);
            w.marks.push_back(pick(0, 1));
        }
        w.flat = pick(0, 1);
        w.bps = pick(0, 1);
        w.selected = pick(0, 1);
        w.found = pick(0, 1);
        w.sweep = pick(0, 1);
        w.direct = pick(0, 1);
        w.count = pick(0, 2);
        w.selecting = pick(0, 1);
        w.queue = {pick(-1, 5), pick(-1, 9), pick(-1, 5), pick(-1, 9), w.count};
        return w;
    }

    static void build(World &w) {
        std::vector<Partial> content;
        for (const auto &times : w.times) {
            Partial partial;
            for (float time : times) {
                partial.push_back({time, 100.0f + 10.0f * time, -20.0f - time});
            }
            content.push_back(partial);
        }
        fill_store(content);
        w.end = sndlen;
    }

    static void impose(const World &w) {
        for (size_t i = 0; i < w.points.size(); ++i) {
            for (size_t j = 0; j < w.points[i].size(); ++j) {
                parray[i][j].selected = static_cast<uint16_t>(w.points[i][j]);
            }
            peval[i].selected = static_cast<int16_t>(w.marks[i]);
        }
        flat = w.flat;
        bps = w.bps;
        selected = static_cast<uint16_t>(w.selected);
        found = static_cast<uint16_t>(w.found);
        sweepSelect = static_cast<uint16_t>(w.sweep);
        directSelect = w.direct;
        numfound = w.count;
        selecting = static_cast<uint8_t>(w.selecting);
        foundSubscriptions = w.queue;
    }

    /// The store and the flags as a text, for comparing and for showing.
    static std::string told(const World &w) {
        std::string text;
        for (size_t i = 0; i < w.points.size(); ++i) {
            for (int flag : w.points[i]) {
                text += std::to_string(flag);
            }
            text += " mark " + std::to_string(w.marks[i]) + "\n";
        }
        for (int value :
             {w.flat, w.bps, w.selected, w.found, w.sweep, w.direct, w.count, w.selecting,
              w.queue.part0, w.queue.point0, w.queue.part1, w.queue.point1, w.queue.count}) {
            text += std::to_string(value) + " ";
        }
        return text;
    }

    static World seen(const World &shape) {
        World w = shape;
        for (size_t i = 0; i < w.points.size(); ++i) {
            for (size_t j = 0; j < w.points[i].size(); ++j) {
                w.points[i][j] = parray[i][j].selected;
            }
            w.marks[i] = peval[i].selected;
        }
        w.flat = flat;
        w.bps = bps;
        w.selected = selected;
        w.found = found;
        w.sweep = sweepSelect;
        w.direct = directSelect;
        w.count = numfound;
        w.selecting = selecting;
        w.queue = foundSubscriptions;
        return w;
    }

    /// The fields of all points but their flags.
    static std::vector<float> content() {
        std::vector<float> values;
        for (int32_t i = 0; i < partials; ++i) {
            for (int32_t j = 0; j < npoints[i]; ++j) {
                const Breakpoint &point = parray[i][j];
                values.insert(values.end(), {point.time, point.freq, point.amp, point.phase,
                                             point.scratch, static_cast<float>(point.ampunits)});
            }
        }
        return values;
    }

    std::mt19937 random{20240917};
};

TEST_F(SelectModel, ThousandsOfStores) {
    for (int round = 0; round < (sanitized() ? 1000 : 4000) && !HasFailure(); ++round) {
        World before = dream();
        build(before);
        const std::vector<float> kept = content();
        for (const Command &command : commands) {
            World expected = before;
            command.model(expected);
            impose(before);
            EXPECT_EQ(printed(command.run), command.text) << command.name;
            EXPECT_EQ(told(seen(before)), told(expected))
                << command.name << " in round " << round << ", from\n"
                << told(before);
        }
        EXPECT_EQ(content(), kept);
    }
}

TEST_F(SelectModel, ChainsOfCommands) {
    for (int round = 0; round < 1000 && !HasFailure(); ++round) {
        World world = dream();
        build(world);
        impose(world);
        for (int step = 0; step < 12; ++step) {
            const Command &command = commands[static_cast<size_t>(pick(0, 14))];
            command.model(world);
            command.run();
            ASSERT_EQ(told(seen(world)), told(world)) << command.name << " in round " << round;
        }
    }
}

} // namespace
