// import/tokens.h -- an analysis file as a run of tokens set apart by white space: the one
// scanner of all readers. The file is read into memory once, so that the passes of a reader
// walk over memory. Numbers convert exactly as atof and atoi do. Window thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

class Progress;

/// One opened file. A token is the text up to white space or, as a C string would have it, up
/// to a zero byte. At the end of the file the last token is read again and again.
struct TokenFile {
    char *data = nullptr;         // the whole text and a zero byte behind it
    size_t size = 0;              // bytes of text
    size_t last = 0;              // where the last token of the text begins
    size_t next = 0;              // where the search for the next token starts
    std::string_view token;       // the last token read; empty before the first
    bool ended = false;           // a read met the end of the file
    Progress *progress = nullptr; // told of the place now and then, may be null
};

/// Reads the whole of a regular file or pipe. Returns false when it cannot be opened; when it
/// opens but cannot be read the system's reason goes to standard error as well.
bool open_tokens(TokenFile &file, const char *name);

/// Takes `size` bytes of text as the file; they are copied.
void open_tokens_from_memory(TokenFile &file, const char *text, size_t size);

/// Releases the text. Reading a closed file gives empty tokens.
void close_tokens(TokenFile &file);

/// Starts over at the head of the file.
void rewind_tokens(TokenFile &file);

/// Reads one token; at the end of the file the last one stays.
std::string_view read_token(TokenFile &file);

/// token_number of the next token, in one walk over it.
double read_number(TokenFile &file);

/// token_integer of the next token, in one walk over it.
int32_t read_whole(TokenFile &file);

/// Goes past what scanf's "%f" would take: a number, which may be the head of a token. Leaves the
/// place before a token that does not begin with one. The current token stays.
void pass_float(TokenFile &file);

/// Reads `count` tokens and keeps the last. Stops at the end of the file.
void skip_tokens(TokenFile &file, int64_t count);

/// Tokens are equal as C strings.
bool token_is(std::string_view token, std::string_view text);

/// Tells whether the token begins with `c`.
inline bool token_begins(std::string_view token, char c) {
    return !token.empty() && token.front() == c;
}

/// atof of a token: the longest number at its head, 0 where there is none.
double token_number(std::string_view token);

/// atoi of a token, clamped to the type where the text exceeds it.
int32_t token_integer(std::string_view token);

/// Prints a token on a line of its own; one longer than a few hundred characters is cut.
void echo_token(std::string_view token);
