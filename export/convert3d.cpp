#include "export/convert3d.h"

#include "store/settings.h"
#include "synth/aiff.h"
#include "synth/sound.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Samples = std::vector<float>;

constexpr size_t report_every = 17640; // samples between two lines on the console

bool complain(const std::string &name) {
    std::fprintf(stderr, "%s: %s\n", name.c_str(), std::strerror(errno));
    return false;
}

/// Closes; tells when the writes or the closing failed.
bool close_written(FILE *file, const std::string &name) {
    errno = EIO;
    const bool good = std::ferror(file) == 0;
    return (std::fclose(file) == 0 && good) || complain(name);
}

bool read_samples(const std::string &name, Samples &samples) {
    FILE *file = std::fopen(name.c_str(), "rb");
    if (file == nullptr) {
        return complain(name);
    }
    float sample;
    while (std::fread(&sample, sizeof sample, 1, file) == 1) {
        samples.push_back(sample);
        if (samples.size() % report_every == 0) {
            std::printf("%lu\t%f\n", samples.size(), static_cast<double>(sample));
        }
    }
    const bool good = std::ferror(file) == 0 || complain(name);
    std::fclose(file);
    return good;
}

float largest_value(const Samples &samples) {
    float largest = 0.0f;
    for (const float sample : samples) {
        largest = std::max(largest, std::fabs(sample));
    }
    return largest;
}

int16_t scaled(float sample, double scale) {
    const double value = sample * scale;
    return std::isnan(value) ? int16_t{0}
                             : static_cast<int16_t>(std::clamp(value, -32768.0, 32767.0));
}

std::string output_name(const std::string &input) {
    constexpr size_t looked_at = 40; // characters
    const std::string head = input.substr(0, looked_at);
    return head.substr(0, head.find('.')) + ".AIFF";
}

bool write_header(const std::string &name, float length) {
    AiffHeader header = initAiff_h({});
    FILE *file = std::fopen(name.c_str(), "rb+");
    if (file != nullptr) {
        header = rdAiff_h(file, header);
        std::rewind(file);
    } else if (errno == ENOENT) {
        file = std::fopen(name.c_str(), "wbx");
    }
    if (file == nullptr) {
        return complain(name);
    }
    wrAiff_h3(length, static_cast<float>(R), file, header);
    return close_written(file, name);
}

bool append_samples(const std::string &name, const Samples &samples, double scale) {
    FILE *file = std::fopen(name.c_str(), "ab");
    if (file == nullptr) {
        return complain(name);
    }
    for (const float sample : samples) {
        const auto bits = static_cast<uint16_t>(scaled(sample, scale));
        const uint8_t bytes[2] = {static_cast<uint8_t>(bits >> 8), static_cast<uint8_t>(bits)};
        std::fwrite(bytes, 1, sizeof bytes, file);
    }
    return close_written(file, name);
}

} // namespace

void convert3(const char *name) {
    const std::string input = std::string(name) + ".fp";
    Samples samples;
    if (!read_samples(input, samples)) {
        return;
    }
    const float largest = largest_value(samples);
    const double scale = 32764.0 / static_cast<double>(largest);
    std::printf("//Converting:\t\t%f\t%f\n", static_cast<double>(largest), scale);
    const std::string output = output_name(input);
    std::printf("//Opening file: \t\"%s\"\n", output.c_str());
    const auto length = static_cast<float>(static_cast<double>(samples.size()) / R);
    if (!write_header(output, length)) {
        return;
    }
    std::puts("//Writing sound data:");
    append_samples(output, samples, scale);
    if (dwbg) {
        std::puts("//Deallocating buffers\a//s_DONE!");
    }
}
