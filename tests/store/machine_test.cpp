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

/// What read_processors makes of a text.
ChipInfo processors_in(std::string text) {
    ChipInfo info = {};
    FILE *file = fmemopen(text.data(), text.size(), "r");
    read_processors(file, &info);
    std::fclose(file);
    return info;
}

TEST(Machine, TheBrandIsThatOfTheFirstProcessor) {
    EXPECT_STREQ(processors_in("processor\t: 0\nmodel\t\t: 1\nmodel name\t:  One 2.0 GHz \t\n"
                               "processor\t: 1\nmodel name\t: Two\n")
                     .brand,
                 "One 2.0 GHz");
    EXPECT_STREQ(processors_in("model name without a colon\n").brand, "");
    EXPECT_STREQ(processors_in("processor\t: 0\n").brand, "");
}

TEST(Machine, ABrandOfTwentyEightCharactersIsCutToTwentySeven) {
    for (const size_t length : {26u, 27u, 28u, 29u, 47u, 48u, 200u}) {
        const std::string brand = std::string(length - 1, 'b') + "x";
        EXPECT_EQ(processors_in("model name\t: " + brand + "\n").brand,
                  length < 28 ? brand : brand.substr(0, 27));
    }
}

TEST(Machine, CoresAreCountedOnceInEachPackage) {
    std::string text;
    for (const char *package : {"0", "1"}) {
        for (const char *core : {"0", "1", "0", "1", "5"}) {
            text += "physical id\t: " + std::string(package) + "\ncore id\t\t: " + core + "\n";
        }
    }
    EXPECT_EQ(processors_in(text).physical, 6);
    EXPECT_EQ(processors_in("model name\t: x\n").physical, 0);
}

TEST(Machine, FactsOfThisMachine) {
    ChipInfo info;
    std::memset(&info, 0x55, sizeof info);
    getCPUinfo(&info);
    FILE *file = std::fopen("/proc/cpuinfo", "r");
    ASSERT_NE(file, nullptr);
    ChipInfo told = {};
    read_processors(file, &told);
    std::fclose(file);
    EXPECT_STREQ(info.brand, told.brand);
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
