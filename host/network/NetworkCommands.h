// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "CommandLine.h"

namespace QZ {

// Carries out a request that asks a server, is one, waits for alerts or keeps passwords, and writes
// the result to standard output. Answers the exit status, and throws as runCommand, serve, watch
// and changePassword do. Once per process: environment, working folder and descriptor 1 stay
// changed.
int carryOutOverNetwork(const Request& request);

}  // namespace QZ
