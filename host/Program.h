// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

namespace QZ {

// The command as a whole: reads the arguments, goes to its workplace, loads the module, asks, and
// writes the result to standard output and everything else to standard error. Answers the exit
// status. Once per process: environment, working folder and descriptor 1 stay changed.
int runProgram(int count, const char* const* arguments);

}  // namespace QZ
