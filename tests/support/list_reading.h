// tests/support/list_reading.h -- Lisp partials lists as text, and the passes over one as
// start-up runs them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The passes and the time check on `text`, as start-up calls them. Returns 0 with the store
/// filled, or -1 where the structure is broken.
int32_t read_list(std::string_view text);
