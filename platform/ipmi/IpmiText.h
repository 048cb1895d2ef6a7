// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace QZ {

// How a text of a management controller's is stored. What two bits of its length byte mean differs
// between FRU data and sensor data records, so that each decoder chooses.
enum class IpmiEncoding {
    Binary,       // shown as two lower-case digits to a byte
    BcdPlus,      // two of "0123456789 -.:,_" to a byte, the first in the high bits
    SixBitAscii,  // four characters from the blank on in three bytes, the first in the low bits
    Latin1,       // ISO 8859-1, of which ASCII is a part
    Utf16,        // little-endian
};

// The text in UTF-8. A NUL ends it, but for BCD plus and six-bit text, which have none; bytes of
// nothing but FFh, as erased memory has them, are no Latin-1 or UTF-16 text. Blanks stay. Pure and
// total over any bytes.
std::string decodeIpmiText(IpmiEncoding encoding, std::string_view bytes);

// The bytes of a text of as many characters as decodeIpmiText found; characters that the encoding
// lacks become blanks, and binary ones zeros. Not for UTF-16 beyond the basic plane.
std::string encodeIpmiText(IpmiEncoding encoding, const std::string& text);

}  // namespace QZ
