// Quillgrove -- viewer and editor of sinusoidal partial-tracking analyses. The order of these
// steps is fixed: what each prints and allocates rests on the ones before it.

#include "store/commandline.h"
#include "store/reading.h"
#include "store/window.h"

#include <GL/freeglut.h>
#include <cstdio>

int main(int argc, char **argv) {
    setvbuf(stdout, nullptr, _IOLBF, 0); // results show at once, also through a pipe
    begin_run(argc, argv);
    read_command_line(argc, argv);
    show_banner();
    TokenFile file;
    open_analysis(file);
    import_analysis(file);
    complete_store();
    start_sound();
    open_window();
    register_callbacks();
    show_title();
    glutMainLoop();
    return 0;
}
