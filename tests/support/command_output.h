// tests/support/command_output.h -- what other programs say, for the tests of the window too.
#pragma once

#include <cstdio>
#include <string>

/// All that a shell command writes; empty where it cannot be started.
inline std::string output_of(const std::string &command) {
    std::string text;
    if (FILE *from = popen(command.c_str(), "r")) {
        char bytes[4096];
        while (const size_t count = fread(bytes, 1, sizeof bytes, from)) {
            text.append(bytes, count);
        }
        pclose(from);
    }
    return text;
}
