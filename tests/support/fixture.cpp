#include "tests/support/fixture.h"

#include "display/scene.h"
#include "display/view.h"
#include "interact/selection.h"
#include "live/live.h"
#include "store/published.h"
#include "store/recompute.h"
#include "store/settings.h"
#include "store/slots.h"
#include "tests/support/made_sound.h"

namespace {

void reset_everything() {
    free_store();
    reset_store_globals();
    reset_settings();
    reset_view();
    reset_selection();
    reset_live();
    gCameraReset();
    drop_sound();
}

} // namespace

void fill_store(const std::vector<Partial> &content) {
    free_store();
    reset_store_globals();
    partials = static_cast<int32_t>(content.size());
    allocate_counts(partials);
    allocate_index(partials);
    for (int32_t i = 0; i < partials; ++i) {
        npoints[i] = static_cast<int32_t>(content[static_cast<size_t>(i)].size());
    }
    allocate_points();
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const Point &from = content[static_cast<size_t>(i)][static_cast<size_t>(j)];
            Breakpoint &point = parray[i][j];
            point.time = from.time;
            point.freq = from.freq;
            point.amp = from.amp;
            point.ampunits = 1;
        }
    }
    regrow_peval();
    averages(partials, npoints, parray, peval);
    recompute_everything();
    publish_store();
}

std::vector<Partial> small_content() {
    return {{{0.0f, 100.0f, -20.0f},
             {0.1f, 110.0f, -10.0f},
             {0.2f, 120.0f, -15.0f},
             {0.3f, 110.0f, -30.0f}},
            {{0.1f, 400.0f, -12.0f}, {0.2f, 420.0f, -6.0f}, {0.4f, 440.0f, -18.0f}},
            {{0.5f, 800.0f, -40.0f}, {0.6f, 810.0f, -50.0f}},
            {{0.7f, 1000.0f, -60.0f}}};
}

void StoreTest::SetUp() {
    reset_everything();
}
void StoreTest::TearDown() {
    reset_everything();
}
