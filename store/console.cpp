#include "store/console.h"

#include <cctype>
#include <cstdio>
#include <cstring>

bool read_word(char *word, size_t size) {
    std::fflush(stdout);
    int c = std::getchar();
    while (c != EOF && std::isspace(c)) {
        c = std::getchar();
    }
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

bool read_line(char *line, size_t size) {
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
    std::fflush(stdout);
    int c = std::getchar();
    while (c != EOF && c != '\n') {
        c = std::getchar();
    }
}
