// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// What "register" is told.
struct RegisterRequest {
    bool isRemoval = false;
    bool isDryRun = false;
    std::string interopNamespace;  // empty: the one that the server has
    std::string providerFolder;    // empty: as the server is configured
    std::string compiler;          // the server's cimmof; empty: where it usually is
};

}  // namespace QZ
