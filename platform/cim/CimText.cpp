// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimText.h"

#include <Pegasus/Common/Char16.h>

#include <cstdint>
#include <vector>

#include "Text.h"

namespace QZ {
namespace {

constexpr std::uint32_t _replacement = 0xFFFD;

// Char of XML 1.0, section 2.2; surrogates do not reach this.
bool _isXmlCharacter(std::uint32_t c) {
    return (c >= 0x20 && c != 0xFFFE && c != 0xFFFF) || c == '\t' || c == '\n' || c == '\r';
}

void _appendUtf16(std::vector<Pegasus::Char16>& units, std::uint32_t c) {
    if (c >= 0x10000) {
        units.emplace_back(static_cast<Pegasus::Uint16>(0xD800 + ((c - 0x10000) >> 10)));
        units.emplace_back(static_cast<Pegasus::Uint16>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    } else {
        units.emplace_back(static_cast<Pegasus::Uint16>(c));
    }
}

bool _isHighSurrogate(std::uint32_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool _isLowSurrogate(std::uint32_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

}  // namespace

Pegasus::String make_String(const std::string& text) {
    if (text.empty()) {
        return Pegasus::String();  // which no null pointer may make
    }
    const char* at = text.data();
    const char* const end = at + text.size();
    if (plainEnd(at, end) == end) {
        return Pegasus::String(at, static_cast<Pegasus::Uint32>(text.size()));
    }
    std::vector<Pegasus::Char16> units;
    units.reserve(text.size());
    while (at != end) {
        std::uint32_t c = static_cast<unsigned char>(*at);
        if (c < 0x80) {
            ++at;
        } else if (!decodeUtf8(at, end, c)) {
            c = static_cast<unsigned char>(*at++);
        }
        _appendUtf16(units, _isXmlCharacter(c) ? c : _replacement);
    }
    return Pegasus::String(units.data(), static_cast<Pegasus::Uint32>(units.size()));
}

Pegasus::String make_String(const std::wstring& text) {
    return make_String(make_string(text));
}

std::string make_string(const Pegasus::String& text) {
    std::string result;
    append_string(result, text);
    return result;
}

void append_string(std::string& result, const Pegasus::String& text) {
    const Pegasus::Uint32 size = text.size();
    const Pegasus::Char16* const units = text.getChar16Data();
    const std::size_t start = result.size();
    result.resize(start + size);
    char* const out = result.data() + start;
    std::uint32_t all = 0;
    for (Pegasus::Uint32 i = 0; i < size; ++i) {
        all |= units[i];
        out[i] = static_cast<char>(units[i]);
    }
    if (all < 0x80) {
        return;  // as nearly all text
    }
    result.resize(start);
    for (Pegasus::Uint32 i = 0; i < size; ++i) {
        std::uint32_t c = units[i];
        if (_isHighSurrogate(c) && i + 1 < size && _isLowSurrogate(units[i + 1])) {
            c = 0x10000 + ((c & 0x3FF) << 10) + (static_cast<std::uint32_t>(units[++i]) & 0x3FF);
        } else if (_isHighSurrogate(c) || _isLowSurrogate(c)) {
            c = _replacement;
        }
        appendUtf8(result, c);
    }
}

Pegasus::String ltrim(const Pegasus::String& text) {
    Pegasus::Uint32 first = 0;
    while (first < text.size() && text[first] == ' ') {
        ++first;
    }
    return text.subString(first);
}

Pegasus::String rtrim(const Pegasus::String& text) {
    Pegasus::Uint32 size = text.size();
    while (size > 0 && text[size - 1] == ' ') {
        --size;
    }
    return text.subString(0, size);
}

}  // namespace QZ
