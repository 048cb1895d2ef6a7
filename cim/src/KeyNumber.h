// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// Numbers as they stand in the text of a key (DSP0201, integer value): decimal without leading
// zeros, or hexadecimal after "0x". The whole text must be one.

// False, with `number` untouched, if the text is none or does not fit.
bool readUnsigned(const String& text, Uint64& number);
// The same with an optional sign.
bool readSigned(const String& text, Sint64& number);
// [+|-][digits].digits[e[+|-]digits], the exponent in either case.
bool readReal(const String& text, Real64& number);

// A value of that numeric type; false if the text is none, or out of the type's range.
bool readNumber(const String& text, CIMType type, CIMValue& value);

}  // namespace Pegasus
