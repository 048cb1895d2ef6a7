// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Text.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace QZ {

namespace {

// Where bytes that are not UTF-8 live in wide text: low surrogates, which no valid text contains.
constexpr std::uint32_t EscapedByte = 0xDC00;

constexpr bool isContinuation(std::uint32_t byte) {
    return (byte & 0xC0U) == 0x80U;
}

// The length of the sequence that a first byte announces, and the value of its own bits; 0 for a
// byte that starts none.
unsigned sequenceLength(std::uint32_t byte, std::uint32_t& bits) {
    if (byte < 0x80) {
        bits = byte;
        return 1;
    }
    if (byte >= 0xC2 && byte < 0xE0) {  // C0 and C1 would be overlong
        bits = byte & 0x1FU;
        return 2;
    }
    if (byte >= 0xE0 && byte < 0xF0) {
        bits = byte & 0x0FU;
        return 3;
    }
    if (byte >= 0xF0 && byte < 0xF5) {
        bits = byte & 0x07U;
        return 4;
    }
    return 0;
}

constexpr std::uint32_t codePointOf(wchar_t character) {
    return std::uint32_t{std::char_traits<wchar_t>::to_int_type(character)};
}

constexpr unsigned char lowered(char character) {
    return static_cast<unsigned char>(character >= 'A' && character <= 'Z' ? character - 'A' + 'a'
                                                                           : character);
}

bool isSequenceOf(unsigned length, std::uint32_t codePoint) {
    if (length == 3)
        return codePoint >= 0x800 && (codePoint < 0xD800 || codePoint > 0xDFFF);
    return length < 3 || (codePoint >= 0x10000 && codePoint <= 0x10FFFF);
}

}  // namespace

bool decodeUtf8(const char*& at, const char* end, std::uint32_t& codePoint) {
    if (at == end)
        return false;
    std::uint32_t value = 0;
    const unsigned length = sequenceLength(static_cast<unsigned char>(*at), value);
    if (length == 0 || end - at < static_cast<std::ptrdiff_t>(length))
        return false;
    for (unsigned index = 1; index < length; ++index) {
        const std::uint32_t byte = static_cast<unsigned char>(at[index]);
        if (!isContinuation(byte))
            return false;
        value = value << 6U | (byte & 0x3FU);
    }
    if (!isSequenceOf(length, value))
        return false;
    at += length;
    codePoint = value;
    return true;
}

const char* plainEnd(const char* at, const char* end) {
    constexpr std::uint64_t ones = 0x0101010101010101;
    // Eight at a time: the highest bit of a byte is set in the byte, after taking 0x20 from it, or
    // after adding 1 to it. A borrow or carry into the next byte comes from one that is not plain.
    for (std::uint64_t eight = 0; end - at >= 8; at += 8) {
        std::memcpy(&eight, at, sizeof eight);
        if (((eight | (eight - 0x20 * ones) | (eight + ones)) & 0x80 * ones) != 0)
            break;
    }
    while (at != end && *at >= 0x20 && *at < 0x7F)
        ++at;
    return at;
}

void appendUtf8(std::string& text, std::uint32_t codePoint) {
    const auto append = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (codePoint < 0x80) {
        append(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        append(0xC0U | codePoint >> 6U);
    } else {
        if (codePoint < 0x10000) {
            append(0xE0U | codePoint >> 12U);
        } else {
            append(0xF0U | codePoint >> 18U);
            append(0x80U | (codePoint >> 12U & 0x3FU));
        }
        append(0x80U | (codePoint >> 6U & 0x3FU));
    }
    append(0x80U | (codePoint & 0x3FU));
}

// Almost all texts are ASCII from end to end, which needs no decision for each character.
std::wstring make_wstring(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    std::size_t ascii = 0;
    for (; ascii < text.size() && static_cast<unsigned char>(text[ascii]) < 0x80; ++ascii)
        wide[ascii] = static_cast<wchar_t>(text[ascii]);
    wide.resize(ascii);
    const char* at = text.data() + ascii;
    const char* const end = text.data() + text.size();
    while (at != end) {
        std::uint32_t codePoint = static_cast<unsigned char>(*at);
        if (codePoint < 0x80)
            ++at;
        else if (!decodeUtf8(at, end, codePoint))
            codePoint = EscapedByte | static_cast<unsigned char>(*at++);
        wide += static_cast<wchar_t>(codePoint);
    }
    return wide;
}

std::string make_string(const std::wstring& text) {
    std::string narrow(text.size(), '\0');
    std::size_t ascii = 0;
    for (; ascii < text.size() && codePointOf(text[ascii]) < 0x80; ++ascii)
        narrow[ascii] = static_cast<char>(text[ascii]);
    narrow.resize(ascii);
    for (std::size_t at = ascii; at < text.size(); ++at) {
        const std::uint32_t codePoint = codePointOf(text[at]);
        if (codePoint < 0x80)
            narrow += static_cast<char>(codePoint);
        else if (codePoint >= EscapedByte + 0x80 && codePoint <= EscapedByte + 0xFF)
            narrow += static_cast<char>(codePoint & 0xFFU);
        else if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF))
            appendUtf8(narrow, 0xFFFD);
        else
            appendUtf8(narrow, codePoint);
    }
    return narrow;
}

bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(), [](char one, char other) {
               return one == other || lowered(one) == lowered(other);
           });
}

bool lessName(std::string_view left, std::string_view right) {
    return std::lexicographical_compare(
        left.begin(), left.end(), right.begin(), right.end(),
        [](char one, char other) { return lowered(one) < lowered(other); });
}

}  // namespace QZ
