// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMValue.h>

#include <string>

#include "ClassRepository.h"

namespace QZ {

// A value's plain text, UTF-8: text as it is, dates in the 25-character CIM form, numbers in
// decimal, references as paths, an array's elements with ", " between, nothing for null.
std::string plainText(const Pegasus::CIMValue& value);
// The same, behind what is there.
void appendPlainText(std::string& text, const Pegasus::CIMValue& value);

// The shortest decimal text that reads back as that number.
std::string realText(Pegasus::Real32 number);
std::string realText(Pegasus::Real64 number);

// A date for people: "2027-01-31" where the time of day is 00:00:00, else with time and offset;
// the CIM form where it is no date of the calendar.
std::string humanDate(const Pegasus::CIMDateTime& date);

// A value for people, with what its declaration knows of unit and meaning. A null declaration
// knows nothing.
std::string humanText(const Pegasus::CIMValue& value, const PropertyDeclaration* declaration);

}  // namespace QZ
