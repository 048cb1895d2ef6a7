// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Utf8.h"

#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <cstdio>

namespace QZ {

using Pegasus::Char16;
using Pegasus::Uint16;
using Pegasus::Uint32;

namespace {

constexpr bool _isHighHalf(Uint32 unit) {
    return unit >= 0xd800 && unit <= 0xdbff;
}
constexpr bool _isLowHalf(Uint32 unit) {
    return unit >= 0xdc00 && unit <= 0xdfff;
}

[[noreturn]] void _throwMalformed(const unsigned char* bytes, Uint32 size, Uint32 index) {
    char text[80];
    int length = std::snprintf(text, sizeof text, "malformed UTF-8 at byte %u:", index);
    for (Uint32 i = index; i < std::min(size, index + 4); ++i)
        length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length),
                                " %02x", static_cast<unsigned>(bytes[i]));
    throw Pegasus::Exception(text);
}

// Length of the sequence that the byte starts; 0 where it starts none.
constexpr Uint32 _sequenceLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xc2 && lead <= 0xdf)
        return 2;
    if (lead >= 0xe0 && lead <= 0xef)
        return 3;
    return lead >= 0xf0 && lead <= 0xf4 ? 4 : 0;
}

// The code point of a sequence of that length, or a value beyond all of them if it is malformed.
Uint32 _decodeSequence(const unsigned char* bytes, Uint32 length) {
    static constexpr Uint32 smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    static constexpr unsigned char leadMask[] = {0, 0x7f, 0x1f, 0x0f, 0x07};
    Uint32 point = bytes[0] & leadMask[length];
    for (Uint32 i = 1; i < length; ++i) {
        if ((bytes[i] & 0xc0) != 0x80)
            return Uint32(-1);
        point = point << 6 | (bytes[i] & 0x3fU);
    }
    return point >= smallest[length] ? point : Uint32(-1);
}

}  // namespace

Uint32 decodeUtf8(const char* bytes, Uint32 size, Char16* out) {
    const auto* in = reinterpret_cast<const unsigned char*>(bytes);
    unsigned all = 0;
    for (Uint32 i = 0; i < size; ++i) {
        all |= in[i];
        out[i] = in[i];
    }
    if (all < 0x80)
        return size;  // as nearly all text
    Uint32 count = 0;
    for (Uint32 i = 0; i < size;) {
        if (in[i] < 0x80) {
            out[count++] = in[i++];
            continue;
        }
        const Uint32 length = _sequenceLength(in[i]);
        if (length == 0 || length > size - i)
            _throwMalformed(in, size, i);
        const Uint32 point = _decodeSequence(in + i, length);
        if (point > 0x10ffff)
            _throwMalformed(in, size, i);
        if (point >= 0x10000) {
            out[count++] = static_cast<Uint16>(0xd7c0 + (point >> 10));
            out[count++] = static_cast<Uint16>(0xdc00 | (point & 0x3ff));
        } else {
            out[count++] = static_cast<Uint16>(point);
        }
        i += length;
    }
    return count;
}

std::size_t encodeUtf8(const Char16* units, Uint32 size, char* out) {
    std::size_t count = 0;
    const auto put = [&](Uint32 byte) { out[count++] = static_cast<char>(byte); };
    for (Uint32 i = 0; i < size; ++i) {
        Uint32 point = Uint16(units[i]);
        if (_isHighHalf(point) && i + 1 < size && _isLowHalf(Uint16(units[i + 1])))
            point = 0x10000 + ((point & 0x3ff) << 10 | (Uint16(units[++i]) & 0x3ffU));
        if (point < 0x80) {
            put(point);
            continue;
        }
        if (point < 0x800) {
            put(0xc0 | point >> 6);
        } else {
            if (point < 0x10000) {
                put(0xe0 | point >> 12);
            } else {
                put(0xf0 | point >> 18);
                put(0x80 | (point >> 12 & 0x3f));
            }
            put(0x80 | (point >> 6 & 0x3f));
        }
        put(0x80 | (point & 0x3f));
    }
    return count;
}

}  // namespace QZ
