// tests/interact/gesture_support.h -- what the tests of the relative gestures share.
#pragma once

#include "tests/edit/structure.h"
#include "tests/support/pointer.h"

#include <string>
#include <vector>

/// Flags these points and marks partial `target` alone, as a sweep does.
void choose(int32_t target, const std::vector<std::string> &texts);
