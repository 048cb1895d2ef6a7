// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Steps.h"

#include <utility>

#include "Error.h"

namespace QZ {

Steps::Steps(bool isDryRun, Say say) : _isDryRun(isDryRun), _say(std::move(say)) {}

std::string Steps::take(const std::string& title, const Command& command,
                        const std::string& advice) {
    _say(title);
    _say("    " + commandText(command));
    if (_isDryRun) {
        return "";
    }
    const ToolRun run = runTool(command);
    if (run.status != 0) {
        throw Error("\"" + commandText(command) + "\" ended with " + std::to_string(run.status) +
                    (run.text.empty() ? "" : ": " + run.text) + "\n" + advice);
    }
    return run.text;
}

}  // namespace QZ
