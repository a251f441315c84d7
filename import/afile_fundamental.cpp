// A frame of the curve has one to four columns: after each of the first three the next frame may
// follow. Both passes walk alike and pass over the first frame.

#include "import/afile_fundamental.h"

#include "import/afile.h"
#include "store/phase.h"
#include "toolbox/auxmath3d.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::string_view signature = "1FQ0";
constexpr float silence = -140.0f; // dB

bool ended(const TokenFile &file) {
    return file.ended || token_is(file.token, "ENDC") || token_is(file.token, "ENDF");
}

bool next(TokenFile &file) {
    read_token(file);
    return !ended(file);
}

bool next(TokenFile &file, int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
        if (!next(file)) {
            return false;
        }
    }
    return true;
}

bool read_value(TokenFile &file, float &value) {
    value = static_cast<float>(read_number(file));
    return !ended(file);
}

/// The first three words of the file, the third that of a frame.
bool enter_curve(TokenFile &file, bool echo) {
    rewind_tokens(file);
    read_token(file);
    if (echo) {
        echo_token(file.token);
    }
    skip_tokens(file, 2);
    return token_is(file.token, signature);
}

int32_t refuse_curve(TokenFile &file) {
    echo_token(file.token);
    rewind_tokens(file);
    return -1;
}

struct CurveFrame {
    float time = 0.0f; // seconds
    float freq = 0.0f; // Hz
    float amp = silence;
    bool more = false; // a frame follows, its signature read
};

/// Reads the frame whose signature was read; false where the data end before its frequency.
bool read_frame(TokenFile &file, CurveFrame &frame) {
    frame.amp = silence;
    frame.more = false;
    if (!next(file, 2) || !read_value(file, frame.time) || !next(file, 4) ||
        !read_value(file, frame.freq)) {
        return false;
    }
    constexpr int32_t further_columns = 3;
    for (int32_t i = 0; i < further_columns; ++i) {
        if (!next(file)) {
            return true;
        }
        if (token_is(file.token, signature)) {
            frame.more = true;
            return true;
        }
    }
    frame.amp = static_cast<float>(amp2db(token_number(file.token)));
    frame.more = next(file);
    return true;
}

/// Lines of points on their way to the console, sent in blocks: a curve may have a million.
class PointLines {
  public:
    ~PointLines() {
        send();
    }
    PointLines() = default;
    PointLines(const PointLines &) = delete;
    PointLines &operator=(const PointLines &) = delete;

    /// "PARRAY[0][%d]: %f  %f  %f\n", as printf would have it.
    void add(int32_t j, const CurveFrame &frame) {
        if (block.size() - used < longest_line) {
            send();
        }
        put("PARRAY[0][");
        used = place_of(std::to_chars(block.data() + used, block.data() + block.size(), j).ptr);
        put("]: ");
        put(frame.time);
        put("  ");
        put(frame.freq);
        put("  ");
        put(frame.amp);
        put("\n");
    }

  private:
    static constexpr size_t longest_line = 256; // bytes; a number takes 47 at the most
    size_t place_of(const char *at) const {
        return static_cast<size_t>(at - block.data());
    }
    void put(std::string_view text) {
        std::memcpy(block.data() + used, text.data(), text.size());
        used += text.size();
    }
    void put(float value) {
        constexpr int decimals = 6;
        used =
            place_of(std::to_chars(block.data() + used, block.data() + block.size(),
                                   static_cast<double>(value), std::chars_format::fixed, decimals)
                         .ptr);
    }
    void send() {
        std::fwrite(block.data(), 1, used, stdout);
        used = 0;
    }
    std::array<char, 16384> block;
    size_t used = 0;
};

void set_point(Breakpoint *points, int32_t j, const CurveFrame &frame) {
    Breakpoint &point = points[j];
    point.time = frame.time;
    point.freq = frame.freq;
    point.amp = frame.amp;
    point.ampunits = 1;
    point.phase = 0.0f;
    if (j > 0) {
        const Breakpoint &before = points[j - 1];
        const float cycles = (point.time - before.time) * before.freq;
        point.phase = advance_phase(before.phase, cycles);
    }
}

void shape_curve(Breakpoint *points, int32_t n) {
    if (n < 1) {
        return;
    }
    points[0].amp = silence;
    if (n > 1) {
        points[1].amp = -92.0f;
    }
    points[n - 1].amp = silence;
    if (n > 1) {
        points[n - 2].amp = -122.0f;
        points[0].freq = points[1].freq > points[0].freq ? points[1].freq : points[0].freq;
    }
}

} // namespace

int32_t revisit_fundamental(TokenFile &file, int32_t *counts) {
    if (!enter_curve(file, true)) {
        return refuse_curve(file);
    }
    CurveFrame frame;
    bool more = read_frame(file, frame) && frame.more;
    while (more && read_frame(file, frame)) {
        ++counts[0];
        more = frame.more;
    }
    rewind_tokens(file);
    return sdif_fundamental;
}

int32_t import_fundamental(TokenFile &file, const int32_t *counts, float *loudest) {
    if (!enter_curve(file, false)) {
        return refuse_curve(file);
    }
    CurveFrame frame;
    bool more = read_frame(file, frame) && frame.more;
    {
        PointLines lines;
        for (int32_t j = 0; j < counts[0] && more && read_frame(file, frame); ++j) {
            set_point(parray[0], j, frame);
            lines.add(j, frame);
            more = frame.more;
        }
    }
    *loudest = -10.0f;
    shape_curve(parray[0], counts[0]);
    rewind_tokens(file);
    return sdif_fundamental;
}
