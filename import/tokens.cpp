#include "import/tokens.h"

#include "store/progress.h"

#include <algorithm>
#include <array>
#include <bit>
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

// Eight bytes of text at a time: a flag is the top bit of its byte, the first byte is the lowest.
constexpr uint64_t each = 0x0101010101010101u;
constexpr uint64_t flags = each * 0x80;
constexpr size_t word_size = sizeof(uint64_t);

uint64_t load_word(const char *text) {
    uint64_t word;
    std::memcpy(&word, text, word_size);
    return std::endian::native == std::endian::big ? __builtin_bswap64(word) : word;
}

/// Flags the bytes of white space: 32, and 9 to 13.
uint64_t space_flags(uint64_t word) {
    const uint64_t low = word & ~flags;
    const uint64_t other_than_blank = (low ^ each * 32) + ~flags;
    const uint64_t from_tab = low + each * (128 - 9);
    const uint64_t above_return = low + each * (128 - 14);
    return (~other_than_blank | (from_tab & ~above_return)) & ~word & flags;
}

int64_t count_flags(uint64_t word) {
    return static_cast<int64_t>(((word >> 7) * each) >> 56);
}

/// Goes over tokens in whole words of text and leaves the place before a token. Returns how many
/// it passed: fewer than `count`, and never the last of the file, so that read_token meets both.
int64_t pass_words(TokenFile &file, int64_t count) {
    size_t at = file.next;
    int64_t passed = 0;
    uint64_t spaces = flags; // a token that ends right here was counted when it was read
    while (at + word_size <= file.last) {
        const uint64_t found = space_flags(load_word(file.data + at));
        const int64_t ends = count_flags(found & ~(found << 8 | spaces >> 56));
        if (passed + ends >= count) {
            break;
        }
        passed += ends;
        spaces = found;
        at += word_size;
    }
    while (at > file.next && !is_space(file.data[at - 1])) {
        --at;
    }
    file.next = at;
    return passed;
}

/// Where the last token of the text begins; 0 where there is none.
size_t last_token(const char *text, size_t size) {
    while (size > 0 && is_space(text[size - 1])) {
        --size;
    }
    while (size > 0 && !is_space(text[size - 1])) {
        --size;
    }
    return size;
}

/// Where the text goes on behind white space; its size at the end.
size_t past_space(const TokenFile &file) {
    size_t at = file.next;
    while (at < file.size && is_space(file.data[at])) {
        ++at;
    }
    return at;
}

/// Makes the text from `begin` to `end` the current token.
void take_token(TokenFile &file, size_t begin, size_t end) {
    file.next = end;
    file.token = std::string_view(file.data + begin, end - begin);
    if (file.progress != nullptr) {
        file.progress->advance(end);
    }
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
            file.last = last_token(file.data, file.size);
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

/// Converts a token of at most 15 digits without an exponent, as analysis programs print them.
/// Its digits and its power of ten are whole numbers that a double holds, so the one division
/// rounds as strtod does. Returns the token's end, or null for any other text.
const char *short_decimal(const char *text, const char *end, double &value) {
    constexpr std::ptrdiff_t most_digits = 15;
    constexpr double powers[most_digits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool negative = text != end && *text == '-';
    text += negative ? 1 : 0;
    const char *point = nullptr;
    const char *first = text;
    uint64_t whole = 0;
    for (; text != end && !is_space(*text); ++text) {
        const unsigned digit = static_cast<unsigned char>(*text) - unsigned{'0'};
        if (digit <= 9) {
            whole = whole * 10 + digit;
        } else if (*text == '.' && point == nullptr) {
            point = text;
        } else {
            return nullptr;
        }
    }
    const std::ptrdiff_t digits = text - first - (point != nullptr ? 1 : 0);
    if (digits < 1 || digits > most_digits) {
        return nullptr;
    }
    const std::ptrdiff_t decimals = point != nullptr ? text - point - 1 : 0;
    const double size = static_cast<double>(whole) / powers[decimals];
    value = negative ? -size : size;
    return text;
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
    file.last = last_token(text, size);
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
    const size_t begin = past_space(file);
    if (begin >= file.size) {
        file.next = file.size;
        file.ended = true;
        return file.token;
    }
    size_t at = begin;
    while (at < file.size && !is_space(file.data[at])) {
        ++at;
    }
    take_token(file, begin, at);
    return file.token;
}

double read_number(TokenFile &file) {
    const size_t begin = past_space(file);
    double value;
    const char *text = file.data + begin;
    const char *stop = short_decimal(text, file.data + file.size, value);
    if (stop == nullptr) {
        return token_number(read_token(file));
    }
    take_token(file, begin, static_cast<size_t>(stop - file.data));
    return value;
}

int32_t read_whole(TokenFile &file) {
    constexpr size_t most_digits = 9; // so that any of them fits the type
    const size_t begin = past_space(file);
    size_t at = begin;
    int32_t value = 0;
    while (at < file.size && at - begin < most_digits && file.data[at] >= '0' &&
           file.data[at] <= '9') {
        value = value * 10 + (file.data[at] - '0');
        ++at;
    }
    if (at == begin || (at < file.size && !is_space(file.data[at]))) {
        return token_integer(read_token(file));
    }
    take_token(file, begin, at);
    return value;
}

void pass_float(TokenFile &file) {
    const size_t begin = past_space(file);
    size_t end = begin;
    while (end < file.size && !is_space(file.data[end])) {
        ++end;
    }
    const std::string token(file.data + begin, end - begin);
    char *stop = nullptr;
    static_cast<void>(std::strtod(token.c_str(), &stop));
    file.next = begin + static_cast<size_t>(stop - token.c_str());
    file.ended = file.ended || begin >= file.size;
}

void skip_tokens(TokenFile &file, int64_t count) {
    constexpr int64_t many = 16; // fewer are not worth the set-up
    if (count >= many) {
        count -= pass_words(file, count);
        if (file.progress != nullptr) {
            file.progress->look(file.next);
        }
    }
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
