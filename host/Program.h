// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "CommandLine.h"

namespace QZ {

// What a program does with a request. Answers the exit status; what it throws is told.
using CarryOut = std::function<int(const Request& request)>;

// A program as a whole: reads the arguments, has the request carried out, or prints the help that
// is asked for, and writes everything but results to standard error. Answers the exit status. Once
// per process.
int runProgram(int count, const char* const* arguments, const CarryOut& carryOut);

// Writes a line to standard error, in one piece: any thread may call.
void say(const std::string& line);

}  // namespace QZ
