// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Linkage.h>

namespace Pegasus {

// One UTF-16 code unit. Any value is allowed, halves of surrogate pairs and NUL included.
class PEGASUS_COMMON_LINKAGE Char16 {
public:
    constexpr Char16() noexcept : _code(0) {}
    // Implicit by intention: a plain character or number stands for its code unit.
    constexpr Char16(Uint16 code) noexcept : _code(code) {}

    constexpr operator Uint16() const noexcept { return _code; }

private:
    Uint16 _code;
};

inline Boolean operator==(const Char16& x, const Char16& y) {
    return Uint16(x) == Uint16(y);
}
inline Boolean operator==(const Char16& x, char y) {
    return x == Char16(Uint16(y));
}
inline Boolean operator==(char x, const Char16& y) {
    return y == x;
}
inline Boolean operator!=(const Char16& x, const Char16& y) {
    return !(x == y);
}
inline Boolean operator!=(const Char16& x, char y) {
    return !(x == y);
}
inline Boolean operator!=(char x, const Char16& y) {
    return !(y == x);
}

}  // namespace Pegasus
