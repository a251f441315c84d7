#include "interact/command.h"

#include "export/export3d.h"
#include "store/settings.h"

#include <GL/freeglut.h>
#include <cstdio>
#include <string>

namespace {

bool list_all(int) {
    std::puts("Export All");
    char name[list_path_size] = "";
    audiosculpt3d(parray, npoints, partials, name);
    if (name[0] == '\0') {
        return true;
    }
    const std::string window_title = std::string("Quillgrove: ") + name;
    glutSetWindowTitle(window_title.c_str());
    if (dbp) {
        std::printf("%s\t%s\n", window_title.c_str(), name);
    }
    return true;
}

bool list_selected(int) {
    std::puts("Export Selected");
    if (require_selection_for_export()) {
        audiosculpt3ds(parray, npoints, partials);
    }
    return true;
}

using Exporter = void(float, float, float, Breakpoint *const *, const int32_t *, int32_t);

template <Exporter *exporter> bool run(int) {
    exporter(sndstart, sndlen, maxamp, parray, npoints, partials);
    return true;
}

template <int32_t selection> bool run_sdif(int) {
    sdif(sndstart, sndlen, maxamp, parray, npoints, partials, selection);
    return true;
}

const Command rows[] = {
    {24, true, "Export: Partials: All... ", nullptr, nullptr, list_all, nullptr},
    {25, true, "Export: Partials: Selected... ", nullptr, nullptr, list_selected, nullptr},
    {34, true, "Export: Cmix -all partials\t ", nullptr, nullptr, run<wavetable>, finish_redisplay},
    {35, true, "Export: Cmix -selected partials\t ", nullptr, require_selection_plainly,
     run<wavetables>, finish_redisplay},
    {73, true, "Export: SPEAR -all partials\t ", nullptr, nullptr, run<spear>, finish_redisplay},
    {74, true, "Export: SPEAR -selected partials\t ", nullptr, nullptr, run<spears>,
     finish_redisplay},
    {83, true, "Export: SDIF -all partials\t ", nullptr, nullptr, run_sdif<0>, finish_redisplay},
    {84, true, "Export: SDIF -selected partials\t ", nullptr, nullptr, run_sdif<1>,
     finish_redisplay},
};

} // namespace

std::span<const Command> export_commands() {
    return rows;
}
