#include "store/machine.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sched.h>
#include <set>
#include <string>
#include <sys/utsname.h>
#include <unistd.h>
#include <utility>

namespace {

/// The value behind the colon of a /proc/cpuinfo line, without its newline.
std::string value_of(const char *line) {
    const char *colon = std::strchr(line, ':');
    if (colon == nullptr) {
        return "";
    }
    std::string value = colon + 1;
    value.erase(0, value.find_first_not_of(" \t"));
    value.erase(value.find_last_not_of(" \t\n") + 1);
    return value;
}

} // namespace

void read_processors(FILE *file, ChipInfo *info) {
    constexpr size_t too_long = 28;
    std::string brand;
    std::set<std::pair<std::string, std::string>> seen;
    std::string package;
    char line[4096];
    while (std::fgets(line, sizeof line, file) != nullptr) {
        if (brand.empty() && std::strncmp(line, "model name", 10) == 0) {
            brand = value_of(line);
        } else if (std::strncmp(line, "physical id", 11) == 0) {
            package = value_of(line);
        } else if (std::strncmp(line, "core id", 7) == 0) {
            seen.insert({package, value_of(line)});
        }
    }
    if (brand.size() >= too_long) {
        brand.resize(too_long - 1);
    }
    std::memcpy(info->brand, brand.c_str(), brand.size() + 1);
    info->physical = static_cast<int32_t>(seen.size());
}

void getCPUinfo(ChipInfo *info) {
    *info = {};
    FILE *processors = std::fopen("/proc/cpuinfo", "r");
    if (processors != nullptr) {
        read_processors(processors, info);
        std::fclose(processors);
    }
    info->logical = static_cast<int32_t>(sysconf(_SC_NPROCESSORS_CONF));
    if (info->physical < 1) {
        info->physical = info->logical; // machines whose cpuinfo does not tell cores apart
    }
    FILE *file = std::fopen("/proc/sys/kernel/pid_max", "r");
    if (file != nullptr) {
        char text[32] = "";
        if (std::fgets(text, sizeof text, file) != nullptr) {
            info->process_limit = std::atoi(text);
        }
        std::fclose(file);
    }
}

int32_t getCPUnum() {
    cpu_set_t set;
    CPU_ZERO(&set);
    if (sched_getaffinity(0, sizeof set, &set) == 0 && CPU_COUNT(&set) > 0) {
        return CPU_COUNT(&set);
    }
    const long online = sysconf(_SC_NPROCESSORS_ONLN);
    return online > 0 ? static_cast<int32_t>(online) : 1;
}

const ArchInfo *local_arch_info() {
    static ArchInfo info = {};
    utsname system;
    if (uname(&system) == 0) {
        std::snprintf(info.name, sizeof info.name, "%s", system.machine);
    }
    return &info;
}

void parse_version(const char *text, int16_t triple[3]) {
    triple[0] = triple[1] = triple[2] = 0;
    for (int i = 0; i < 3 && text != nullptr; ++i) {
        triple[i] = static_cast<int16_t>(std::strtol(text, nullptr, 10));
        text = std::strchr(text, '.');
        text = text != nullptr ? text + 1 : nullptr;
    }
}

void mtitle(const ChipInfo *info, const char *version_text) {
    utsname system;
    int16_t triple[3];
    parse_version(uname(&system) == 0 ? system.release : nullptr, triple);
    std::puts("\n_____________________________________________");
    std::fputs("\033[31m==================QUILLGROVE=================\n\033[0m", stdout);
    std::printf("   version: %s running on ", version_text);
    std::printf("macOS %hd.%hd.%hd\n ", triple[0], triple[1], triple[2]);
    std::printf("  %s CPU,", info->brand);
    std::printf("\033[31m%d\033[0m", info->logical);
    std::fputs(" cores\n\n", stdout);
}
