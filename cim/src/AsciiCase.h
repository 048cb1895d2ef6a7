// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Char16.h>

namespace QZ {

// Names compare alike in every locale, so only A to Z have another case.
inline Pegasus::Char16 toLowerAscii(Pegasus::Char16 unit) {
    const Pegasus::Uint16 code = unit;
    return code >= 'A' && code <= 'Z' ? Pegasus::Char16(Pegasus::Uint16(code + ('a' - 'A'))) : unit;
}

}  // namespace QZ
