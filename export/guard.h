// export/guard.h -- what stands before every export: a file of that name must not exist yet, and
// it must be possible to create it. The exporters differ in their words alone.
#pragma once

#include "export/new_file.h"

/// The two refusals, each with a place for the file's name.
struct GuardWords {
    const char *exists;
    const char *cannot_create;
};

extern const GuardWords plain_guard;     // scores and analysis files
extern const GuardWords selection_guard; // a selection as an analysis file
extern const GuardWords list_guard;      // partials lists

/// The blanks behind which a name is typed.
extern const char *const name_prompt;

/// Prints the first refusal and returns true when the file can be opened for reading.
bool refuse_existing(const char *name, const GuardWords &words);

/// Creates the file, or prints the second refusal and returns false.
bool create_or_refuse(NewFile &file, const char *name, const GuardWords &words);

/// Both, in this order; true when the file was created.
bool pass_guard(NewFile &file, const char *name, const GuardWords &words);
