// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include <string>
#include <vector>

#include "ClassRepository.h"

namespace QZ {

// A property and its new value.
struct Assignment {
    const PropertyDeclaration* property;
    Pegasus::CIMValue value;
};

// Reads "Property=value" for a class; the property's type decides how the value is read. An empty
// value is empty text, and for a date the interval that clears it. Throws UsageError for a property
// that the class does not have or that is not writable, naming those that are, and for a value that
// does not fit.
Assignment parseAssignment(const ClassDeclaration& declared, const std::string& text);

// The same of several; a property may be named once. The order is theirs.
std::vector<Assignment> parseAssignments(const ClassDeclaration& declared,
                                         const std::vector<std::string>& texts);

// The instance to send, with the path of the current one: the assigned properties, and of those
// that the class replaces together the ones that were not named, with their current values.
Pegasus::CIMInstance modifiedInstance(const ClassDeclaration& declared,
                                      const Pegasus::CIMInstance& current,
                                      const std::vector<Assignment>& assignments);

// A new instance of the class out of "Property=value", written to or not, without a path. Throws
// UsageError as above, and for a key that is missing.
Pegasus::CIMInstance createdInstance(const ClassDeclaration& declared,
                                     const std::vector<std::string>& texts);

// The names of the properties that an instance has.
Pegasus::CIMPropertyList propertyNames(const Pegasus::CIMInstance& instance);

}  // namespace QZ
