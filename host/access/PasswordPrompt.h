// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// Reads a new password from standard input: on a terminal twice, without echo, the questions on
// standard error; else its first line. Throws Error where both are not the same or nothing comes.
// A signal that ends the process while a person types does so once the terminal echoes again.
std::string readNewPassword(const std::string& user);

}  // namespace QZ
