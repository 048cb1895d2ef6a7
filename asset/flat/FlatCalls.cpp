// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FlatCalls.h"

#include <cstdio>
#include <cstring>

namespace QZ {

std::string flatDate(const DateTime& date) {
    char text[96];
    const int length =
        std::snprintf(text, sizeof text, "%4.4d%2.2d%2.2d%2.2d%2.2d%2.2d.%6.6d+%3.3d",
                      date.getYear(), date.getMonth(), date.getDay(), date.getHour(),
                      date.getMinute(), date.getSecond(), date.getMillisecond(), date.getOffset());
    return std::string(text, std::size_t(length));
}

void copyText(char* to, const std::string& text) noexcept {
    std::memcpy(to, text.c_str(), text.size() + 1);
}

}  // namespace QZ
