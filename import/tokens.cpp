#include "import/tokens.h"

#include "store/progress.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// White space as isspace has it in the C locale, wherever the program runs.
constexpr std::array<bool, 256> make_space_table() {
    std::array<bool, 256> table = {};
    for (char c : {' ', '\t', '\n', '\v', '\f', '\r'}) {
        table[static_cast<unsigned char>(c)] = true;
    }
    return table;
}
constexpr std::array<bool, 256> space = make_space_table();

bool is_space(char c) {
    return space[static_cast<unsigned char>(c)];
}

/// Reads to the end of `fd`. With the expected size known, one read fills the buffer and a
/// second one sees the end.
bool read_all(TokenFile &file, int fd, size_t expected) {
    constexpr size_t smallest = 1 << 16; // bytes, for a pipe, whose size is not known
    size_t room = expected > 0 ? expected + 2 : smallest;
    file.data = static_cast<char *>(std::malloc(room));
    while (file.data != nullptr) {
        const ssize_t got = read(fd, file.data + file.size, room - file.size - 1);
        if (got == 0) {
            file.data[file.size] = '\0';
            return true;
        }
        if (got < 0 && errno != EINTR) {
            return false;
        }
        file.size += got > 0 ? static_cast<size_t>(got) : 0;
        if (file.size + 1 == room) {
            room *= 2;
            char *grown = static_cast<char *>(std::realloc(file.data, room));
            if (grown == nullptr) {
                return false;
            }
            file.data = grown;
        }
    }
    return false;
}

/// Numbers that from_chars and strtod read alike: an optional minus and a digit or point, and
/// no "0x", which from_chars would read as 0.
bool plain_number(const char *text, const char *end) {
    if (text != end && *text == '-') {
        ++text;
    }
    if (text == end || (*text != '.' && (*text < '0' || *text > '9'))) {
        return false;
    }
    return end - text < 2 || (text[1] != 'x' && text[1] != 'X');
}

} // namespace

bool open_tokens(TokenFile &file, const char *name) {
    file = {};
    const int fd = open(name, O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    struct stat status;
    bool fine = fstat(fd, &status) == 0;
    if (fine && !S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        fine = false;
    }
    fine = fine && read_all(file, fd, static_cast<size_t>(status.st_size));
    if (!fine) {
        std::fprintf(stderr, "Quillgrove: %s: %s\n", name, std::strerror(errno));
        close_tokens(file);
    }
    close(fd);
    return fine;
}

void open_tokens_from_memory(TokenFile &file, const char *text, size_t size) {
    file = {};
    file.data = static_cast<char *>(std::malloc(size + 1));
    if (size > 0) {
        std::memcpy(file.data, text, size);
    }
    file.data[size] = '\0';
    file.size = size;
}

void close_tokens(TokenFile &file) {
    std::free(file.data);
    file = {};
}

void rewind_tokens(TokenFile &file) {
    file.next = 0;
    file.ended = false;
    file.token = {};
}

std::string_view read_token(TokenFile &file) {
    size_t at = file.next;
    while (at < file.size && is_space(file.data[at])) {
        ++at;
    }
    if (at >= file.size) {
        file.next = file.size;
        file.ended = true;
        return file.token;
    }
    const size_t begin = at;
    while (at < file.size && !is_space(file.data[at])) {
        ++at;
    }
    file.next = at;
    file.token = std::string_view(file.data + begin, at - begin);
    if (file.progress != nullptr) {
        file.progress->advance(at);
    }
    return file.token;
}

void skip_tokens(TokenFile &file, int64_t count) {
    for (int64_t i = 0; i < count && !file.ended; ++i) {
        read_token(file);
    }
}

bool token_is(std::string_view token, std::string_view text) {
    return token.starts_with(text) && (token.size() == text.size() || token[text.size()] == '\0');
}

double token_number(std::string_view token) {
    const char *text = token.data();
    const char *end = text + token.size();
    if (plain_number(text, end)) {
        double value;
        if (std::from_chars(text, end, value).ec == std::errc()) {
            return value;
        }
    }
    return std::strtod(std::string(token).c_str(), nullptr);
}

int32_t token_integer(std::string_view token) {
    const long value = std::strtol(std::string(token).c_str(), nullptr, 10);
    if (value > INT32_MAX) {
        return INT32_MAX;
    }
    return value < INT32_MIN ? INT32_MIN : static_cast<int32_t>(value);
}

void echo_token(std::string_view token) {
    constexpr size_t longest = 255;
    const std::string_view text = token.substr(0, std::min(token.find('\0'), longest));
    std::printf("%.*s\n", static_cast<int>(text.size()), text.data());
}
