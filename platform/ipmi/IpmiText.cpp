// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiText.h"

#include <cstddef>
#include <cstdint>

#include "IpmiBytes.h"
#include "Text.h"

namespace QZ {

namespace {

// IPMI 2.0, 43.15. FRU Information Storage 1.0 reserves the last three.
constexpr std::string_view BcdPlusCharacters = "0123456789 -.:,_";
constexpr std::string_view HexadecimalDigits = "0123456789abcdef";
constexpr unsigned SixBitStart = 0x20;
constexpr unsigned SixBitMask = 0x3F;

std::string decodeNibbles(std::string_view characters, std::string_view bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text += characters[byteAt(bytes, i) >> 4U];
        text += characters[byteAt(bytes, i) & 0xFU];
    }
    return text;
}

std::string decodeSixBitAscii(std::string_view bytes) {
    std::string text;
    unsigned bits = 0;
    unsigned count = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bits |= byteAt(bytes, i) << count;
        for (count += 8; count >= 6; count -= 6, bits >>= 6U)
            text += static_cast<char>(SixBitStart + (bits & SixBitMask));
    }
    return text;
}

bool isErased(std::string_view bytes) {
    return bytes.find_first_not_of('\xFF') == std::string_view::npos;
}

std::string decodeLatin1(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    std::string text;
    if (isErased(bytes))
        return text;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        appendUtf8(text, byteAt(bytes, i));
    return text;
}

std::string decodeUtf16(std::string_view bytes) {
    constexpr std::uint32_t Replacement = 0xFFFD;
    std::string text;
    // Half a unit is none.
    bytes = bytes.substr(0, bytes.size() / 2 * 2);
    for (std::size_t at = 0; wordAt(bytes, at) != 0; at += 2) {
        const std::uint32_t unit = wordAt(bytes, at);
        const std::uint32_t next = wordAt(bytes, at + 2);
        if (unit < 0xD800 || unit > 0xDFFF) {
            appendUtf8(text, unit);
        } else if (unit < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF) {
            appendUtf8(text, 0x10000U + ((unit - 0xD800U) << 10U) + (next - 0xDC00U));
            at += 2;
        } else {
            appendUtf8(text, Replacement);
        }
    }
    return text;
}

std::string encodeNibbles(std::string_view characters, const std::string& text, unsigned other) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t found = characters.find(text[i]);
        const unsigned value =
            found != std::string_view::npos ? static_cast<unsigned>(found) : other;
        if (i % 2 == 0)
            bytes += static_cast<char>(value << 4U);
        else
            bytes.back() = static_cast<char>(byteAt(bytes, bytes.size() - 1) | value);
    }
    return bytes;
}

std::string encodeSixBitAscii(const std::string& text) {
    std::string bytes;
    unsigned bits = 0;
    unsigned count = 0;
    for (const char character : text) {
        const unsigned value = static_cast<unsigned char>(character) - SixBitStart;
        bits |= (value <= SixBitMask ? value : 0U) << count;
        for (count += 6; count >= 8; count -= 8, bits >>= 8U)
            bytes += static_cast<char>(bits & 0xFFU);
    }
    if (count > 0)
        bytes += static_cast<char>(bits & 0xFFU);
    return bytes;
}

// Code points beyond what `width` bytes hold become blanks.
std::string encodeWide(const std::string& text, unsigned width) {
    std::string bytes;
    const std::uint32_t largest = width == 1 ? 0xFF : 0xFFFF;
    for (const char* at = text.data(); at != text.data() + text.size();) {
        std::uint32_t codePoint = ' ';
        if (!decodeUtf8(at, text.data() + text.size(), codePoint))
            ++at;
        if (codePoint > largest)
            codePoint = ' ';
        for (unsigned i = 0; i < width; ++i)
            bytes += static_cast<char>(codePoint >> 8U * i & 0xFFU);
    }
    return bytes;
}

}  // namespace

std::string decodeIpmiText(IpmiEncoding encoding, std::string_view bytes) {
    switch (encoding) {
        case IpmiEncoding::Binary:
            return decodeNibbles(HexadecimalDigits, bytes);
        case IpmiEncoding::BcdPlus:
            return decodeNibbles(BcdPlusCharacters, bytes);
        case IpmiEncoding::SixBitAscii:
            return decodeSixBitAscii(bytes);
        case IpmiEncoding::Latin1:
            return decodeLatin1(bytes);
        case IpmiEncoding::Utf16:
            return isErased(bytes) ? std::string() : decodeUtf16(bytes);
    }
    return {};
}

std::string encodeIpmiText(IpmiEncoding encoding, const std::string& text) {
    constexpr unsigned Blank = 0xA;
    switch (encoding) {
        case IpmiEncoding::Binary:
            return encodeNibbles(HexadecimalDigits, text, 0);
        case IpmiEncoding::BcdPlus:
            return encodeNibbles(BcdPlusCharacters, text, Blank);
        case IpmiEncoding::SixBitAscii:
            return encodeSixBitAscii(text);
        case IpmiEncoding::Latin1:
            return encodeWide(text, 1);
        case IpmiEncoding::Utf16:
            return encodeWide(text, 2);
    }
    return {};
}

}  // namespace QZ
