// store/reading.h -- from the file's name to a live store: opening, type, the importer's
// passes, normalisation, derived ranges. Every failure ends the process with its message and
// status. Main thread, before the window opens.
#pragma once

#include "import/tokens.h"

/// Opens the named file, or the default one where no name was given. Does not return when it
/// cannot be opened.
void open_analysis(TokenFile &file);

/// Finds the type and runs that type's passes; the file is closed on return.
void import_analysis(TokenFile &file);

/// Derives everything from the imported points, allocates the summaries and the candidates,
/// and tells the working folder.
void complete_store();

/// Asks until the user agrees, releases everything and ends the process with status 1. End of
/// input counts as agreement.
[[noreturn]] void closing_dialogue(TokenFile &file);
