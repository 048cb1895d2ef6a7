// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMValue.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "MofSyntax.h"

namespace QZ {

// Values of a given CIM type from the ways in which people write them.

// An integer of any of the eight integer types. Nothing where it is out of the type's range, or the
// type is no integer.
std::optional<Pegasus::CIMValue> makeInteger(Pegasus::CIMType type, bool negative,
                                             std::uint64_t magnitude);

// A real from decimal text. Nothing where the text is no number or out of range.
std::optional<Pegasus::CIMValue> makeReal(Pegasus::CIMType type, const std::string& text);

// An array of scalars that all have that type and are not null.
Pegasus::CIMValue makeArray(Pegasus::CIMType type, const std::vector<Pegasus::CIMValue>& elements);

// What a literal of the document means for a property of that type. Throws MofError, with the
// literal's place, where it means nothing. A null literal makes a null value.
Pegasus::CIMValue makeValue(const MofDocument& document, const MofLiteral& literal,
                            Pegasus::CIMType type, bool isArray);

}  // namespace QZ
