#include "interact/command.h"

#include "interact/clear.h"
#include "interact/selection.h"
#include "store/console.h"
#include "store/recompute.h"

#include <GL/freeglut.h>
#include <cstdio>
#include <cstring>

MenuState menu_state = {};

namespace {

bool selected_else(const char *refusal) {
    if (selected != 0) {
        return true;
    }
    std::puts(refusal);
    return false;
}

} // namespace

bool read_parameter(char *word, const char *prompt) {
    say(prompt);
    if (!read_word(word, word_size)) {
        return false;
    }
    if (std::strcmp(word, "-c") == 0) {
        std::puts("Command cancelled");
        return false;
    }
    return true;
}

bool require_selection() {
    return selected_else("Quillgrove> nothing selected");
}

bool require_selection_or_redisplay() {
    if (!require_selection()) {
        glutPostRedisplay();
        return false;
    }
    return true;
}

bool require_selection_plainly() {
    return selected_else("nothing selected");
}

bool require_selection_for_export() {
    return selected_else("Error: nothing selected");
}

void finish_refresh() {
    deselect_all();
    recompute_everything();
    averages(partials, npoints, parray, peval);
    glutPostRedisplay();
}

void finish_refresh_without_phase() {
    deselect_all();
    recompute_amp(&maxamp, &minamp);
    recompute_times();
    recompute_all_pitch();
    recompute_logfreq();
    averages(partials, npoints, parray, peval);
    glutPostRedisplay();
}

void finish_redisplay() {
    glutPostRedisplay();
}
