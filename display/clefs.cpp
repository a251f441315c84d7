#include "display/clefs.h"

#include <GL/freeglut.h>
#include <cstddef>
#include <span>

namespace {

/// A vertex of a glyph, in units of its grid; 0 is the height at which the glyph stands.
struct GridPoint {
    float x, y;
};

using Outline = std::span<const GridPoint>;

// The strokes are ribbons: each vertex makes a triangle with the two before it. They are drawn
// in groups, of so many triangles each.
using Groups = std::span<const int>;

constexpr GridPoint bass_head[] = {{0.0f, 0.0f},  {1.0f, 1.0f},  {2.0f, 1.0f},  {3.0f, 0.0f},
                                   {3.0f, -1.0f}, {2.0f, -2.0f}, {1.0f, -2.0f}, {0.0f, -1.0f}};
constexpr GridPoint bass_joint[] = {{0.0f, 0.0f},  {0.0f, 1.0f},  {-1.0f, 1.0f},
                                    {-1.0f, 1.0f}, {0.0f, -1.0f}, {0.0f, 0.0f}};
// Up from the head, over the top and down to the tip.
constexpr GridPoint bass_ribbon[] = {
    {0.0f, 1.0f},    {-1.0f, 1.0f},  {0.0f, 2.3f},  {-1.0f, 2.5f}, {0.9f, 3.7f},   {-0.1f, 4.3f},
    {2.4f, 4.7f},    {1.8f, 5.5f},   {4.2f, 5.2f},  {4.3f, 6.0f},  {5.8f, 4.6f},   {6.9f, 5.5f},
    {7.0f, 3.1f},    {9.0f, 3.8f},   {7.7f, 1.0f},  {10.3f, 1.4f}, {7.9f, -1.5f},  {10.6f, -1.6f},
    {7.3f, -4.4f},   {9.7f, -4.9f},  {5.7f, -7.4f}, {7.5f, -8.2f}, {3.0f, -10.2f}, {3.9f, -11.0f},
    {-0.6f, -12.4f}, {-1.0f, -13.0f}};
constexpr int bass_groups[] = {2, 2, 3, 3, 2, 2, 3, 3, 2, 2};
constexpr GridPoint upper_dot[] = {{12.0f, 2.0f}, {12.0f, 3.0f}, {13.0f, 4.0f}, {14.0f, 4.0f},
                                   {15.0f, 3.0f}, {15.0f, 2.0f}, {14.0f, 1.0f}, {13.0f, 1.0f}};
constexpr GridPoint lower_dot[] = {{12.0f, -3.0f}, {12.0f, -2.0f}, {13.0f, -1.0f}, {14.0f, -1.0f},
                                   {15.0f, -2.0f}, {15.0f, -3.0f}, {14.0f, -4.0f}, {13.0f, -4.0f}};

constexpr GridPoint treble_start[] = {{0.0f, 0.0f},  {-1.0f, 1.0f}, {-1.0f, 2.0f},
                                      {-1.0f, 2.0f}, {-1.0f, 1.0f}, {-1.6f, 2.0f}};
// Clockwise round the bowl, up to the loop at the top and straight down to the curl.
constexpr GridPoint treble_ribbon[] = {
    {-1.0f, 2.0f},  {-1.6f, 2.0f},  {-0.9f, 3.4f},  {-1.9f, 3.6f},  {-0.1f, 5.0f},  {-0.9f, 5.6f},
    {0.9f, 5.4f},   {0.5f, 6.5f},   {1.5f, 5.3f},   {1.9f, 6.5f},   {2.5f, 4.7f},   {3.9f, 5.6f},
    {3.3f, 2.9f},   {5.5f, 3.5f},   {3.5f, 0.9f},   {6.0f, 0.8f},   {3.1f, -1.4f},  {5.1f, -2.0f},
    {1.9f, -3.4f},  {3.2f, -4.3f},  {0.6f, -4.2f},  {1.1f, -5.3f},  {-0.6f, -4.3f}, {-0.9f, -5.5f},
    {-2.2f, -3.5f}, {-3.3f, -4.7f}, {-3.0f, -2.4f}, {-5.0f, -3.2f}, {-3.6f, -0.1f}, {-6.0f, -0.3f},
    {-3.5f, 2.5f},  {-5.9f, 2.8f},  {-2.5f, 5.2f},  {-4.7f, 6.0f},  {-0.7f, 7.8f},  {-2.5f, 8.9f},
    {2.1f, 10.9f},  {0.5f, 11.8f},  {4.0f, 13.7f},  {2.5f, 14.2f},  {4.5f, 16.1f},  {3.1f, 16.1f},
    {3.8f, 18.2f},  {2.7f, 17.8f},  {2.9f, 19.0f},  {2.5f, 18.1f},  {2.2f, 18.9f},  {2.5f, 18.1f},
    {1.3f, 18.3f},  {2.1f, 17.8f},  {0.1f, 16.1f},  {1.2f, 15.9f},  {-0.5f, 12.8f}, {0.7f, 12.8f},
    {-0.4f, 8.8f},  {0.9f, 8.9f},   {0.0f, 4.5f},   {1.3f, 4.6f},   {0.4f, 0.0f},   {1.7f, 0.1f},
    {0.8f, -4.3f},  {2.1f, -4.2f},  {1.1f, -8.2f},  {2.2f, -8.2f},  {1.0f, -9.5f}};
constexpr int treble_groups[] = {3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 2, 2, 2};
constexpr GridPoint treble_curl[] = {{2.0f, -9.0f},  {1.0f, -10.0f}, {0.0f, -10.0f}, {-1.0f, -9.0f},
                                     {-1.0f, -8.0f}, {0.0f, -7.0f},  {1.0f, -8.0f}};

void draw_outline(GLenum mode, Outline points) {
    glBegin(mode);
    for (const GridPoint &point : points) {
        glVertex3f(point.x, point.y, 0.0f);
    }
    glEnd();
}

void draw_ribbon(Outline ribbon, Groups groups) {
    size_t at = 0;
    for (const int triangles : groups) {
        glBegin(GL_TRIANGLES);
        for (const size_t end = at + static_cast<size_t>(triangles); at < end; ++at) {
            for (const GridPoint &point : ribbon.subspan(at, 3)) {
                glVertex3f(point.x, point.y, 0.0f);
            }
        }
        glEnd();
    }
}

/// The glyph's own grid, with its origin at the place in the scene.
void enter_grid(float x, float y, float width, float height) {
    glEnable(GL_POLYGON_SMOOTH);
    glPushMatrix();
    glTranslatef(x, y, 0.0f);
    glScalef(width, height, 1.0f);
}

void leave_grid() {
    glPopMatrix();
    glDisable(GL_POLYGON_SMOOTH);
}

} // namespace

void bass_clef(float, float y) {
    enter_grid(0.02f, y, 0.0055f, 0.008f);
    draw_outline(GL_POLYGON, bass_head);
    draw_outline(GL_TRIANGLES, bass_joint);
    draw_ribbon(bass_ribbon, bass_groups);
    draw_outline(GL_POLYGON, upper_dot);
    draw_outline(GL_POLYGON, lower_dot);
    leave_grid();
}

void treble_clef(float, float y) {
    enter_grid(0.05f, y, 0.0064f, 0.008f);
    draw_outline(GL_TRIANGLES, treble_start);
    draw_ribbon(treble_ribbon, treble_groups);
    draw_outline(GL_POLYGON, treble_curl);
    leave_grid();
}
