// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "MofCursor.h"
#include "MofSyntax.h"

namespace QZ {

// The parts that several declarations of MOF share. Each takes what it returns.

MofLiteral takeMofLiteral(MofCursor& cursor);

// The name of a type other than a reference.
Pegasus::CIMType takeMofType(MofCursor& cursor);

// A flavor's name if it is there: what it says is set.
bool takeMofFlavor(MofCursor& cursor, MofFlavor& flavor);

// "[...]" if it is there.
std::vector<MofQualifier> takeMofQualifiers(MofCursor& cursor);

// "[]" or "[size]" behind a name: whether it is there, and the size, 0 where none is given.
bool takeMofArrayBrackets(MofCursor& cursor, std::uint32_t& size);

}  // namespace QZ
