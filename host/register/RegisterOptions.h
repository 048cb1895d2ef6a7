// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

#include "RegisterRequest.h"

namespace QZ {

constexpr const char* REGISTER_DESCRIPTION =
    "Make the module known to this machine's OpenPegasus server, anew after an update";

// The options of "register", which set what the request says.
void addRegisterOptions(CLI::App& command, RegisterRequest& request);

}  // namespace QZ
