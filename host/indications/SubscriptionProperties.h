// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include <string>

#include "ClassRepository.h"

namespace QZ {

// The properties of the instances that one subscribes with.

// Null, too, where there is no such property.
Pegasus::CIMValue valueOf(const Pegasus::CIMConstInstance& instance, const char* property);
// Its text; empty for null.
std::string textOf(const Pegasus::CIMConstInstance& instance, const char* property);
// A uint16; 0 for null.
Pegasus::Uint16 numberOf(const Pegasus::CIMConstInstance& instance, const char* property);
// A reference, as localPath() has it in the namespace of the instance's path.
Pegasus::CIMObjectPath referenceOf(const Pegasus::CIMConstInstance& instance, const char* property);

// The path without a host, and in that namespace where it has none.
Pegasus::CIMObjectPath localPath(Pegasus::CIMObjectPath path,
                                 const Pegasus::CIMNamespaceName& nameSpace);

// Adds the property or gives it that value.
void setValue(Pegasus::CIMInstance& instance, const std::string& property,
              const Pegasus::CIMValue& value);

// Sets what a client gave, as the class has it. Throws CIMException, CIM_ERR_INVALID_PARAMETER, for
// a property that the class does not have and a value that the property cannot.
void takeProperty(const ClassDeclaration& declared, const Pegasus::CIMConstProperty& given,
                  Pegasus::CIMInstance& instance);

// With all properties of the class, in its order; what was missing is null.
Pegasus::CIMInstance completed(const Pegasus::CIMInstance& instance,
                               const ClassDeclaration& declared);

}  // namespace QZ
