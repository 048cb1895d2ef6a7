// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "CommandLine.h"

namespace QZ {

// TLS, passwords and XML take libraries that need longer to start than the machine to answer. What
// works with them is in a program of its own, beside the folder of this one, and that takes over
// this process.

// Whether the request is one of those.
bool needsNetworkProgram(const Request& request);

// Goes on as that program, with the same arguments, the last of which is null. While standard
// output is as it was. Throws Error where there is no such program.
[[noreturn]] void becomeNetworkProgram(char* const* arguments);

}  // namespace QZ
