// The peak memory of loading a large list: the records, the file and some room besides.

#include "import/tokens.h"
#include "store/reading.h"
#include "store/store.h"
#include "tests/support/child.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int list_partials = 2000;
constexpr int list_points = 500; // each
constexpr long record_bytes = 28L * list_partials * list_points;
constexpr long room_besides = 48L << 20; // bytes

/// Writes a list of a million points to a new file and returns its name.
std::string write_large_list() {
    char name[] = "/tmp/quillgrove-memory-XXXXXX";
    FILE *file = fdopen(mkstemp(name), "w");
    std::fprintf(file, "( PARTIALS %d\n", list_partials);
    for (int i = 0; i < list_partials; ++i) {
        std::fprintf(file, "( POINTS %d\n", list_points);
        for (int j = 0; j < list_points; ++j) {
            std::fprintf(file, "%8.3f %9.3f %8.3f\n", i * 0.003 + j * 0.01, 50.0 + i,
                         -20.0 - j % 9);
        }
        std::fputs(")\n", file);
    }
    std::fputs(")\n", file);
    std::fclose(file);
    return name;
}

/// A field of the process's memory report, in bytes; -1 where it is missing.
long memory_field(const char *field) {
    FILE *file = std::fopen("/proc/self/status", "r");
    char line[256];
    long kilobytes = -1;
    while (file != nullptr && std::fgets(line, sizeof line, file) != nullptr) {
        if (std::strncmp(line, field, std::strlen(field)) == 0) {
            kilobytes = std::atol(line + std::strlen(field));
        }
    }
    if (file != nullptr) {
        std::fclose(file);
    }
    return kilobytes < 0 ? -1 : kilobytes * 1024;
}

/// Loads the file in this process; how far the peak rose above the memory in use before.
long growth_while_loading(const char *name) {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    reset_store_globals();
    malloc_trim(0); // what earlier tests have freed would otherwise be filled first
    const long before = memory_field("VmRSS:");
    TokenFile file;
    if (!open_tokens(file, name)) {
        return -1;
    }
    import_analysis(file);
    const bool whole = partials == list_partials && npoints[partials - 1] == list_points;
    return whole ? memory_field("VmHWM:") - before : -1;
}

/// The same in a child, since a peak never goes down again.
long growth_in_child(const char *name) {
    int ends[2];
    if (pipe(ends) != 0) {
        return -1;
    }
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const long growth = growth_while_loading(name);
        const bool told = write(ends[1], &growth, sizeof growth) == sizeof growth;
        _exit(told ? 0 : 1);
    }
    close(ends[1]);
    long growth = -1;
    if (read(ends[0], &growth, sizeof growth) != sizeof growth) {
        growth = -1;
    }
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return growth;
}

} // namespace

TEST(LoadMemory, PeaksAtRecordsFileAndSomeRoom) {
    if (sanitized()) {
        GTEST_SKIP() << "sanitizers keep memory of their own";
    }
    ASSERT_EQ(sizeof(Breakpoint), 28u);
    const std::string name = write_large_list();
    struct stat status;
    ASSERT_EQ(stat(name.c_str(), &status), 0);
    const long growth = growth_in_child(name.c_str());
    unlink(name.c_str());
    RecordProperty("growth", std::to_string(growth));
    EXPECT_GT(growth, record_bytes) << "the list was not loaded";
    EXPECT_LE(growth, record_bytes + status.st_size + room_besides);
}
