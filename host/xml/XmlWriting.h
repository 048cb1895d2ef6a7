// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMValue.h>

#include <functional>
#include <string>

namespace QZ {

// What of an instance or a class is written.
struct XmlForm {
    bool includeQualifiers = false;
    bool includeClassOrigin = false;
    // Whether a property is written; none: all are.
    std::function<bool(const Pegasus::CIMConstProperty&)> selects;
};

// Each appends one element of DSP0201 to the text.
void appendInstance(std::string& xml, const Pegasus::CIMConstInstance& instance,
                    const XmlForm& form);  // INSTANCE
void appendClass(std::string& xml, const Pegasus::CIMConstClass& declared,
                 const XmlForm& form);                                          // CLASS
void appendClassName(std::string& xml, const std::string& name);                // CLASSNAME
void appendInstanceName(std::string& xml, const Pegasus::CIMObjectPath& path);  // INSTANCENAME
// A path with as much as it has: INSTANCEPATH, LOCALINSTANCEPATH or INSTANCENAME.
void appendInstancePath(std::string& xml, const Pegasus::CIMObjectPath& path);
// INSTANCEPATH in any case: a path without a host is one of "localhost". It needs a namespace.
void appendFullInstancePath(std::string& xml, const Pegasus::CIMObjectPath& path);
void appendLocalNamespace(std::string& xml, const Pegasus::CIMNamespaceName& space);
// VALUE, VALUE.ARRAY or VALUE.REFERENCE; nothing for null.
void appendValue(std::string& xml, const Pegasus::CIMValue& value);
// VALUE with a text.
void appendTextValue(std::string& xml, const std::string& utf8);

struct XmlQualifierDeclaration {
    std::string name;
    Pegasus::CIMValue defaultValue;  // with the type, also where it is null
    Pegasus::CIMFlavor flavor;
    std::string scope;  // attributes of SCOPE: " CLASS=\"true\""
};
void appendQualifierDeclaration(std::string& xml, const XmlQualifierDeclaration& declared);

}  // namespace QZ
