// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PciVpd.h"

#include <cstddef>
#include <string_view>

namespace QZ {

namespace {

// Large resources have the top bit of their tag set, then two bytes of length; small ones have
// their length in the lowest three bits of the tag.
constexpr unsigned IdentifierString = 0x82;
constexpr unsigned ReadOnlyData = 0x90;
constexpr unsigned EndTag = 0x0F;

unsigned byteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view around(" \0", 2);
    const std::size_t first = text.find_first_not_of(around);
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(around) - first + 1));
}

// Fields of a keyword of two characters, a length of one byte, and the data.
void decodeFields(std::string_view fields, PciVpd& vpd) {
    constexpr std::size_t header = 3;
    while (fields.size() >= header) {
        const std::string_view keyword = fields.substr(0, 2);
        const std::size_t length = byteAt(fields, 2);
        fields.remove_prefix(header);
        if (length > fields.size())
            return;
        const std::string_view data = fields.substr(0, length);
        if (keyword == "PN") {
            vpd.partNumber = trimmed(data);
        } else if (keyword == "SN") {
            vpd.serialNumber = trimmed(data);
        } else if (keyword == "MN") {
            vpd.manufacturer = trimmed(data);
        }
        fields.remove_prefix(length);
    }
}

}  // namespace

PciVpd decodePciVpd(const std::string& bytes) {
    PciVpd vpd;
    std::string_view rest = bytes;
    while (!rest.empty()) {
        const unsigned tag = byteAt(rest, 0);
        const bool isLarge = (tag & 0x80U) != 0;
        const std::size_t header = isLarge ? 3 : 1;
        if (rest.size() < header || (!isLarge && tag >> 3U == EndTag))
            break;
        const std::size_t length = isLarge ? byteAt(rest, 1) | byteAt(rest, 2) << 8U : tag & 7U;
        rest.remove_prefix(header);
        // A resource that is cut off has whole fields at its beginning.
        const std::string_view data = rest.substr(0, length);
        if (tag == IdentifierString)
            vpd.product = trimmed(data);
        if (tag == ReadOnlyData)
            decodeFields(data, vpd);
        rest.remove_prefix(data.size());
    }
    return vpd;
}

}  // namespace QZ
