// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "ToolRun.h"

namespace QZ {

// Changes to a server, one after the other. Each is said with its command, which can be repeated by
// hand, and then done, unless nothing is to be done but said.
class Steps {
public:
    using Say = std::function<void(const std::string& line)>;

    Steps(bool isDryRun, Say say);

    bool isDryRun() const { return _isDryRun; }

    // What the command printed. Throws Error, which ends with the advice, where it fails.
    std::string take(const std::string& title, const Command& command, const std::string& advice);

    void say(const std::string& line) const { _say(line); }

private:
    bool _isDryRun;
    Say _say;
};

}  // namespace QZ
