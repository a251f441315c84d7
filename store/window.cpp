#include "store/window.h"

#include "display/scene.h"
#include "display/view.h"
#include "interact/clear.h"
#include "interact/keys.h"
#include "interact/menu.h"
#include "interact/mouse.h"
#include "interact/selection.h"
#include "live/agnf.h"
#include "live/fbp.h"
#include "live/gestures.h"
#include "live/live.h"
#include "live/midi.h"
#include "live/requests.h"
#include "live/rt_midi.h"
#include "live/sound_output.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "store/store.h"
#include "synth/sound.h"

#include <GL/freeglut.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {
constexpr int title_size = 256;          // what does not fit of a long file name is cut
constexpr double highest_rate = 1048576; // Hz, of a table
} // namespace

void start_sound() {
    STOP = 0;
    method = 0;
    live_gain = 0.2f;
    use_driver(&sound_output);
    createAdditiveNFToneUnit(&wgen);
    createAdditiveNFToneUnit1(&zgen);
    use_midi_back_end(&rt_midi);
    createNFMIDI(&wgen);
    wgen.midi_started = 0;
    makeSin(static_cast<int32_t>(std::clamp(R, 0.0, highest_rate)));
    CreateAndConnectFpOutputUnit1(&fplayer);
    play_rendered = fbplay1;
}

void open_window() {
    int argc = 1;
    char name[32];
    std::snprintf(name, sizeof name, "%s", app_name);
    char *argv[] = {name, nullptr};
    std::fflush(stdout);
    glutInit(&argc, argv);
    glutInitDisplayMode(GLUT_DOUBLE | GLUT_ALPHA | GLUT_DEPTH);
    glutInitWindowPosition(200, 50);
    glutInitWindowSize(thewidth, theheight);
    gMainWindow = glutCreateWindow("QuillGrove");

    std::puts("Initializing graphics:");
    std::printf("        (overlay visuals %s\n\n",
                glutLayerGet(GLUT_OVERLAY_POSSIBLE) != 0 ? "possible)" : "not possible)");
    GLint planes = 0;
    glGetIntegerv(GL_MAX_CLIP_PLANES, &planes);
    std::printf("max clip planes = %d\n", planes);
}

void register_callbacks() {
    initialize();
    glutReshapeFunc(reshape);
    glutDisplayFunc(maindisplay);
    glutKeyboardFunc(key);
    glutSpecialFunc(special);
    glutMouseFunc(mouse);
    glutMotionFunc(pmotion);
    tCallbackReg = 0;
    glutMenu();
    glutAttachMenu(GLUT_RIGHT_BUTTON);
    serve_by_timer();
}

void show_title() {
    if (parray == nullptr) {
        return;
    }
    deselect_all();
    reset_peval_spares(peval, &partials);
    sweepSelect = 0;
    title = static_cast<char *>(std::calloc(title_size, 1));
    std::snprintf(title, title_size, "%s: %.243s", app_name, afname);
    glutSetWindowTitle(title);
    std::fflush(stdout);
}
