// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "SmBios.h"

namespace QZ {

// Both read the machine's tables afresh and may be called from any thread. Where they answer
// false, the output is untouched.

// The first structure of the type.
bool FoundTable(SmBios::Table& out, unsigned char type);

// The structure of the type that comes next after the one of the same type with that handle; with
// handle 0xFFFF the first of the type.
bool FoundNextTable(SmBios::Table& out, unsigned char type, unsigned short handle);

}  // namespace QZ
