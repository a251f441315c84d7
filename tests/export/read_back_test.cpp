// What an export writes comes back when it is loaded, but for what the readers do to a file.
#include "export/export3d.h"

#include "tests/edit/structure.h"
#include "tests/export/export_support.h"
#include "tests/support/console.h"
#include "tests/support/list_reading.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

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
    flag(0, 1, 3);
    flag(2, 0, 1);
    const Snapshot before = snapshot();
    printed([this] { EXPECT_EQ(audiosculpt3ds_c(parray, npoints, path().c_str(), partials), 2); });
    printed([this] { ASSERT_EQ(read_list(text_of()), 0); });
    expect_list_of({{before[0].begin() + 1, before[0].end()}, before[2]}, snapshot());
}

std::string whole_file(const std::filesystem::path &name) {
    std::ifstream in(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Loads each sample of a known type and hands its text and type on; the number of those.
int for_samples(const std::function<void(const std::string &)> &work) {
    const std::filesystem::path folder = SOURCE_DIR "/../shared/samples";
    int done = 0;
    if (!std::filesystem::is_directory(folder)) {
        return done;
    }
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        int32_t type = -1;
        if (entry.path().extension() == ".txt") {
            printed([&] { type = read_any(whole_file(entry.path())); });
        }
        if (type >= 0 && partials > 0) {
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

} // namespace
