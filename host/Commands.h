// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "Operations.h"

namespace QZ {

// What a command came to.
struct CommandResult {
    std::string text;  // for standard output
    ExitStatus status = EXIT_OK;
    // What "list" made the text of, for who ends with the process and need not give it back.
    std::vector<Pegasus::CIMInstance> instances = {};
};

// Takes one line of what there is to say besides the result, such as a class that a report has to
// do without.
using Notes = std::function<void(const std::string& line)>;

// Carries a request out on a server. Throws UsageError for what the request gets wrong, and what
// Operations throws; only that there is no instance of that path is a status of the result.
CommandResult runCommand(const Request& request, Operations& server, const Notes& note);

// "CIM_ERR_NOT_FOUND (6)", with ": " and the exception's message where it has one.
std::string statusText(const Pegasus::CIMException& exception);

}  // namespace QZ
