// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/String.h>

#include <string>

namespace QZ {

// UTF-8 text for a CIM client: what is not valid UTF-8 is taken as Latin-1, and what XML 1.0
// forbids (control characters, U+FFFE, U+FFFF) becomes U+FFFD, so that any text of a machine
// can be sent.
Pegasus::String make_String(const std::string& text);
Pegasus::String make_String(const std::wstring& text);

// A client's text as UTF-8. A surrogate without its other half becomes U+FFFD.
std::string make_string(const Pegasus::String& text);
// The same, behind what is there.
void append_string(std::string& result, const Pegasus::String& text);

// Without the blanks at the beginning, and at the end; tabs and line ends are none.
Pegasus::String ltrim(const Pegasus::String& text);
Pegasus::String rtrim(const Pegasus::String& text);

}  // namespace QZ
