#include "display/text.h"

#include <GL/freeglut.h>
#include <cmath>

void draw_label(double x, double y, double z, const char *text) {
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z)) {
        return;
    }
    glRasterPos3f(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    for (; *text != '\0'; ++text) {
        glutBitmapCharacter(GLUT_BITMAP_HELVETICA_10, static_cast<unsigned char>(*text));
    }
}
