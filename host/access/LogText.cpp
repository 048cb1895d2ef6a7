// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LogText.h"

#include <string_view>

namespace QZ {

namespace {

constexpr std::size_t LONGEST = 200;
constexpr std::string_view MORE = "...";

// Of UTF-8 (RFC 3629, 3).
bool _continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace

std::string textForLog(const std::string& text) {
    if (text.size() <= LONGEST) {
        return text;
    }
    std::size_t length = LONGEST - MORE.size();
    // A character has no more than three bytes behind its first; what is longer is none.
    for (int i = 0; i < 3 && _continuesCharacter(text[length]); ++i) {
        --length;
    }
    return text.substr(0, length).append(MORE);
}

}  // namespace QZ
