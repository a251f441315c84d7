#include "store/commandline.h"

#include "display/view.h"
#include "interact/selection.h"
#include "live/live.h"
#include "store/machine.h"
#include "store/misc.h"
#include "store/settings.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <strings.h>
#include <unistd.h>

namespace {

struct Option {
    char letter;
    int32_t *first;
    int32_t *second; // set along with the first, may be null
};

// The letters w and d are kept out of the usage text.
const Option options[] = {
    {'f', &flat, &clo},       {'l', &logpos, nullptr}, {'b', &bps, nullptr},
    {'v', &verbose, nullptr}, {'w', &dwbg, nullptr},   {'d', &dbp, nullptr},
};

constexpr useconds_t banner_pause = 500000; // microseconds

[[noreturn]] void print_and_leave(void (*text)()) {
    text();
    std::exit(0);
}

void apply_arguments(int argc, char **argv) {
    if (strcasecmp(argv[1], "--help") == 0) {
        print_and_leave(usage);
    }
    if (strncasecmp(argv[1], "--c", 3) == 0) {
        print_and_leave(credits);
    }
    std::snprintf(afname, sizeof afname, "%s", argv[1]);
    if (argc > 2) {
        if (std::strchr(argv[2], '-') == nullptr) {
            print_and_leave(usage);
        }
        apply_options(argv[2]);
    }
    if (dwbg == 1) {
        std::puts("debug mode = ON");
    }
    thisarchinfo = local_arch_info();
}

void ask_for_file() {
    char name[path_size];
    std::puts("Quillgrove> Enter PTF name (no options):");
    std::fputs("Quillgrove> ", stdout);
    get_path(name, 1);
    if (std::strcmp(name, "-h") == 0) {
        print_and_leave(usage);
    }
    std::snprintf(afname, sizeof afname, "%s", name);
    std::puts(afname);
}

} // namespace

void begin_run(int argc, char **argv) {
    reset_store_globals();
    reset_settings();
    reset_view();
    reset_selection();
    reset_live();
    std::printf("argc = %d\n", argc);
    for (int i = 0; i < argc; ++i) {
        std::printf("argv[%d]: %s\n", i, argv[i]);
    }
}

void apply_options(const char *text) {
    for (const Option &option : options) {
        if (std::strchr(text, option.letter) == nullptr) {
            continue;
        }
        *option.first = 1;
        if (option.second != nullptr) {
            *option.second = 1;
        }
    }
}

void read_command_line(int argc, char **argv) {
    if (argc > 1) {
        apply_arguments(argc, argv);
    } else {
        ask_for_file();
    }
}

void show_banner() {
    getCPUinfo(&chip);
    std::fflush(stdout);
    usleep(banner_pause);
    if (dwbg == 1) {
        std::puts(chip.brand);
        std::printf("%d\n", chip.logical);
    }
    mtitle(&chip, version);
}
