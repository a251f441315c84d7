#include "display/text.h"

#include <GL/freeglut.h>
#include <cmath>
#include <cstdio>

namespace {
constexpr int number_size = 5; // 4 characters and the end
}

void draw_label(double x, double y, double z, const char *text) {
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z)) {
        return;
    }
    glRasterPos3f(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    printString(text);
}

void drawGLString(float x, float y, const char *s) {
    draw_label(x, y, 0.0, s);
}

void printString(const char *s) {
    for (; *s != '\0'; ++s) {
        glutBitmapCharacter(GLUT_BITMAP_HELVETICA_10, static_cast<unsigned char>(*s));
    }
}

void printInt(int v) {
    char text[16];
    std::snprintf(text, sizeof text, "%2d", v);
    text[number_size - 1] = '\0';
    printString(text);
}

void printFloat(float v) {
    char text[64];
    std::snprintf(text, sizeof text, "%3.1f", v);
    text[number_size - 1] = '\0';
    printString(text);
}
