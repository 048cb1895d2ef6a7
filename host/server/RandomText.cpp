// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RandomText.h"

#include <sys/random.h>

#include "Error.h"

namespace QZ {

std::string randomText(std::size_t bytes) {
    std::string random(bytes, '\0');
    // Up to 256 bytes come at once, or none.
    if (getrandom(random.data(), random.size(), 0) != ssize_t(random.size())) {
        throw Error("The system has no random numbers");
    }
    static const char DIGITS[] = "0123456789abcdef";
    std::string text;
    for (const char c : random) {
        const auto byte = static_cast<unsigned char>(c);
        text += DIGITS[byte >> 4U];
        text += DIGITS[byte & 0xFU];
    }
    return text;
}

}  // namespace QZ
