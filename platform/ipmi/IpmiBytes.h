// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace QZ {

// Numbers as IPMI has them, the low byte first. What lies beyond the bytes counts as 0.

inline unsigned byteAt(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
}

inline std::uint16_t wordAt(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint16_t>(byteAt(bytes, at) | byteAt(bytes, at + 1) << 8U);
}

inline std::uint32_t longAt(std::string_view bytes, std::size_t at) {
    return wordAt(bytes, at) | static_cast<std::uint32_t>(wordAt(bytes, at + 2)) << 16U;
}

}  // namespace QZ
