// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/App.hpp>

#include "CommandLine.h"

namespace QZ {

// The options of "serve" that say who may ask.
// The options of "serve", one for each of its keys, and that of a file of the same.
void addServeOptions(CLI::App& serve, ServeArguments& arguments);

// After parsing: their values as they are to be taken. Throws CLI::ValidationError.
void checkServeOptions(ServeArguments& arguments);

// What stands behind "passwd".
void addPasswdOptions(CLI::App& passwd, PasswdRequest& request);

}  // namespace QZ
