// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstdint>

#include "tavqz/AccessHelpers.h"

namespace {

// The text as it would read with its first characters in upper case, whatever the locale.
struct UpperCasedText {
    const char* text;
    int upperCased;

    char operator[](int index) const {
        const char character = text[index];
        const bool lower = character >= 'a' && character <= 'z';
        return lower && index < upperCased ? static_cast<char>(character - 'a' + 'A') : character;
    }
};

int _digit(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    if (character >= 'A' && character <= 'F') {
        return character - 'A' + 10;
    }
    return -1;
}

}  // namespace

int _httoi(char const* text, int length) {
    const UpperCasedText upper{text, length};
    const int first = upper[0] == '0' && upper[1] == 'X' ? 2 : 0;
    // Unsigned, since digits beyond 32 bits push the first ones out.
    std::uint32_t value = 0;
    for (int i = 0; i < length; ++i) {
        const int digit = _digit(upper[first + i]);
        if (digit < 0) {
            break;
        }
        value = value << 4 | static_cast<std::uint32_t>(digit);
    }
    return static_cast<std::int32_t>(value);
}
