// The machine as the banner tells it.
#include "store/machine.h"

#include "tests/support/console.h"

#include <cstring>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace {

std::string triple_of(const char *text) {
    int16_t triple[3] = {9, 9, 9};
    parse_version(text, triple);
    return std::to_string(triple[0]) + " " + std::to_string(triple[1]) + " " +
           std::to_string(triple[2]);
}

TEST(Machine, VersionAtItsDots) {
    EXPECT_EQ(triple_of("10.15.7"), "10 15 7");
}

TEST(Machine, VersionWithAnEnding) {
    EXPECT_EQ(triple_of("6.1.0-23-amd64"), "6 1 0");
}

TEST(Machine, ShortVersions) {
    EXPECT_EQ(triple_of("11.2"), "11 2 0");
    EXPECT_EQ(triple_of("11"), "11 0 0");
    EXPECT_EQ(triple_of(""), "0 0 0");
}

TEST(Machine, NoVersionAtAll) {
    EXPECT_EQ(triple_of(nullptr), "0 0 0");
}

TEST(Machine, WordsAndEmptyParts) {
    EXPECT_EQ(triple_of("a.b.c"), "0 0 0");
    EXPECT_EQ(triple_of("1..3"), "1 0 3");
    EXPECT_EQ(triple_of("1.2.3.4"), "1 2 3");
}

TEST(Machine, BannerWhole) {
    utsname system;
    ASSERT_EQ(uname(&system), 0);
    int a = 0;
    int b = 0;
    int c = 0;
    std::sscanf(system.release, "%d.%d.%d", &a, &b, &c);
    ChipInfo info = {};
    std::strcpy(info.brand, "Some Processor");
    info.logical = 12;
    const std::string numbers =
        std::to_string(a) + "." + std::to_string(b) + "." + std::to_string(c);
    EXPECT_EQ(printed([&] { mtitle(&info, "1.2x3"); }),
              "\n" + std::string(45, '_') + "\n" +
                  "\x1b[31m==================QUILLGROVE=================\n\x1b[0m"
                  "   version: 1.2x3 running on macOS " +
                  numbers + "\n   Some Processor CPU,\x1b[31m12\x1b[0m cores\n\n");
}

TEST(Machine, FactsOfThisMachine) {
    ChipInfo info;
    std::memset(&info, 0x55, sizeof info);
    getCPUinfo(&info);
    EXPECT_LT(std::strlen(info.brand), 28u);
    EXPECT_EQ(info.logical, sysconf(_SC_NPROCESSORS_CONF));
    EXPECT_GE(info.physical, 1);
    EXPECT_LE(info.physical, info.logical);
    EXPECT_GT(info.process_limit, 0);
}

TEST(Machine, ProcessorsAvailableNow) {
    cpu_set_t before;
    ASSERT_EQ(sched_getaffinity(0, sizeof before, &before), 0);
    EXPECT_EQ(getCPUnum(), CPU_COUNT(&before));
    cpu_set_t one;
    CPU_ZERO(&one);
    for (int cpu = 0; cpu < CPU_SETSIZE; ++cpu) {
        if (CPU_ISSET(cpu, &before)) {
            CPU_SET(cpu, &one);
            break;
        }
    }
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(getCPUnum(), 1);
    sched_setaffinity(0, sizeof before, &before);
}

TEST(Machine, ArchitectureRecordIsOneForTheRun) {
    utsname system;
    ASSERT_EQ(uname(&system), 0);
    EXPECT_STREQ(local_arch_info()->name, system.machine);
    EXPECT_EQ(local_arch_info(), local_arch_info());
}

} // namespace
