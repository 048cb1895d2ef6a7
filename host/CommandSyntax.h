// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>
#include <vector>

#include "CommandLine.h"

namespace QZ {

// A command, and how to teach its options to a parser, which fills the request.
struct CommandSyntax {
    const char* name;
    void (*addTo)(CLI::App& app, Request& request);
};

// All of them, in the order of the help.
const std::vector<CommandSyntax>& commandSyntaxes();

}  // namespace QZ
