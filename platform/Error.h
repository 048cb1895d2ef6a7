// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace QZ {

// What failed, on which file and why, as one sentence that an administrator can act on.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Throws the Error "WHAT PATH: reason", with the system's text for errnum as the reason. WHAT reads
// like "Cannot write".
[[noreturn]] void throwSystemError(const std::string& what, const std::string& path, int errnum);

// The system's text for errnum; any thread may ask.
std::string systemErrorText(int errnum);

}  // namespace QZ
