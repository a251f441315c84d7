#include "envelope/lpcf.h"

#include "store/console.h"
#include "store/settings.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int32_t judged = 12; // elements whose signs are counted
constexpr int32_t mended = 15; // last elements that are mended
constexpr int32_t a_dot = 128; // elements
constexpr int32_t a_line = 80; // dots
constexpr int32_t a_mark = 16; // frames
constexpr float beyond_end = -1.0f;

/// Reads a token into `text`; at the end of the file `text` stays.
void read_text() {
    read_token(afPtr);
    if (!afPtr.ended) {
        const size_t length = std::min(afPtr.token.size(), lpc_text_room - 1);
        std::copy_n(afPtr.token.data(), length, text);
        text[length] = '\0';
    }
}

double read_value() {
    read_text();
    return std::atof(text);
}

/// Reads the head of the first frame: its time is returned, `p` is its count of points. Leaves
/// the file at its head.
double read_head(int32_t &p) {
    rewind_tokens(afPtr);
    text[0] = '\0';
    const double time = read_value();
    read_text();
    p = token_integer(text);
    rewind_tokens(afPtr);
    return time;
}

/// Goes over what follows the first token of a frame of p points.
void skip_rest_of_frame(int32_t p) {
    skip_tokens(afPtr, 2 * int64_t{p} + 1);
}

/// Closes the open file and opens another.
bool change_file(const char *filename) {
    close_tokens(afPtr);
    return open_tokens(afPtr, filename);
}

double mend(double amp, int32_t negatives) {
    if (amp > 10.0 || (amp < 0.0 && negatives < 3)) {
        return 0.0;
    }
    return amp > -10.0 && negatives == 11 ? -96.0 : amp;
}

void print_mark(int32_t elements) {
    if (elements % a_dot == 0) {
        std::putchar('.');
    }
    if (elements % (a_dot * a_line) == 0) {
        std::putchar('\n');
    }
}

} // namespace

bool ask_for_lpc_file() {
    say("//Enter the Audiosculpt LPC analysis file to open:\n>\t");
    return read_word(afname, sizeof afname);
}

int16_t lpcf_open(const char *filename) {
    if (!change_file(filename)) {
        return Oerror = lpc_no_file;
    }
    text[0] = '\0';
    read_text();
    if (std::isdigit(static_cast<unsigned char>(text[0])) == 0) {
        Oerror = lpc_no_number;
    } else {
        read_text();
        const int32_t p = token_integer(text);
        // A count that the status cannot hold is the nearest that it can.
        Oerror = static_cast<int16_t>(std::clamp(p, int32_t{INT16_MIN}, int32_t{INT16_MAX}));
    }
    rewind_tokens(afPtr);
    return Oerror;
}

float lpcf_pos(int32_t n) {
    int32_t p = 0;
    value2 = read_head(p);
    if (n == 0) {
        read_text();
        value = value2;
        rewind_tokens(afPtr);
        return static_cast<float>(value);
    }
    for (int32_t i = 0; p >= 0; ++i) {
        const size_t head = afPtr.next;
        const double time = read_value();
        if (afPtr.ended) {
            break;
        }
        if (i == n) {
            afPtr.next = head;
            return static_cast<float>(value);
        }
        if (i + 1 == n) {
            value = time + value2;
        }
        skip_rest_of_frame(p);
    }
    return beyond_end;
}

LpcSize lpcf_len(const char *filename) {
    if (!change_file(filename)) {
        return {0, 0.0f};
    }
    int32_t p = 0;
    const double first = read_head(p);
    double latest = first;
    int32_t frames = 0;
    while (p >= 0) {
        const double time = read_value();
        if (afPtr.ended) {
            break;
        }
        latest = time;
        skip_rest_of_frame(p);
        if (++frames % a_mark == 0) {
            std::putchar('|');
        }
    }
    rewind_tokens(afPtr);
    std::putchar('\n');
    lpcf_size.frames = static_cast<int16_t>(std::min(frames, int32_t{INT16_MAX}));
    lpcf_size.duration = static_cast<float>(latest - first);
    return lpcf_size;
}

LpcFrame lpc_initialize(int32_t, int32_t p) {
    const size_t records = p >= 0 ? static_cast<size_t>(p) + 1 : 0;
    auto *frame = static_cast<LpcFrame>(std::calloc(records + 1, sizeof(LpcRecord *)));
    for (size_t i = 0; frame != nullptr && i < records; ++i) {
        frame[i] = static_cast<LpcRecord *>(std::calloc(1, sizeof(LpcRecord)));
        if (frame[i] == nullptr) {
            clear_lpc(frame, p);
            frame = nullptr;
        }
    }
    return frame;
}

void lpcf_read(LpcFrame frame, int32_t p) {
    if (afPtr.ended) {
        std::putchar('\n');
        return;
    }
    const int32_t last = std::min(p, lpc_records(frame) - 1);
    int32_t negatives = 0;
    for (int32_t i = 0; i <= last; ++i) {
        double amp = read_value();
        negatives += i < judged && amp < 0.0 ? 1 : 0;
        if (i > p - mended) {
            amp = mend(amp, negatives);
        }
        *frame[i] = {amp, read_value()};
        print_mark(i + 1);
    }
    if (!afPtr.ended) {
        value = std::atof(text);
    }
    std::putchar('\n');
}

void clear_lpc(LpcFrame frame, int32_t n) {
    const int32_t records = std::min(n, lpc_records(frame));
    for (int32_t i = 0; i < records; ++i) {
        std::free(frame[i]);
    }
    std::free(frame);
}

LpcFrame copySpectra(LpcFrame dst, LpcFrame src, int32_t p) {
    const int32_t records = std::min(lpc_records(dst), lpc_records(src));
    for (int32_t i = 0; i <= p && i < records; ++i) {
        *dst[i] = *src[i];
    }
    return dst;
}

int32_t lpc_records(LpcFrame frame) {
    int32_t records = 0;
    while (frame != nullptr && frame[records] != nullptr) {
        ++records;
    }
    return records;
}
