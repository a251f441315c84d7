// store/machine.h -- what the machine is: processor counts for the workers and the banner,
// its brand and its system's version, from Linux's own interfaces.
#pragma once

#include "store/settings.h"

#include <cstdio>

/// Fills brand string, core, thread and process counts. What cannot be read stays empty or 0.
void getCPUinfo(ChipInfo *chip);

/// The same for the brand, cut to 27 characters where it has 28 or more, and the distinct cores of
/// a text such as /proc/cpuinfo, which it reads to its end.
void read_processors(FILE *file, ChipInfo *chip);

/// Processors that this process may run on at the moment, at least 1.
int32_t getCPUnum();

/// The machine's architecture record, one for the whole run.
const ArchInfo *local_arch_info();

/// The three numbers of a version text at its dots; all 0 where the text has none.
void parse_version(const char *text, int16_t triple[3]);

/// Prints the banner with the system's version, the brand and the processor count.
void mtitle(const ChipInfo *chip, const char *version);
