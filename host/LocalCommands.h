// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "CommandLine.h"

namespace QZ {

// Carries out a request that takes nothing but this machine and its module: goes to its workplace,
// loads the module, asks, and writes the result to standard output. Answers the exit status, and
// throws as runCommand does. Once per process: environment, working folder and descriptor 1 stay
// changed.
int carryOutLocally(const Request& request);

}  // namespace QZ
