#include "tests/interact/gesture_support.h"

void choose(int32_t target, const std::vector<std::string> &texts) {
    set_flags(texts);
    for (int32_t i = 0; i < partials; ++i) {
        peval[i].selected = i == target ? 1 : 0;
    }
}
