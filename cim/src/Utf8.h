// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Char16.h>

#include <cstddef>

namespace QZ {

// Decodes UTF-8 into out, which has room for size units, and returns how many there are. Throws
// Pegasus::Exception at the first malformed sequence: overlong, cut short, beyond U+10FFFF, or no
// UTF-8 at all. Halves of surrogate pairs are let through, so that what encodeUtf8 writes is read.
Pegasus::Uint32 decodeUtf8(const char* bytes, Pegasus::Uint32 size, Pegasus::Char16* out);

// Encodes into out, which has room for three bytes a unit, and returns how many there are. Half of
// a surrogate pair becomes the three bytes of its own value.
std::size_t encodeUtf8(const Pegasus::Char16* units, Pegasus::Uint32 size, char* out);

}  // namespace QZ
