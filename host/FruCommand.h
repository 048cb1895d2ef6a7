// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Commands.h"
#include "Operations.h"

namespace QZ {

// What people do with the units that they record. Throws as runCommand() does; Error for a file
// that cannot be imported, of which then nothing is. What of it the server refuses is noted.
CommandResult runFru(const Request& request, Operations& server, const Notes& note);

}  // namespace QZ
