// tests/e2e/menu_rows.h -- the entries of the pop-up menu, by their texts.
#pragma once

#include <string>
#include <vector>

/// The rows to choose on the way to an entry, counted from 1; empty when there is none.
/// "Select" stands without the blank that its text ends in, and so do the entries below it.
std::vector<int> rows_of(const std::string &way);
