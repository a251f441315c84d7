#include "export/new_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

NewFile::~NewFile() {
    if (descriptor != -1) {
        close_file();
        unlink(path.c_str());
    }
}

bool NewFile::exists(const char *name) {
    // Without waiting: a named pipe would hold the open up until somebody writes into it.
    const int found = open(name, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (found == -1) {
        return false;
    }
    close(found);
    return true;
}

bool NewFile::create(const char *name) {
    constexpr mode_t for_all = 0666; // less the process's mask
    descriptor = open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, for_all);
    path = name;
    fault = 0;
    return descriptor != -1;
}

void NewFile::flush() {
    std::string_view rest = text.since(0);
    while (!rest.empty() && fault == 0) {
        const ssize_t wrote = write(descriptor, rest.data(), rest.size());
        if (wrote >= 0) {
            rest.remove_prefix(static_cast<size_t>(wrote));
        } else if (errno != EINTR) {
            fault = errno;
        }
    }
    text.clear();
}

void NewFile::close_file() {
    if (close(descriptor) == -1 && fault == 0) {
        fault = errno;
    }
    descriptor = -1;
}

bool NewFile::finish() {
    flush();
    close_file();
    if (fault == 0) {
        return true;
    }
    std::fprintf(stderr, "%s: %s\n", path.c_str(), std::strerror(fault));
    unlink(path.c_str());
    return false;
}
