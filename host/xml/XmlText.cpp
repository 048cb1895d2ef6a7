// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "XmlText.h"

#include <cstdint>

#include "Text.h"

namespace QZ {

namespace {

constexpr std::uint32_t REPLACEMENT = 0xFFFD;

void _append(std::string& xml, std::uint32_t code) {
    switch (code) {
        case '<':
            xml += "&lt;";
            return;
        case '>':
            xml += "&gt;";
            return;
        case '&':
            xml += "&amp;";
            return;
        case '"':
            xml += "&quot;";
            return;
        case '\t':
            xml += "&#9;";
            return;
        case '\n':
            xml += "&#10;";
            return;
        case '\r':
            xml += "&#13;";
            return;
        default:
            break;
    }
    if (code >= 0x20 && code < 0x7F) {
        xml += char(code);
    } else if (code < 0x20 || code == 0xFFFE || code == 0xFFFF) {
        appendUtf8(xml, REPLACEMENT);
    } else {
        appendUtf8(xml, code);
    }
}

// Whether the character stands for itself: of these are nearly all texts.
bool _isPlain(std::uint32_t code) {
    return code >= 0x20 && code < 0x7F && code != '<' && code != '>' && code != '&' && code != '"';
}

bool _isHigh(std::uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool _isLow(std::uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

void appendXmlText(std::string& xml, const Pegasus::String& text) {
    const Pegasus::Char16* const units = text.getChar16Data();
    const Pegasus::Uint32 size = text.size();
    char plain[128];
    std::size_t count = 0;
    for (Pegasus::Uint32 i = 0; i < size; ++i) {
        const std::uint32_t unit = Pegasus::Uint16(units[i]);
        if (_isPlain(unit)) {
            plain[count++] = char(unit);
            if (count == sizeof plain) {
                xml.append(plain, count);
                count = 0;
            }
            continue;
        }
        xml.append(plain, count);
        count = 0;
        if (_isHigh(unit) && i + 1 < size && _isLow(Pegasus::Uint16(units[i + 1]))) {
            const std::uint32_t low = Pegasus::Uint16(units[++i]);
            _append(xml, 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
        } else {
            _append(xml, _isHigh(unit) || _isLow(unit) ? REPLACEMENT : unit);
        }
    }
    xml.append(plain, count);
}

void appendXmlText(std::string& xml, std::string_view utf8) {
    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    while (at != end) {
        const char* const run = at;
        while (at != end && _isPlain(static_cast<unsigned char>(*at))) {
            ++at;
        }
        xml.append(run, at);
        if (at == end) {
            break;
        }
        std::uint32_t code = 0;
        if (decodeUtf8(at, end, code)) {
            _append(xml, code);
        } else {
            ++at;
            _append(xml, REPLACEMENT);
        }
    }
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

}  // namespace QZ
