// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TerminalText.h"

#include <cstdint>
#include <cstdio>

#include "Text.h"

namespace QZ {

namespace {

bool _changesDirection(std::uint32_t c) {
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

bool _breaksLine(std::uint32_t c) {
    return c == 0x2028 || c == 0x2029;
}

void _appendVisible(std::string& result, std::uint32_t c) {
    const char* const named = c == '\n' ? "\\n" : c == '\r' ? "\\r" : c == '\t' ? "\\t" : nullptr;
    if (named) {
        result += named;
    } else if (c < 0x20 || (c >= 0x7F && c < 0xA0) || _changesDirection(c) || _breaksLine(c)) {
        char buffer[16];
        (void)std::snprintf(buffer, sizeof buffer, c < 0x100 ? "\\x%02X" : "\\u%04X", unsigned(c));
        result += buffer;
    } else {
        appendUtf8(result, c);
    }
}

}  // namespace

void appendVisibleText(std::string& line, const std::string& text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const char* const plain = plainEnd(at, end);
        if (plain != at) {
            line.append(at, std::size_t(plain - at));
            at = plain;
            continue;
        }
        std::uint32_t c = 0;
        if (decodeUtf8(at, end, c)) {
            _appendVisible(line, c);
        } else {
            char buffer[8];
            (void)std::snprintf(buffer, sizeof buffer, "\\x%02X",
                                unsigned(static_cast<unsigned char>(*at)));
            line += buffer;
            ++at;
        }
    }
}

std::string visibleText(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    appendVisibleText(result, text);
    return result;
}

std::size_t textWidth(const std::string& text) {
    std::size_t width = 0;
    for (const char c : text) {
        width += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }
    return width;
}

}  // namespace QZ
