// What every command that makes partials promises, on many small random stores and selections:
// old partials stand where they stood, new ones come in the number and length of the sources,
// and the store holds together.

#include "edit/generate.h"
#include "edit/replicate.h"
#include "tests/edit/generating_support.h"

#include <malloc.h>
#include <random>

namespace {

using Generating = StoreTest;

/// Lengths of the sources, found the long way: at each point a run may start, and ends where a
/// flag is not 1.
std::vector<int32_t> source_lengths() {
    std::vector<int32_t> lengths;
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t first = 0; first < npoints[i]; ++first) {
            if (first > 0 && parray[i][first - 1].selected == 1) {
                continue;
            }
            int32_t length = 0;
            while (first + length < npoints[i] && parray[i][first + length].selected == 1) {
                ++length;
            }
            if (length >= 3) {
                lengths.push_back(length);
            }
        }
    }
    return lengths;
}

/// One to six partials of one to twelve points, none at a whole number of Hz, so that the range
/// is never empty; flags by chance, among them a rare 2.
void random_store(std::mt19937 &random) {
    const auto below = [&random](uint32_t n) { return static_cast<uint32_t>(random() % n); };
    std::vector<Partial> content(1 + below(6));
    for (Partial &partial : content) {
        float time = static_cast<float>(below(64)) / 32.0f;
        const uint32_t count = 1 + below(12);
        for (uint32_t j = 0; j < count; ++j) {
            partial.push_back({time, 30.3f + static_cast<float>(below(40000)) / 7.0f,
                               -static_cast<float>(below(900)) / 9.0f});
            time += static_cast<float>(below(4)) / 16.0f;
        }
    }
    fill_store(content);
    mark_old_points();
    const uint32_t sparse = 1 + below(6);
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const bool set = sparse == 1 || below(sparse) != 0;
            parray[i][j].selected = below(20) == 0 ? 2 : set ? 1 : 0;
        }
    }
}

void expect_old_points(const Points &before) {
    for (size_t i = 0; i < before.size(); ++i) {
        const int32_t n = npoints[i];
        ASSERT_EQ(static_cast<size_t>(n), before[i].size());
        for (int32_t j = 0; j < n; ++j) {
            const Breakpoint &now = parray[i][j];
            const Breakpoint &then = before[i][static_cast<size_t>(j)];
            EXPECT_EQ(now.time, then.time);
            EXPECT_EQ(now.freq, then.freq);
            EXPECT_EQ(now.amp, then.amp);
            EXPECT_EQ(now.ampunits, then.ampunits);
            EXPECT_EQ(now.scratch, then.scratch);
            EXPECT_EQ(now.selected, flat != 0 ? 0 : then.selected);
        }
        EXPECT_EQ(parray[i][0].phase, before[i][0].phase);
    }
}

void expect_new_points(size_t old, const std::vector<int32_t> &lengths, size_t copies) {
    ASSERT_EQ(static_cast<size_t>(partials), old + lengths.size() * copies);
    for (size_t k = 0; k < lengths.size() * copies; ++k) {
        const size_t m = old + k;
        ASSERT_EQ(npoints[m], lengths[k / copies]);
        EXPECT_GE(malloc_usable_size(parray[m]),
                  static_cast<size_t>(npoints[m]) * sizeof(Breakpoint));
        for (int32_t j = 0; j < npoints[m]; ++j) {
            EXPECT_EQ(parray[m][j].selected, 1);
            EXPECT_EQ(parray[m][j].scratch, 0.0f);
            EXPECT_TRUE(j == 0 || parray[m][j].time >= parray[m][j - 1].time);
        }
        EXPECT_EQ(parray[m][0].phase, 0.0f);
    }
}

/// The invariants of the store.
void expect_sound_store() {
    EXPECT_GE(partials, 1);
    EXPECT_GE(sndstart, 0.0f);
    EXPECT_GE(malloc_usable_size(peval),
              static_cast<size_t>(partials + spare_partials) * sizeof(PartialEval));
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            EXPECT_GE(parray[i][j].time, 0.0f);
            EXPECT_GE(parray[i][j].freq, minfreq);
            EXPECT_LE(parray[i][j].freq, maxfreq);
            EXPECT_GE(parray[i][j].logfreq, 0.0f);
            EXPECT_LE(parray[i][j].logfreq, 1.0f);
        }
    }
    expect_summaries();
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(sweepSelect, 1);
}

/// One command of random arguments; returns how many copies of each source it is to make.
size_t run_any(std::mt19937 &random) {
    const auto below = [&random](uint32_t n) { return static_cast<uint32_t>(random() % n); };
    switch (below(3)) {
    case 0: {
        const std::string word = say("0.%04d", static_cast<int32_t>(below(10000)));
        printed([&word] { replicate_selections(word.c_str()); });
        return 1;
    }
    case 1: {
        const size_t count = below(4);
        std::string line;
        for (size_t k = 0; k < count; ++k) {
            line += say("%.3f ", 0.3 + 1.1 * static_cast<double>(k + 1) * 0.7);
        }
        line += "crqeb"[below(5)];
        printed([&line] { arbitrary_partials((line + "\n").c_str()); });
        return count;
    }
    default: {
        const int32_t number = static_cast<int32_t>(1 + below(5));
        const int32_t order = static_cast<int32_t>(1 + below(6));
        const std::string decay(1, "crqebli"[below(7)]);
        printed([&] { artificial_harmonics(&number, "a", &order, decay.c_str()); });
        return static_cast<size_t>(number);
    }
    }
}

} // namespace

TEST_F(Generating, OldPartialsStandAndNewOnesFollow) {
    std::mt19937 random(20240713);
    size_t made = 0;
    for (int32_t round = 0; round < 1500; ++round) {
        random_store(random);
        flat = static_cast<int32_t>(random() % 2);
        for (int32_t step = 0; step < 2; ++step) {
            SCOPED_TRACE(say("round %d step %d", round, step));
            const Points before = all_points();
            const std::vector<int32_t> lengths = source_lengths();
            const size_t copies = run_any(random);
            expect_old_points(before);
            expect_new_points(before.size(), lengths, copies);
            expect_sound_store();
            made += lengths.size() * copies;
            if (HasFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(made, 3000u);
}

TEST_F(Generating, AnyLineLeavesASoundStore) {
    const std::string letters = "0123456789./ \t-+etPMmcrqebnaif\n";
    std::mt19937 random(99);
    for (int32_t round = 0; round < 2000; ++round) {
        fill_with_sources();
        flat = static_cast<int32_t>(random() % 2);
        std::string line;
        for (auto k = random() % 40; k > 0; --k) {
            line += letters[random() % letters.size()];
        }
        printed([&line] { arbitrary_partials(line.c_str()); });
        ASSERT_GE(partials, 4) << line;
        ASSERT_EQ((partials - 4) % 2, 0) << line;
        for (int32_t m = 4; m < partials; ++m) {
            ASSERT_EQ(npoints[m], (m - 4) < (partials - 4) / 2 ? 3 : 4) << line;
            ASSERT_EQ(parray[m][0].selected, 1);
        }
    }
}

TEST_F(Generating, AnyWordLeavesASoundStore) {
    const std::string letters = "0123456789.-+einaf";
    std::mt19937 random(100);
    for (int32_t round = 0; round < 2000; ++round) {
        fill_with_sources();
        std::string word;
        for (auto k = random() % 8; k > 0; --k) {
            word += letters[random() % letters.size()];
        }
        printed([&word] { replicate_selections(word.c_str()); });
        ASSERT_TRUE(partials == 4 || partials == 6) << word;
        ASSERT_GE(sndstart, 0.0f) << word;
    }
}
