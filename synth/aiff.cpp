#include "synth/aiff.h"

#include "synth/IEEE80.h"
#include "synth/byte_order.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

bool read_tag(FILE *file, const char *tag) {
    char found[4];
    return std::fread(found, 1, 4, file) == 4 && std::memcmp(found, tag, 4) == 0;
}

bool read_long(FILE *file, int64_t &value) {
    uint8_t bytes[4];
    if (std::fread(bytes, 1, 4, file) != 4) {
        return false;
    }
    value = bytes2l_swap(bytes);
    return true;
}

bool read_short(FILE *file, int16_t &value) {
    uint8_t bytes[2];
    if (std::fread(bytes, 1, 2, file) != 2) {
        return false;
    }
    value = bytes2s_swap(bytes);
    return true;
}

bool read_rate(FILE *file, uint8_t (&rate)[10]) {
    uint8_t bytes[10];
    if (std::fread(bytes, 1, 10, file) != 10) {
        return false;
    }
    std::memcpy(rate, bytes, 10);
    return true;
}

void write_tag(FILE *file, const char *tag) {
    std::fprintf(file, "%c%c%c%c", tag[0], tag[1], tag[2], tag[3]);
}

void write_long(FILE *file, int64_t value) {
    uint8_t bytes[4];
    clbytes_swap(value, bytes);
    std::fwrite(bytes, 1, 4, file);
}

void write_short(FILE *file, int16_t value) {
    uint8_t bytes[2];
    csbytes_swap(value, bytes);
    std::fwrite(bytes, 1, 2, file);
}

/// `header` holds the sums already.
void write_fields(FILE *file, const AiffHeader &header) {
    write_tag(file, "FORM");
    write_long(file, header.form_size);
    write_tag(file, "AIFF");
    write_tag(file, "COMM");
    write_long(file, 18); // whatever comm_size and channels hold
    write_short(file, 1);
    write_long(file, header.frames);
    write_short(file, header.sample_size);
    std::fwrite(header.rate, 1, sizeof header.rate, file);
    write_tag(file, "SSND");
    write_long(file, header.ssnd_size);
    write_long(file, header.offset);
    write_long(file, header.block_size);
}

} // namespace

int64_t whole_frames(float frames) {
    constexpr float most = 0x1p56f;
    return std::isnan(frames) ? 0 : static_cast<int64_t>(std::clamp(frames, -most, most));
}

AiffHeader initAiff_h(AiffHeader header) {
    header.form_size = 46;
    header.comm_size = 18;
    header.channels = 1;
    header.frames = 0;
    header.sample_size = 16;
    std::memset(header.rate, '0', 8);
    header.ssnd_size = 8;
    header.offset = 0;
    header.block_size = 0;
    return header;
}

AiffHeader rdAiff_h(FILE *file, AiffHeader header) {
    // The chain ends at the first part that is missing or different.
    static_cast<void>(read_tag(file, "FORM") && read_long(file, header.form_size) &&
                      read_tag(file, "AIFF") && read_long(file, header.comm_size) &&
                      read_short(file, header.channels) && read_long(file, header.frames) &&
                      read_short(file, header.sample_size) && read_rate(file, header.rate) &&
                      read_tag(file, "SSND") && read_long(file, header.ssnd_size) &&
                      read_long(file, header.offset) && read_long(file, header.block_size));
    return header;
}

AiffHeader wrAiff_h3(float length, float rate, FILE *file, AiffHeader header) {
    std::printf("//Writing header\t  length = %6.3f\trate = %8.2f\n", length, rate);
    const int64_t frames = whole_frames(length * rate);
    header.sample_size = 16;
    header.offset = 0;
    header.block_size = 0;
    header.ssnd_size += frames * 2;
    ConvertToIeeeExtended(rate, header.rate);
    header.form_size += header.sample_size * frames / 8;
    header.frames += frames;
    if (file != nullptr) {
        write_fields(file, header);
    }
    return header;
}
