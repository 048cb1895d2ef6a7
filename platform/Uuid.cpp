// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Uuid.h"

#include <algorithm>
#include <utility>

namespace QZ {

namespace {

constexpr std::size_t Size = 16;

}  // namespace

Uuid::Uuid(std::vector<unsigned char> bytes) : _bytes(std::move(bytes)) {}

std::string Uuid::toString() const {
    constexpr const char* Digits = "0123456789ABCDEF";
    if (_bytes.size() < Size)
        return {};
    const auto isAll = [this](unsigned char value) {
        return std::all_of(_bytes.begin(), _bytes.begin() + Size,
                           [value](unsigned char byte) { return byte == value; });
    };
    if (isAll(0x00) || isAll(0xFF))
        return {};
    std::string text;
    for (std::size_t index = 0; index < Size; ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10)
            text += '-';
        text += Digits[_bytes[index] >> 4U];
        text += Digits[_bytes[index] & 0x0FU];
    }
    return text;
}

}  // namespace QZ
