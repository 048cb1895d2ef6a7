// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FieldCodec.h"

#include <charconv>
#include <cstdint>
#include <limits>

#include "Text.h"

namespace QZ {
namespace {

struct ParsedNumber {
    std::int64_t value = 0;  // as written, bounded to what 33 bits and a sign hold
    bool complete = false;   // the text is this number and nothing else
};

bool _isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

ParsedNumber _parseNumber(const std::string& text) {
    constexpr std::int64_t tooLarge = std::int64_t{1} << 33;
    ParsedNumber result;
    std::size_t at = 0;
    while (at < text.size() && _isBlank(text[at])) {
        ++at;
    }
    const bool negative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) {
        ++at;
    }
    const std::size_t firstDigit = at;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        if (result.value < tooLarge) {
            result.value = result.value * 10 + (text[at] - '0');
        }
    }
    result.complete = at == text.size() && at > firstDigit;
    if (negative) {
        result.value = -result.value;
    }
    return result;
}

// The 32-bit strtoul(3), whatever the width of a long here: a sign is kept modulo 2^32, and what
// is out of range is the largest value.
std::uint32_t _parseUnsigned(const std::string& text) {
    constexpr std::int64_t largest = std::numeric_limits<std::uint32_t>::max();
    const std::int64_t value = _parseNumber(text).value;
    if (value > largest || value < -largest) {
        return std::numeric_limits<std::uint32_t>::max();
    }
    return static_cast<std::uint32_t>(value);
}

// What follows tells a property file which hand-written texts would be lost by writing back what
// was read of them.

bool _uint8GivesBack(const std::wstring& stored) {
    const ParsedNumber number = _parseNumber(make_string(stored));
    return stored.empty() || (number.complete && number.value >= 0 && number.value <= 255);
}

bool _uint32GivesBack(const std::wstring& stored) {
    const ParsedNumber number = _parseNumber(make_string(stored));
    return stored.empty() ||
           (number.complete && number.value >= std::numeric_limits<std::int32_t>::min() &&
            number.value <= std::numeric_limits<std::uint32_t>::max());
}

bool _dateGivesBack(const std::wstring& stored) {
    return stored.empty() || DateTime(make_string(stored), 3).isSet();
}

// The number as signed decimal text of exactly `Size` characters, the tail being NULs.
template <std::size_t Size>
std::wstring _paddedDecimal(std::int32_t value) {
    char text[Size] = {};
    std::to_chars(text, text + Size, value);
    return make_wstring(std::string(text, sizeof text));
}

}  // namespace

std::string ReadStringFromFile(const PropertyFile& file, const std::string& key) {
    return make_string(file.getProperty(make_wstring(key)));
}

unsigned char ReadUint8FromFile(const PropertyFile& file, const std::string& key) {
    return static_cast<unsigned char>(_parseUnsigned(ReadStringFromFile(file, key)) & 0xFFU);
}

unsigned int ReadUint32FromFile(const PropertyFile& file, const std::string& key) {
    return _parseUnsigned(ReadStringFromFile(file, key));
}

DateTime ReadDateFromFile(const PropertyFile& file, const std::string& key) {
    const std::string text = ReadStringFromFile(file, key);
    return text.empty() ? DateTime() : DateTime(text, 3);
}

void WriteStringToFile(PropertyFile& file, const std::string& key, const std::string& value) {
    file.setProperty(make_wstring(key), make_wstring(value));
}

void WriteUint8ToFile(PropertyFile& file, const std::string& key, unsigned char value) {
    file.setProperty(make_wstring(key), _paddedDecimal<4>(value), _uint8GivesBack);
}

void WriteUint32ToFile(PropertyFile& file, const std::string& key, unsigned int value) {
    // Signed on purpose: reading turns the minus sign back into the same 32 bits.
    file.setProperty(make_wstring(key), _paddedDecimal<16>(static_cast<std::int32_t>(value)),
                     _uint32GivesBack);
}

void WriteDateToFile(PropertyFile& file, const std::string& key, const DateTime& value) {
    file.setProperty(make_wstring(key), make_wstring(value.toString()), _dateGivesBack);
}

}  // namespace QZ
