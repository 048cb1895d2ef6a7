// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Commands.h"
#include "Operations.h"

namespace QZ {

// What people do with the units that they record. Throws as runCommand() does; Error for a file
// that cannot be imported, of which then nothing is, and for a store of this machine that cannot be
// read; a list tells the other units then. What of a file the server refuses is noted; an import
// ends where the server or its store fails.
CommandResult runFru(const Request& request, Operations& server, const Notes& note);

}  // namespace QZ
