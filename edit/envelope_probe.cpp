#include "edit/envelope_probe.h"

#include <cstdio>

void spectral_envelope(const char *name) {
    std::puts(name);
    FILE *file = std::fopen(name, "r");
    if (file == nullptr) {
        std::printf("Can't open file \"%s\"\n", name);
        return;
    }
    std::fclose(file);
}
