#include "tests/export/export_support.h"

#include "export/export3d.h"
#include "tests/support/child.h"

#include <algorithm>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <sys/resource.h>

std::string ExportTest::path(const std::string &file) const {
    return folder.path(file);
}

std::string ExportTest::text_of(const std::string &file) const {
    return std::filesystem::exists(path(file)) ? folder.read(file) : "none";
}

void ExportTest::make(const std::string &file, const std::string &text) const {
    folder.write(file, text);
}

std::vector<std::string> ExportTest::files() const {
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(folder.path())) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::function<void()> on_store(Exporter *exporter) {
    return [exporter] { exporter(sndstart, sndlen, maxamp, parray, npoints, partials); };
}

std::function<void()> sdif_on_store(int32_t selection) {
    return [selection] { sdif(sndstart, sndlen, maxamp, parray, npoints, partials, selection); };
}

void mark(int32_t i, int32_t first, int32_t last, uint16_t value) {
    for (int32_t j = first; j <= last; ++j) {
        parray[i][j].selected = value;
    }
}

std::vector<Partial> two_partials() {
    return {{{0.0f, 440.0f, 0.0f}, {0.5f, 441.12345f, -20.0f}, {1.0006f, 442.0f, -40.0f}},
            {{0.25f, 880.0f, -6.0f}, {2.0f, 12345.678f, -140.0f}}};
}

std::string formatted(const char *format, ...) {
    va_list values;
    va_start(values, format);
    char *text = nullptr;
    const int length = vasprintf(&text, format, values);
    va_end(values);
    std::string result(text, static_cast<size_t>(length));
    std::free(text);
    return result;
}

ShortOfRoom short_of_room(size_t bytes, const std::string &input,
                          const std::function<void()> &work) {
    // Standard output and error of a child are files, too, and small in these tests.
    const ChildResult result = in_child(input, [bytes, &work] {
        std::signal(SIGXFSZ, SIG_IGN); // the write then fails with EFBIG
        const rlimit limit = {bytes, bytes};
        setrlimit(RLIMIT_FSIZE, &limit);
        work();
    });
    return {result.out, result.err};
}
