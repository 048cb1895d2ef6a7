// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// A password for one run of the server: 96 random bits. Throws Error where there are none.
std::string makePassword();

// The first line of a file that only its owner can read. Throws Error where it cannot be read, is
// others' to read, or begins with an empty line.
std::string readPassword(const std::string& file);

}  // namespace QZ
