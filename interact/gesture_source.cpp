#include "interact/gesture_source.h"

#include "interact/selection.h"
#include "store/store.h"

#include <cstdio>

int32_t gesture_source(const GestureTexts &texts) {
    const FoundPoints &pair = foundSubscriptions;
    if (pair.count < 2) {
        std::puts(texts.no_pair);
        return -1;
    }
    if (pair.part0 != pair.part1) {
        return -1;
    }
    if (sweepSelect == 0) {
        std::puts(texts.no_target);
        return -1;
    }
    return point_exists(pair.part0, 0) ? pair.part0 : -1;
}

int32_t first_selected_point(int32_t i) {
    int32_t j = 0;
    while (j < npoints[i] && parray[i][j].selected != 1) {
        ++j;
    }
    return j;
}

bool source_is_target(int32_t source) {
    if (first_selected_point(source) == npoints[source]) {
        return false;
    }
    std::puts("illegitimate selection");
    return true;
}
