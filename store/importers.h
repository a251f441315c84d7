// store/importers.h -- what start-up does for each kind of analysis: the passes of its reader,
// room for the arrays between them, and what follows the reading. A text that cannot be read ends
// the process with its message and status. Main thread, before the window opens.
#pragma once

#include "import/tokens.h"

/// Reads the file into the store by the importer of this type. Leaves the file open.
void run_importer(TokenFile &file, int32_t type);

/// Reads a text of no known type by hand. False where the user gives up or too little was read.
bool import_interactively(TokenFile &file);
