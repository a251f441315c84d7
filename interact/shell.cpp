#include "interact/shell.h"

#include "store/console.h"
#include "store/settings.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

int (*run_command_line)(const char *) = std::system;

namespace {

constexpr const char *plain_shell = "/bin/sh";

char default_name[shell_word_size] = "/bin/sh";

/// The first name that the answer holds decides: "tcsh" stands before "csh", which it holds.
struct ShellRow {
    const char *name;
    const char *path;
};

const ShellRow shells[] = {
    {"tcsh", "/bin/tcsh"}, {"csh", "/bin/csh"}, {"ksh", "/bin/ksh"},
    {"bash", "/bin/bash"}, {"zsh", "/bin/zsh"},
};

bool holds_n(const char *word) {
    return std::strchr(word, 'n') != nullptr;
}

} // namespace

int32_t setshell(char *name) {
    if (name == nullptr) {
        std::strcpy(default_name, plain_shell);
        return 1;
    }
    for (const ShellRow &row : shells) {
        if (std::strstr(name, row.name) != nullptr) {
            std::strcpy(name, row.path);
            return 1;
        }
    }
    if (holds_n(name)) {
        std::puts("Shell operation cancelled...");
        return 0;
    }
    std::strcpy(name, plain_shell);
    return 1;
}

void shell(const char *path) {
    const char *command = path != nullptr ? path : default_name;
    std::puts(command);
    std::fflush(stdout);
    run_command_line(command);
    if (dwbg != 0) {
        std::putchar('\n');
    }
    std::puts("Shell operation terminated...");
}

void escape_to_shell() {
    char word[shell_word_size] = "";
    say("\nLaunch UNIX shell? Which? ");
    if (!read_word(word, sizeof word) || setshell(word) == 0) {
        return;
    }
    // The word is a path by now, and every path of the table holds an n: the line stays unsaid.
    if (!holds_n(word)) {
        std::printf("Launching %s. To return type \"exit\"\n", word);
    }
    shell(word);
}
