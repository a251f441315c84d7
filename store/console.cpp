#include "store/console.h"

#include "store/published.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

namespace {

/// The first character that is not white space, or EOF.
int next_solid() {
    int c = std::getchar();
    while (c != EOF && std::isspace(c)) {
        c = std::getchar();
    }
    return c;
}

} // namespace

bool read_word(char *word, size_t size) {
    const StoreEditPause pause;
    std::fflush(stdout);
    int c = next_solid();
    if (c == EOF) {
        return false;
    }
    size_t length = 0;
    while (c != EOF && !std::isspace(c)) {
        if (length + 1 < size) {
            word[length++] = static_cast<char>(c);
        }
        c = std::getchar();
    }
    if (c != EOF) {
        std::ungetc(c, stdin);
    }
    word[length] = '\0';
    return true;
}

bool read_integer(int32_t &value) {
    const StoreEditPause pause;
    std::fflush(stdout);
    int c = next_solid();
    const bool negative = c == '-';
    if (c == '-' || c == '+') {
        c = std::getchar();
    }
    const bool matches = c != EOF && std::isdigit(c);
    int64_t number = 0;
    while (c != EOF && std::isdigit(c)) {
        // Held far outside the type, so that any number of digits is harmless.
        number = std::min(number * 10 + (c - '0'), int64_t{INT32_MAX} * 2);
        c = std::getchar();
    }
    if (c != EOF) {
        std::ungetc(c, stdin);
    }
    if (matches) {
        number = negative ? -number : number;
        value = static_cast<int32_t>(std::clamp<int64_t>(number, INT32_MIN, INT32_MAX));
    }
    return matches;
}

bool read_float(float &value) {
    const StoreEditPause pause;
    std::fflush(stdout);
    return std::scanf("%f", &value) == 1;
}

bool read_double(double &value) {
    const StoreEditPause pause;
    std::fflush(stdout);
    return std::scanf("%lf", &value) == 1;
}

bool read_line(char *line, size_t size) {
    const StoreEditPause pause;
    std::fflush(stdout);
    if (std::fgets(line, static_cast<int>(size), stdin) == nullptr) {
        return false;
    }
    const size_t length = std::strlen(line);
    if (length + 1 == size && line[length - 1] != '\n') {
        drop_line();
    }
    return true;
}

void say(const char *text) {
    const size_t length = std::strlen(text);
    const char last = length > 0 ? text[length - 1] : ' ';
    if (last == ' ' || last == '\t' || last == '\n') {
        std::fputs(text, stdout);
    } else {
        std::puts(text);
    }
}

void drop_line() {
    const StoreEditPause pause;
    std::fflush(stdout);
    int c = std::getchar();
    while (c != EOF && c != '\n') {
        c = std::getchar();
    }
}
