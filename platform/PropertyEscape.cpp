// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PropertyEscape.h"

#include <algorithm>
#include <cstdint>

#include "Text.h"

namespace QZ {

namespace {

void appendByteEscape(std::string& escaped, char byte) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    escaped += "\\x";
    escaped += Digits[value >> 4U];
    escaped += Digits[value & 0xFU];
}

// The letter that stands for a character behind a backslash; 0 when there is none.
char escapeLetter(std::uint32_t codePoint, bool atEnd) {
    switch (codePoint) {
        case '\\':
            return '\\';
        case '\n':
            return 'n';
        case '\r':
            return 'r';
        case '\t':
            return 't';
        case ' ':
            return atEnd ? 's' : '\0';
        default:
            return '\0';
    }
}

// What would be taken for something else where a key stands.
bool isSpecialInKey(std::uint32_t codePoint, bool isFirst) {
    constexpr std::uint32_t ByteOrderMarkCodePoint = 0xFEFF;
    return codePoint == '=' ||
           (isFirst && (codePoint == '#' || codePoint == ByteOrderMarkCodePoint));
}

bool isControl(std::uint32_t codePoint) {
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
}

std::string escape(std::string_view text, bool isKey) {
    std::string escaped;
    escaped.reserve(text.size());
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    for (const char* at = begin; at != end;) {
        const char* const start = at;
        std::uint32_t codePoint = 0;
        const bool isText = decodeUtf8(at, end, codePoint);
        if (!isText)
            ++at;
        if (const char letter =
                isText ? escapeLetter(codePoint, start == begin || at == end) : '\0')
            (escaped += '\\') += letter;
        else if (!isText || isControl(codePoint) ||
                 (isKey && isSpecialInKey(codePoint, start == begin)))
            std::for_each(start, at, [&](char byte) { appendByteEscape(escaped, byte); });
        else
            escaped.append(start, at);
    }
    return escaped;
}

int digitValue(char digit) {
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

// The character of the escape that `text`, behind its backslash, starts with, and the length of
// the escape there; 0 when it is none.
std::size_t readEscape(std::string_view text, char& character) {
    constexpr std::string_view Letters = "\\nrts";
    constexpr std::string_view Characters = "\\\n\r\t ";
    if (text.empty())
        return 0;
    const std::size_t index = Letters.find(text[0]);
    if (index != std::string_view::npos) {
        character = Characters[index];
        return 1;
    }
    if (text.size() < 3 || text[0] != 'x' || digitValue(text[1]) < 0 || digitValue(text[2]) < 0)
        return 0;
    character = static_cast<char>(digitValue(text[1]) * 16 + digitValue(text[2]));
    return 3;
}

}  // namespace

std::string escapeKey(std::string_view key) {
    return escape(key, true);
}

std::string escapeValue(std::string_view value) {
    return escape(value, false);
}

std::string unescape(std::string_view text) {
    if (text.find('\\') == std::string_view::npos)
        return std::string(text);
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        char character = text[at];
        if (character == '\\')
            at += readEscape(text.substr(at + 1), character);
        plain += character;
    }
    return plain;
}

bool readsAs(std::string_view written, std::string_view text) {
    // An escape is longer than what it stands for.
    if (written.size() < text.size() || (written.size() == text.size() && written != text))
        return false;
    const bool isPlain = written.find('\\') == std::string_view::npos;
    return isPlain ? written.size() == text.size() : unescape(written) == text;
}

}  // namespace QZ
