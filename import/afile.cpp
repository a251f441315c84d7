#include "import/afile.h"

#include <algorithm>
#include <cstdio>

FrameCount t_frames = {};

namespace {

/// Goes on behind the name of a SPEAR layout: its `type` where the word that must follow does.
int32_t after_format_name(TokenFile &file, int32_t type) {
    const std::string_view token = read_token(file);
    echo_token(token);
    if (!token_is(token, "point-type")) {
        return unknown_text;
    }
    std::puts("success!");
    return type;
}

/// Reads up to the token `text`; false where the file ends first.
bool read_up_to(TokenFile &file, std::string_view text) {
    while (!token_is(read_token(file), text)) {
        if (file.ended) {
            return false;
        }
    }
    return !file.ended;
}

/// The type that the name-value table of an SDIF text tells: 0 for a name that is not known,
/// -1 where the table or the opening of the frames is missing.
int32_t type_of_table(TokenFile &file) {
    if (!read_up_to(file, "TableName")) {
        return unknown_text;
    }
    const std::string_view name = read_token(file);
    int32_t type = lisp_list;
    if (token_is(name, "HarmonicTracks;")) {
        type = sdif_harmonic;
    } else if (token_is(name, "SinusoidalTracks;")) {
        type = sdif_inharmonic;
    }
    echo_token(name);
    if (!read_up_to(file, "SDFC")) {
        return unknown_text;
    }
    echo_token(file.token);
    return type;
}

/// The word that the first frame of each SDIF type begins with; a list has none to ask for.
std::string_view frame_word(int32_t type) {
    switch (type) {
    case sdif_inharmonic:
        return "1TRC";
    case sdif_harmonic:
        return "1HRM";
    case sdif_fundamental:
        return "1FQ0";
    default:
        return {};
    }
}

/// Goes on behind the word "SDIF".
int32_t sdif_type(TokenFile &file) {
    int32_t type = sdif_fundamental;
    if (token_is(read_token(file), "1NVT")) {
        echo_token(file.token);
        if (token_is(read_token(file), "{")) {
            type = type_of_table(file);
        }
    }
    if (type == unknown_text) {
        return unknown_text;
    }
    const std::string_view word = read_token(file);
    echo_token(word);
    const std::string_view wanted = frame_word(type);
    if (!wanted.empty() && !token_is(word, wanted)) {
        return unknown_text;
    }
    std::puts("success!");
    return type;
}

int32_t type_by_words(TokenFile &file) {
    std::string_view token = read_token(file);
    if (!token_begins(token, '(')) {
        echo_token(token);
    }
    if (token_is(token, "par-text-partials-format")) {
        return after_format_name(file, spear_partials);
    }
    if (token_is(token, "par-text-frame-format")) {
        std::printf("%d\n", spear_frames);
        return after_format_name(file, spear_frames);
    }
    if (token_is(token, "(")) {
        token = read_token(file);
        if (token_is(token, "PARTIALS")) {
            return lisp_list;
        }
    }
    if (!token_is(token, "SDIF")) {
        return unknown_text;
    }
    echo_token(token);
    return sdif_type(file);
}

} // namespace

int32_t detect_filetype(TokenFile &file) {
    const int32_t type = type_by_words(file);
    rewind_tokens(file);
    return type;
}

int32_t analysis_room(const TokenFile &file, int32_t declared) {
    constexpr size_t any_file_may = 65536; // partials that are named and hold nothing
    constexpr size_t smallest = 8;         // bytes of a partial or a row of one-digit numbers
    const size_t most = std::max(any_file_may, file.size / smallest + 1);
    return static_cast<int32_t>(std::min(static_cast<size_t>(std::max(declared, 0)), most));
}

int32_t refuse_corrupt(TokenFile &file) {
    std::puts("Error: Analysis file corrupt! Exiting...");
    close_tokens(file);
    return -1;
}
