// bench/allocations.h -- counts the calls of operator new in a benchmark that links this.
#pragma once

#include <cstdint>

/// How many allocations by operator new there have been so far, in all threads.
int64_t allocations();
