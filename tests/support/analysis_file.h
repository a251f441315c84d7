// tests/support/analysis_file.h -- a text on disk, taken through start-up's reading in a child.
#pragma once

#include "tests/support/child.h"

#include <string>

/// Opens `path`, imports it and derives the store as start-up does, with `input` at the
/// console, then dumps the store. The dump is all that follows the line "STORE".
ChildResult start_on_path(const std::string &path, const std::string &input,
                          ChildLimits limits = {});

/// The same for a file that holds `text`, in a folder of its own.
ChildResult start_on(const std::string &text, const std::string &input, ChildLimits limits = {});
