// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// What a client says of itself, as a log quotes it: of 200 bytes at most, "..." at their end where
// there was more. A character of UTF-8 is kept or left out whole.
std::string textForLog(const std::string& text);

}  // namespace QZ
