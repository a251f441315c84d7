// tests/support/any_reading.h -- the passes of every reader over a text, as start-up runs them,
// with the answers handed back instead of ending the process.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Reads `text` as one of the types, whatever its first words say. Returns the type, or -1 with
/// an empty store where a pass refuses.
int32_t read_as(int32_t type, std::string_view text);

/// Reads `text` as the type that it has, with everything that start-up derives from the points.
/// Returns the detected type, -1 where the reading failed.
int32_t read_any(std::string_view text);

/// Reads `text` by hand, the replies coming from standard input. Returns 0 with the store
/// filled, or -1.
int32_t read_by_hand(std::string_view text);

/// Everything that start-up derives from the points; false where there is no partial.
bool derive_store();
