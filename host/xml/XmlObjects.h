// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMValue.h>

#include <stdexcept>
#include <string>

#include "CimRequest.h"
#include "XmlTree.h"

namespace QZ {

// The elements do not stand as DSP0201 has them.
class XmlLayoutError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The elements are right, but not what they hold: no name, no number of that type, no date.
class XmlValueError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The name of a key whose INSTANCENAME does not name it, as a class with one key allows.
constexpr const char* UNNAMED_KEY = "UnnamedKey_";

// Each reads one element, which the caller took for the right one; throws one of the two above.
const std::string& requiredAttribute(const XmlElement& element, const char* name);
Pegasus::CIMName readName(const std::string& text);
Pegasus::CIMNamespaceName readNamespacePath(const XmlElement& element);  // (LOCAL)NAMESPACEPATH
Pegasus::CIMObjectPath readInstanceName(const XmlElement& element);      // INSTANCENAME
Pegasus::CIMObjectPath readAnyPath(const XmlElement& element);  // what stands in VALUE.REFERENCE
Pegasus::CIMInstance readInstance(const XmlElement& element);   // INSTANCE
Pegasus::CIMClass readClass(const XmlElement& element);         // CLASS
CimUntypedValue readUntypedValue(const XmlElement& element);    // VALUE, VALUE.ARRAY

// The value of that type; throws XmlValueError.
Pegasus::CIMValue typedValue(const CimUntypedValue& untyped, Pegasus::CIMType type, bool isArray);

}  // namespace QZ
