#include "tests/envelope/envelope_support.h"

#include "envelope/lpcf.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

void EnvelopeTest::SetUp() {
    StoreTest::SetUp();
    reset_lpc();
    folder = "/tmp/quillgrove-envelope-XXXXXX";
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
}

void EnvelopeTest::TearDown() {
    for (LpcFrame frame : frames) {
        clear_lpc(frame, lpc_records(frame));
    }
    reset_lpc();
    std::filesystem::remove_all(folder);
    StoreTest::TearDown();
}

std::string EnvelopeTest::file_of(const std::string &content, const std::string &name) {
    const std::string path = folder + "/" + name;
    std::ofstream(path) << content;
    return path;
}

LpcFrame EnvelopeTest::frame_of(const std::vector<Pair> &records) {
    LpcFrame frame = lpc_initialize(0, static_cast<int32_t>(records.size()) - 1);
    for (size_t i = 0; i < records.size(); ++i) {
        *frame[i] = records[i];
    }
    frames.push_back(frame);
    return frame;
}

std::string records_of(LpcFrame frame) {
    std::string all;
    for (int32_t i = 0; i < lpc_records(frame); ++i) {
        char record[64];
        std::snprintf(record, sizeof record, "%s%g %g", i == 0 ? "" : ", ", frame[i]->amp,
                      frame[i]->freq);
        all += record;
    }
    return all;
}

std::string two_point_file(int count, double level) {
    std::string content;
    for (int i = 0; i < count; ++i) {
        content += std::to_string(i) + " 2\n" + std::to_string(level) + " 100\n" +
                   std::to_string(level) + " 1000\n";
    }
    return content;
}
