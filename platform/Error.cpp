// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Error.h"

#include <array>
#include <cstring>

namespace QZ {

void throwSystemError(const std::string& what, const std::string& path, int errnum) {
    throw Error(what + " " + path + ": " + systemErrorText(errnum));
}

std::string systemErrorText(int errnum) {
    std::array<char, 128> buffer{};
    return strerror_r(errnum, buffer.data(), buffer.size());
}

}  // namespace QZ
