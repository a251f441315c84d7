// SPEAR's two text layouts, partial after partial and frame after frame. Behind the end of a
// file its last token is read again and again: a partial or frame there is taken for empty where
// that token says so, and the file for corrupt where it does not.

#include "import/afile.h"

#include "store/phase.h"
#include "store/settings.h"
#include "toolbox/auxmath3d.h"

#include <cstdio>
#include <initializer_list>
#include <vector>

namespace {

/// Goes past those of the keywords that stand there, in their order. The token behind them is
/// the current one.
void pass_keywords(TokenFile &file, std::initializer_list<std::string_view> keywords) {
    read_token(file);
    for (const std::string_view keyword : keywords) {
        if (token_is(file.token, keyword)) {
            read_token(file);
        }
    }
}

/// Reads the count where the current token is the keyword before it.
bool read_count(TokenFile &file, std::string_view keyword, int32_t &count) {
    if (!token_is(file.token, keyword)) {
        return false;
    }
    count = read_whole(file);
    return true;
}

bool read_partials_head(TokenFile &file, int32_t &total) {
    pass_keywords(file,
                  {"par-text-partials-format", "point-type", "time", "frequency", "amplitude"});
    return read_count(file, "partials-count", total);
}

bool read_frames_head(TokenFile &file, int32_t &total, int32_t &frames) {
    pass_keywords(file, {"par-text-frame-format", "point-type", "index", "frequency", "amplitude"});
    if (!read_count(file, "partials-count", total)) {
        return false;
    }
    read_token(file);
    return read_count(file, "frame-count", frames);
}

/// Goes to the first partial; false where the head is not the one that was visited.
bool enter_partials(TokenFile &file, int32_t total) {
    int32_t again = 0;
    return read_partials_head(file, again) && again == total &&
           token_is(read_token(file), "partials-data");
}

bool enter_frames(TokenFile &file, int32_t total, int32_t frames) {
    int32_t again = 0;
    int32_t frames_again = 0;
    return read_frames_head(file, again, frames_again) && again == total &&
           frames_again == frames && token_is(read_token(file), "frame-data");
}

/// Whether n triples have been met, the last of them at the place reached.
bool were_there(const TokenFile &file, int32_t n) {
    return n == 0 || !file.ended;
}

bool can_hold(const TokenFile &file, int32_t n) {
    return n >= 0 && 3 * static_cast<uint64_t>(n) <= file.size;
}

float decibels(double amplitude) {
    return static_cast<float>(amp2db(amplitude));
}

void widen(float freq, float *low, float *high) {
    *low = freq < *low ? freq : *low;
    *high = freq > *high ? freq : *high;
}

void import_points(TokenFile &file, Breakpoint *points, int32_t n, float *low, float *high,
                   float *loudest) {
    for (int32_t j = 0; j < n; ++j) {
        Breakpoint &point = points[j];
        point.time = static_cast<float>(read_number(file));
        point.freq = static_cast<float>(read_number(file));
        widen(point.freq, low, high);
        point.amp = decibels(read_number(file));
        point.selected = 0;
        *loudest = point.amp > *loudest ? point.amp : *loudest;
    }
}

/// Where an import of frames stands.
struct FramesImport {
    TokenFile &file;
    int32_t total;
    const int32_t *counts;
    std::vector<int32_t> last; // the last point written of each partial, -1 for none
    float *low;
    float *high;
    float *loudest;
};

/// The place of the next point of partial `index`; null for a partial out of range.
Breakpoint *next_point(FramesImport &in, int32_t index) {
    if (index < 0 || index >= in.total) {
        return nullptr;
    }
    int32_t &last = in.last[static_cast<size_t>(index)];
    if (dbp) {
        std::printf("PrevPt[%d] = %d\n", index, last);
    }
    ++last;
    if (dbp) {
        std::printf("CurrPt[%d] = %d\n", index, last);
    }
    return last < in.counts[index] ? parray[index] + last : nullptr;
}

void import_frame_point(FramesImport &in, float time) {
    const int32_t index = read_whole(in.file);
    Breakpoint *point = next_point(in, index);
    const float freq = static_cast<float>(read_number(in.file));
    widen(freq, in.low, in.high);
    const float amp = decibels(read_number(in.file));
    if (point == nullptr) {
        return;
    }
    point->time = time;
    point->freq = freq;
    point->amp = amp;
    point->selected = 0;
    *in.loudest = amp > *in.loudest ? amp : *in.loudest;
    if (dbp) {
        std::printf("[%d][%d]\t %f\t%f\t%f\n", index, in.last[static_cast<size_t>(index)], time,
                    freq, amp);
    }
}

} // namespace

int32_t visit_spearfile(TokenFile &file, int32_t *total) {
    if (!read_partials_head(file, *total)) {
        return -1;
    }
    std::printf("Partials: %d\n", *total);
    rewind_tokens(file);
    return 0;
}

int32_t revisit_spearfile(TokenFile &file, const int32_t *total, int32_t *counts) {
    if (!enter_partials(file, *total) || *total > analysis_room(file, *total)) {
        return -1;
    }
    for (int32_t i = 0; i < *total; ++i) {
        read_token(file);
        counts[i] = read_whole(file);
        skip_tokens(file, 2);
        if (!can_hold(file, counts[i])) {
            return -1;
        }
        skip_tokens(file, 3 * static_cast<int64_t>(counts[i]));
        if (!were_there(file, counts[i])) {
            return -1;
        }
    }
    rewind_tokens(file);
    return 0;
}

int32_t import_spearfile(TokenFile &file, const int32_t *total, const int32_t *counts, float *low,
                         float *high, float *loudest) {
    if (!enter_partials(file, *total)) {
        return -1;
    }
    *low = 24000.0f;
    *high = 0.0f;
    *loudest = -120.0f;
    for (int32_t i = 0; i < *total; ++i) {
        skip_tokens(file, 3);
        pass_float(file);
        import_points(file, parray[i], counts[i], low, high, loudest);
    }
    for (int32_t i = 0; i < *total; ++i) {
        chain_phases(parray[i], counts[i]);
    }
    return spear_partials;
}

int32_t visit_spearrffile(TokenFile &file, int32_t *total, FrameCount *frames) {
    *frames = {};
    if (!read_frames_head(file, *total, frames->count)) {
        return -1;
    }
    std::printf("Partials: %d\n", *total);
    std::printf("Frames  : %d\n", frames->count);
    rewind_tokens(file);
    return 0;
}

int32_t revisit_spearrffile(TokenFile &file, const int32_t *total, const FrameCount *frames,
                            int32_t *counts) {
    if (!enter_frames(file, *total, frames->count) || *total > analysis_room(file, *total)) {
        return -1;
    }
    for (int32_t i = 0; i < frames->count; ++i) {
        read_token(file);
        const int32_t n = read_whole(file);
        for (int32_t j = 0; j < n && !file.ended; ++j) {
            const int32_t index = read_whole(file);
            if (index >= 0 && index < *total && !file.ended) {
                ++counts[index];
            }
            skip_tokens(file, 2);
        }
        if (n > 0 && file.ended) {
            return -1;
        }
        if (file.ended) {
            break; // every further frame would be as empty
        }
    }
    rewind_tokens(file);
    return 0;
}

int32_t import_spearrffile(TokenFile &file, const int32_t *total, const FrameCount *frames,
                           const int32_t *counts, float *low, float *high, float *loudest) {
    if (!enter_frames(file, *total, frames->count)) {
        return -1;
    }
    const size_t room = *total > 0 ? static_cast<size_t>(*total) : 0;
    FramesImport in{file, *total, counts, std::vector<int32_t>(room, -1), low, high, loudest};
    for (int32_t i = 0; i < frames->count && !file.ended; ++i) {
        const float time = static_cast<float>(read_number(file));
        const int32_t n = read_whole(file);
        for (int32_t j = 0; j < n && !file.ended; ++j) {
            import_frame_point(in, time);
        }
    }
    std::puts("SPEAR frames file imported");
    for (int32_t i = 0; i < *total; ++i) {
        chain_phases(parray[i], counts[i]);
    }
    rewind_tokens(file);
    return spear_frames;
}
