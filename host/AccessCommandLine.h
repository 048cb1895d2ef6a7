// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/App.hpp>

#include "CommandLine.h"

namespace QZ {

// The options of "serve" that say who may ask.
void addAccessOptions(CLI::App& serve, ServeRequest& request);

// What stands behind "passwd".
void addPasswdOptions(CLI::App& passwd, PasswdRequest& request);

}  // namespace QZ
