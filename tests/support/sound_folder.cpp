#include "tests/support/sound_folder.h"

#include "synth/sound.h"

#include <cstdio>
#include <cstring>
#include <filesystem>

namespace {

void put(FileBytes &bytes, const std::string &text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

void put(FileBytes &bytes, int64_t value, int size) {
    for (int i = size - 1; i >= 0; --i) {
        bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
    }
}

void reset_sound() {
    R = 44100.0;
    sndlen = 0.0f;
}

} // namespace

void SoundTest::SetUp() {
    StoreTest::SetUp();
    reset_sound();
}

void SoundTest::TearDown() {
    reset_sound();
    StoreTest::TearDown();
}

std::string SoundTest::path(const std::string &file) const {
    return folder.path(file);
}

char *SoundTest::name(const std::string &file) {
    std::snprintf(buffer, sizeof buffer, "%s", path(file).c_str());
    return buffer;
}

FileBytes SoundTest::bytes_of(const std::string &file) const {
    const std::string bytes = folder.read(file);
    return {bytes.begin(), bytes.end()};
}

std::vector<float> SoundTest::floats_of(const std::string &file) const {
    const FileBytes bytes = bytes_of(file);
    std::vector<float> floats(bytes.size() / sizeof(float));
    if (!floats.empty()) {
        std::memcpy(floats.data(), bytes.data(), floats.size() * sizeof(float));
    }
    return floats;
}

bool SoundTest::exists(const std::string &file) const {
    return std::filesystem::exists(path(file));
}

int64_t number_at(const FileBytes &bytes, size_t at, size_t size) {
    int64_t number = 0;
    for (size_t i = at; i < at + size; ++i) {
        number = number * 256 + bytes.at(i);
    }
    return number;
}

FileBytes plain_header(int64_t frames) {
    FileBytes bytes;
    put(bytes, "FORM");
    put(bytes, 46 + 2 * frames, 4);
    put(bytes, "AIFFCOMM");
    put(bytes, 18, 4);
    put(bytes, 1, 2);
    put(bytes, frames, 4);
    put(bytes, 16, 2);
    put(bytes, 0x400EAC44, 4);
    put(bytes, 0, 6);
    put(bytes, "SSND");
    put(bytes, 8 + 2 * frames, 4);
    put(bytes, 0, 8);
    return bytes;
}

std::vector<int> samples_in(const FileBytes &bytes, size_t from) {
    std::vector<int> samples;
    for (size_t i = from; i + 1 < bytes.size(); i += 2) {
        samples.push_back(static_cast<int16_t>(number_at(bytes, i, 2)));
    }
    return samples;
}
