// What an export writes comes back when it is loaded, but for what the readers do to a file.
#include "export/export3d.h"

#include "tests/edit/structure.h"
#include "tests/export/export_support.h"
#include "tests/support/any_reading.h"
#include "tests/support/console.h"
#include "tests/support/frame_text.h"
#include "tests/support/list_reading.h"
#include "toolbox/auxmath3d.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

namespace {

using structure::Snapshot;
using structure::snapshot;

using ReadBack = ExportTest;

/// As the file has it: three decimals.
float rounded(float value) {
    return static_cast<float>(std::atof(formatted("%.3f", static_cast<double>(value)).c_str()));
}

/// What the list reader makes of a level at place j of n.
float shaped(float amp, size_t j, size_t n) {
    if (j + 2 == n) {
        return amp > -32.0f ? amp - 18.0f : amp;
    }
    if (j == 0) {
        return amp - 6.0f;
    }
    return j + 1 == n && amp > -90.0f ? -90.0f : amp;
}

void expect_list_of(const Snapshot &written, const Snapshot &read) {
    ASSERT_EQ(read.size(), written.size());
    for (size_t i = 0; i < read.size(); ++i) {
        const size_t n = written[i].size();
        ASSERT_EQ(read[i].size(), n);
        for (size_t j = 0; j < n; ++j) {
            ASSERT_EQ(read[i][j].time, rounded(written[i][j].time));
            ASSERT_EQ(read[i][j].freq, rounded(written[i][j].freq));
            ASSERT_EQ(read[i][j].amp, shaped(rounded(written[i][j].amp), j, n));
        }
    }
}

TEST_F(ReadBack, List) {
    std::vector<Partial> content = small_content();
    content.pop_back(); // the reader drops partials of one point
    fill_store(content);
    const Snapshot before = snapshot();
    printed([this] { audiosculpt3d_c(parray, npoints, path().c_str(), partials); });
    printed([this] { ASSERT_EQ(read_list(text_of()), 0); });
    expect_list_of(before, snapshot());
}

TEST_F(ReadBack, ListOfSelectedRuns) {
    fill_store(small_content());
    mark(0, 1, 3);
    mark(2, 0, 1);
    const Snapshot before = snapshot();
    printed([this] { EXPECT_EQ(audiosculpt3ds_c(parray, npoints, path().c_str(), partials), 2); });
    printed([this] { ASSERT_EQ(read_list(text_of()), 0); });
    expect_list_of({{before[0].begin() + 1, before[0].end()}, before[2]}, snapshot());
}

std::string whole_file(const std::filesystem::path &name) {
    std::ifstream in(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Loads a text; one of tracks without a table of names, whose type is not found by itself, as
/// what it is.
bool load(const std::string &text) {
    int32_t type = -1;
    printed([&] {
        type = read_any(text);
        if (type == -1 && text.starts_with("SDIF") && read_as(1, text) == 1 && derive_store()) {
            type = 1;
        }
    });
    return type >= 0 && partials > 0;
}

/// Loads each sample and hands its name on; the number of those.
int for_samples(const std::function<void(const std::string &)> &work) {
    const std::filesystem::path folder = SOURCE_DIR "/../shared/samples";
    int done = 0;
    if (!std::filesystem::is_directory(folder)) {
        return done;
    }
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".txt") {
            EXPECT_TRUE(load(whole_file(entry.path()))) << entry.path();
            work(entry.path().filename());
            ++done;
        }
    }
    return done;
}

TEST_F(ReadBack, SamplesAsLists) {
    const int done = for_samples([this](const std::string &name) {
        const Snapshot before = snapshot();
        printed(
            [&] { ASSERT_TRUE(audiosculpt3d_c(parray, npoints, path(name).c_str(), partials)); });
        printed([&] { ASSERT_EQ(read_list(text_of(name)), 0); });
        Snapshot kept;
        for (const auto &partial : before) {
            if (partial.size() >= 2) {
                kept.push_back(partial);
            }
        }
        expect_list_of(kept, snapshot());
    });
    if (done == 0) {
        GTEST_SKIP() << "no samples here";
    }
}

// --- SPEAR -------------------------------------------------------------------------------------

/// The level that the reader makes of one written relative to `reference` dB.
float read_level(float amp, float reference) {
    const float ref = db2amp(reference);
    const double written =
        std::atof(formatted("%.3f", static_cast<double>(db2amp(amp) / ref)).c_str());
    return static_cast<float>(amp2db(written));
}

void expect_spear_of(const Snapshot &written, float reference, const Snapshot &read) {
    ASSERT_EQ(read.size(), written.size());
    for (size_t i = 0; i < read.size(); ++i) {
        ASSERT_EQ(read[i].size(), written[i].size());
        for (size_t j = 0; j < read[i].size(); ++j) {
            ASSERT_EQ(read[i][j].time, rounded(written[i][j].time));
            ASSERT_EQ(read[i][j].freq, rounded(written[i][j].freq));
            ASSERT_EQ(read[i][j].amp, read_level(written[i][j].amp, reference));
        }
    }
}

std::string exported(Exporter *exporter, const std::string &name) {
    return conversation(name + "\n", on_store(exporter));
}

TEST_F(ReadBack, Spear) {
    fill_store(small_content());
    const Snapshot before = snapshot();
    const float reference = maxamp;
    exported(spear, path());
    printed([this] { ASSERT_EQ(read_any(text_of()), 4); });
    expect_spear_of(before, reference, snapshot());
    EXPECT_EQ(maxamp, 0.0f) << "the loudest point is the reference";
    EXPECT_EQ(parray[1][1].amp, 0.0f);
}

TEST_F(ReadBack, SpearOfSelectedRuns) {
    fill_store(small_content());
    mark(0, 1, 3);
    mark(2, 0, 1);
    const Snapshot before = snapshot();
    const float reference = maxamp;
    exported(spears, path());
    printed([this] { ASSERT_EQ(read_any(text_of()), 4); });
    expect_spear_of({{before[0].begin() + 1, before[0].end()}, before[2]}, reference, snapshot());
}

TEST_F(ReadBack, SamplesAsSpear) {
    const int done = for_samples([this](const std::string &name) {
        const Snapshot before = snapshot();
        const float reference = maxamp;
        exported(spear, path(name));
        printed([&] { ASSERT_EQ(read_any(text_of(name)), 4) << name; });
        expect_spear_of(before, reference, snapshot());
    });
    if (done == 0) {
        GTEST_SKIP() << "no samples here";
    }
}

// --- SDIF --------------------------------------------------------------------------------------

struct Row {
    float time, freq;
    double amp; // linear
};
using Tracks = std::map<int, std::vector<Row>>;

/// The rows of each index, as the file's text has them behind the first frame, which the reader
/// passes over.
Tracks tracks_of(const std::string &text) {
    Tracks tracks;
    std::istringstream lines(text.substr(text.find("SDFC\n") + 5));
    float time = 0.0f;
    int frames = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("1TRC\t")) {
            ++frames;
            time = static_cast<float>(std::atof(line.c_str() + line.rfind('\t')));
        } else if (line.starts_with("\t") && frames > 1) {
            std::istringstream row(line);
            int index = 0;
            double freq = 0.0;
            double amp = 0.0;
            row >> index >> freq >> amp;
            tracks[index].push_back({time, static_cast<float>(freq), amp});
        }
    }
    return tracks;
}

/// What start-up makes of a track's level at place j of n.
float track_level(double linear, size_t j, size_t n) {
    const auto amp = static_cast<float>(amp2db(linear));
    if (j + 2 == n) {
        return amp > -64.0f ? amp - 36.0f : amp;
    }
    if (j + 1 == n) {
        return amp > -140.0f ? -140.0f : amp;
    }
    return j == 0 ? amp - 6.0f : amp;
}

/// The store holds the tracks of indices 1, 2, 3 and so on.
void expect_tracks(const Tracks &tracks) {
    ASSERT_EQ(static_cast<size_t>(partials), tracks.size());
    for (const auto &[index, rows] : tracks) {
        const Breakpoint *points = parray[index - 1];
        ASSERT_EQ(static_cast<size_t>(npoints[index - 1]), rows.size()) << index;
        for (size_t j = 0; j < rows.size(); ++j) {
            ASSERT_EQ(points[j].time, rows[j].time) << index << " " << j;
            ASSERT_EQ(points[j].freq, std::clamp(rows[j].freq, 4.0f, 22050.0f));
            ASSERT_EQ(points[j].amp, track_level(rows[j].amp, j, rows.size()));
        }
    }
}

bool without_gaps(const Tracks &tracks) {
    return !tracks.empty() && static_cast<size_t>(tracks.rbegin()->first) == tracks.size();
}

TEST_F(ReadBack, Sdif) {
    std::vector<Partial> content = small_content();
    content.pop_back(); // one point is in no frame
    fill_store(content);
    conversation(path() + "\n0.01\n", sdif_on_store(0));
    const Tracks tracks = tracks_of(text_of());
    ASSERT_TRUE(without_gaps(tracks));
    ASSERT_EQ(tracks.size(), 3u);
    printed([this] { ASSERT_EQ(read_any(text_of()), 1); });
    expect_tracks(tracks);
    // Levels carry the gain of live play: the loudest moment of the store is -6 dB.
    EXPECT_NEAR(maxamp, -6.0f + 20.0f * std::log10(0.2f), 0.3f);
}

TEST_F(ReadBack, SdifWithAGap) {
    fill_store({{{0.0f, 100.0f, 0.0f}, {1.0f, 100.0f, 0.0f}},
                {{0.0f, 200.0f, 0.0f}},
                {{0.0f, 300.0f, 0.0f}, {1.0f, 300.0f, 0.0f}},
                {{0.0f, 400.0f, 0.0f}, {1.0f, 400.0f, 0.0f}},
                {{0.0f, 500.0f, 0.0f}, {1.0f, 500.0f, 0.0f}}});
    conversation(path() + "\n0.1\n", sdif_on_store(0));
    EXPECT_FALSE(without_gaps(tracks_of(text_of())));
    const std::string said = printed([this] { ASSERT_EQ(read_any(text_of()), 1); });
    EXPECT_NE(said.find("Corrupt partial[1] with 0 points\n"), std::string::npos);
    EXPECT_EQ(partials, 4);
    EXPECT_EQ(parray[1][0].freq, 300.0f);
}

void expect_sdif_reads_back(const std::string &text, const std::string &name) {
    const Tracks tracks = tracks_of(text);
    if (tracks.empty()) {
        return;
    }
    printed([&] { ASSERT_EQ(read_any(text), 1) << name; });
    if (without_gaps(tracks)) {
        expect_tracks(tracks);
    } else {
        EXPECT_LE(static_cast<size_t>(partials), tracks.size()) << name;
        EXPECT_GT(partials, 0);
    }
}

TEST_F(ReadBack, SamplesAsSdif) {
    const int done = for_samples([this](const std::string &name) {
        for (int32_t i = 0; i < partials; ++i) {
            mark(i, 0, npoints[i] - 1); // as a selection, so that the grid stays as asked
        }
        conversation(path(name) + "\n0.02\n", sdif_on_store(1));
        conversation(path(name + "-all") + "\n0.02\n", sdif_on_store(0));
        for (const std::string &file : {name, name + "-all"}) {
            ASSERT_FALSE(text_of(file).empty());
            expect_sdif_reads_back(text_of(file), file);
        }
    });
    if (done == 0) {
        GTEST_SKIP() << "no samples here";
    }
}

// --- what no other program writes on purpose ---------------------------------------------------

TEST_F(ReadBack, NumbersThatAreNoneGoThroughEveryExporter) {
    const std::string rows[] = {"0.5", "0.75", "1", "1.25"};
    std::string body;
    for (const std::string &time : rows) {
        body += sdif_frame("1TRC", time,
                           {"1 100 1 -nan", "2 -nan 1e-3 0", "3 1e+30 -nan 0", "4 400 1e300 nan"});
    }
    const std::string text =
        tracks_text("1TRC", body + sdif_frame("1TRC", "inf", {"1 101 1 0", "2 -inf 1 0"}));
    const std::pair<Exporter *, const char *> exporters[] = {
        {spear, ""}, {spears, ""}, {wavetable, "\n"}, {wavetables, "\n"}};
    for (const auto &[exporter, replies] : exporters) {
        ASSERT_TRUE(load(text));
        ASSERT_EQ(partials, 4);
        for (int32_t i = 0; i < partials; ++i) {
            mark(i, 0, npoints[i] - 1);
        }
        std::remove(path().c_str());
        const std::string said =
            conversation(path() + "\n0 1 nan -0.5\n" + replies, on_store(exporter));
        EXPECT_TRUE(said.ends_with("Quillgrove > done\n")) << said;
        EXPECT_NE(text_of().find("nan"), std::string::npos);
        if (text_of().starts_with("par-text")) {
            printed([this] { EXPECT_EQ(read_any(text_of()), 4); });
        }
    }
    ASSERT_TRUE(load(text));
    printed([this] {
        ASSERT_TRUE(audiosculpt3d_c(parray, npoints, path("list").c_str(), partials));
        EXPECT_EQ(read_any(text_of("list")), 0);
    });
    EXPECT_EQ(partials, 4);
}

} // namespace
