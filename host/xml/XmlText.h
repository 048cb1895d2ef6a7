// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/String.h>

#include <string>
#include <string_view>

namespace QZ {

// Append text as XML 1.0 takes it within an element or an attribute, in UTF-8: markup, and white
// space that would not survive, as references; what XML forbids becomes U+FFFD.
void appendXmlText(std::string& xml, const Pegasus::String& text);
void appendXmlText(std::string& xml, std::string_view utf8);

// Without XML's white space at the beginning and at the end.
std::string_view trimmed(std::string_view text);

}  // namespace QZ
