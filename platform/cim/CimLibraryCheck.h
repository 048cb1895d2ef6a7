// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

// refusesOtherCimLibrary(), for a module's entry to ask first. A module that is built with
// OpenPegasus's SDK has no other library to be mistaken about.
#if __has_include(<tavqz/OtherCimLibrary.h>)
#include <tavqz/OtherCimLibrary.h>
#else
namespace QZ {
inline bool refusesOtherCimLibrary(const char*) {
    return false;
}
}  // namespace QZ
#endif
