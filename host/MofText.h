// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMValue.h>

#include <string>

#include "ClassRepository.h"

namespace QZ {

// MOF that parseMof() reads back.

// UTF-8 text as a string literal. Control characters are written as escapes.
std::string mofString(const std::string& text);

// A value as a literal; "null" also for what MOF cannot write: a real that is no number.
std::string mofValue(const Pegasus::CIMValue& value);

// "instance of CLASS { ... };" with the properties that the instance has.
std::string mofInstance(const Pegasus::CIMInstance& instance);

// A class with its qualifiers and the properties that it declares itself.
std::string mofClass(const ClassDeclaration& declared);

}  // namespace QZ
