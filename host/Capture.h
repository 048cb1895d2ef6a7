// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Commands.h"

namespace QZ {

// Records the machine in a folder, which must be missing or empty, for --root to ask it elsewhere;
// sanitized, without what tells it from others. The note takes what could not be read. Throws
// Error. The result says what was recorded.
CommandResult captureMachine(const std::string& folder, bool isSanitized, const Notes& note);

}  // namespace QZ
