// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// A command: the program's path and its arguments.
using Command = std::vector<std::string>;

// What a command came to.
struct ToolRun {
    int status = 0;    // 128 and more: ended by a signal
    std::string text;  // what it printed, without the line end at its end
};

// Runs it to its end, without input. Processes that it leaves behind, such as a server, are not
// waited for. Throws Error where it cannot be run.
ToolRun runTool(const Command& command);

// The command as a shell takes it.
std::string commandText(const Command& command);

}  // namespace QZ
