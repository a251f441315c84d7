#include "tests/support/console.h"

#include <cstdio>
#include <cstdlib>

namespace {

std::string captured(FILE *&stream, const std::function<void()> &work) {
    char *text = nullptr;
    size_t size = 0;
    FILE *kept = stream;
    stream = open_memstream(&text, &size);
    work();
    std::fclose(stream);
    stream = kept;
    std::string result(text, size);
    std::free(text);
    return result;
}

} // namespace

std::string printed(const std::function<void()> &work) {
    return captured(stdout, work);
}

std::string complained(const std::function<void()> &work) {
    return captured(stderr, work);
}

std::string conversation(const std::string &input, const std::function<void()> &work) {
    FILE *replies = std::tmpfile();
    std::fwrite(input.data(), 1, input.size(), replies);
    std::rewind(replies);
    FILE *kept = stdin;
    stdin = replies;
    std::string result = printed(work);
    stdin = kept;
    std::fclose(replies);
    return result;
}
