// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "BasicCredentials.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "Text.h"

namespace QZ {

namespace {

constexpr std::string_view SCHEME = "Basic";
constexpr std::string_view DIGITS =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::uint8_t NO_DIGIT = 0xFF;

constexpr std::array<std::uint8_t, 256> _digitValues() {
    std::array<std::uint8_t, 256> values{};
    for (std::uint8_t& value : values) {
        value = NO_DIGIT;
    }
    for (std::size_t i = 0; i < DIGITS.size(); ++i) {
        values[static_cast<unsigned char>(DIGITS[i])] = std::uint8_t(i);
    }
    return values;
}

constexpr std::array<std::uint8_t, 256> DIGIT_VALUES = _digitValues();

// RFC 4648, section 4.
std::optional<std::string> _decodeBase64(std::string_view text) {
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    while (!text.empty() && text.back() == '=') {
        text.remove_suffix(1);
    }
    std::string bytes;
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char c : text) {
        const std::uint8_t digit = DIGIT_VALUES[static_cast<unsigned char>(c)];
        if (digit == NO_DIGIT) {
            return std::nullopt;
        }
        bits = (bits << 6 | std::uint32_t(digit)) & 0xFFFFU;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += char(bits >> count & 0xFFU);
        }
    }
    return bytes;
}

std::string _encodeBase64(std::string_view bytes) {
    std::string text;
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char byte : bytes) {
        bits = (bits << 8 | static_cast<unsigned char>(byte)) & 0xFFFFU;
        for (count += 8; count >= 6; count -= 6) {
            text += DIGITS[bits >> (count - 6) & 0x3FU];
        }
    }
    if (count != 0) {
        text += DIGITS[bits << (6 - count) & 0x3FU];
    }
    text.append((4 - text.size() % 4) % 4, '=');
    return text;
}

}  // namespace

std::optional<BasicCredentials> parseBasicCredentials(std::string_view header) {
    const std::size_t blank = header.find(' ');
    if (blank == header.npos || !sameName(header.substr(0, blank), SCHEME)) {
        return std::nullopt;
    }
    const std::size_t begin = header.find_first_not_of(' ', blank);
    if (begin == header.npos) {
        return std::nullopt;
    }
    const auto text = _decodeBase64(header.substr(begin, header.find_last_not_of(' ') - begin + 1));
    const std::size_t colon = text ? text->find(':') : std::string::npos;
    if (colon == std::string::npos) {
        return std::nullopt;
    }
    return BasicCredentials{text->substr(0, colon), text->substr(colon + 1)};
}

std::string basicAuthorization(const BasicCredentials& credentials) {
    return std::string(SCHEME) + " " + _encodeBase64(credentials.user + ":" + credentials.password);
}

bool equalSecrets(std::string_view left, std::string_view right) {
    unsigned difference = left.size() == right.size() ? 0U : 1U;
    for (std::size_t i = 0; i < left.size(); ++i) {
        const char other = right.empty() ? '\0' : right[i % right.size()];
        difference |= static_cast<unsigned char>(left[i] ^ other);
    }
    return difference == 0;
}

}  // namespace QZ
