#include "synth/sound_files.h"

#include "store/store.h"
#include "synth/aiff.h"
#include "synth/sound.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

/// A file being written. Tells the first fault alone, with the system's reason.
class Writing {
  public:
    Writing(const char *name, bool fits) : name(name), fits(fits) {}

    FILE *open(const char *mode) {
        errno = ENAMETOOLONG;
        FILE *file = fits ? std::fopen(name, mode) : nullptr;
        tell_unless(file != nullptr);
        return file;
    }

    void close(FILE *file) {
        if (file != nullptr) {
            tell_unless(std::ferror(file) == 0);
            tell_unless(std::fclose(file) == 0);
        }
    }

    /// Opens for reading; null, without a word, when it is not there.
    FILE *existing() const {
        return fits ? std::fopen(name, "r") : nullptr;
    }

    void tell_unless(bool good) {
        if (!good && !told) {
            std::fprintf(stderr, "%s: %s\n", name, std::strerror(errno));
            told = true;
        }
    }

  private:
    const char *name;
    bool fits; // the name, with its extension, into the buffers that hold it
    bool told = false;
};

void write_header(Writing &writing, const char *name, float length, float rate) {
    AiffHeader header = initAiff_h({});
    if (FILE *old = writing.existing()) {
        header = rdAiff_h(old, header);
        std::fclose(old);
    } else {
        writing.close(writing.open("w"));
    }
    FILE *file = writing.open("rb+");
    std::printf("//Opening file\t\t  \"%s\"\n", name);
    wrAiff_h3(length, rate, file, header);
    writing.close(file);
}

/// Samples as big-endian shorts, block by block.
void write_samples(Writing &writing, FILE *file, const float *samples, int64_t frames,
                   float factor) {
    constexpr int64_t block = 4096;
    uint8_t image[2 * block];
    for (int64_t done = 0; done < frames; done += block) {
        const int64_t now = std::min(block, frames - done);
        for (int64_t i = 0; i < now; ++i) {
            const auto bits = static_cast<uint16_t>(sample16(samples[done + i] * factor));
            image[2 * i] = static_cast<uint8_t>(bits >> 8);
            image[2 * i + 1] = static_cast<uint8_t>(bits);
        }
        const auto size = static_cast<size_t>(2 * now);
        const bool good = std::fwrite(image, 1, size, file) == size;
        writing.tell_unless(good);
        if (!good) {
            return;
        }
    }
}

} // namespace

bool sound_path(char (&path)[sound_path_room], const char *name, const char *extension) {
    const size_t length = std::strlen(name);
    const size_t more = std::strlen(extension);
    path[0] = '\0';
    if (length + more >= sizeof path) {
        return false;
    }
    std::memcpy(path, name, length);
    std::memcpy(path + length, extension, more + 1);
    return true;
}

int16_t sample16(float value) {
    return std::isnan(value) ? int16_t{0}
                             : static_cast<int16_t>(std::clamp(value, -32768.0f, 32767.0f));
}

void append_aiff(char *name, const float *samples, int64_t frames, float factor, float length,
                 float rate) {
    char path[sound_path_room];
    const bool fits = sound_path(path, name, ".AIFF");
    if (fits) {
        std::memcpy(name, path, std::strlen(path) + 1);
    }
    Writing writing(name, fits);
    write_header(writing, name, length, rate);
    FILE *file = writing.open("ab+");
    std::puts("//Writing sound data...");
    if (file != nullptr && samples != nullptr) {
        write_samples(writing, file, samples, frames, factor);
    }
    writing.close(file);
}

int32_t write2soundfile(char *name, int64_t frames) {
    append_aiff(name, fBuffer, frames, 32767.0f, sndlen, static_cast<float>(R));
    std::puts("//Deallocating buffers...\n//\ts_DONE!");
    return 0;
}

int32_t write2rawfloatfile(const char *name, const float *buffer, int64_t frames) {
    char path[sound_path_room];
    const bool fits = sound_path(path, name, ".fp");
    Writing writing(fits ? path : name, fits);
    FILE *old = writing.existing();
    if (old != nullptr) {
        std::fclose(old);
    }
    FILE *file = writing.open(old != nullptr ? "ab+" : "wb+");
    if (file != nullptr && buffer != nullptr && frames > 0) {
        const auto count = static_cast<size_t>(frames);
        writing.tell_unless(std::fwrite(buffer, sizeof(float), count, file) == count);
    }
    writing.close(file);
    return 0;
}
