// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Provider/CIMOMHandle.h>

namespace QZ {

// An instance of the class with a path of namespace and class and no keys. It has the class's
// properties with their defaults where the server behind the handle tells the class, else none. A
// null handle is no server.
Pegasus::CIMInstance spawnInstance(Pegasus::CIMOMHandle* handle,
                                   const Pegasus::CIMNamespaceName& nameSpace,
                                   const Pegasus::CIMName& className);

// Gives the instance's property the value; adds the property where there is none of the name. What
// the interface throws for a value of another type than the property's gets out.
void setProperty(Pegasus::CIMInstance& instance, const Pegasus::CIMName& name,
                 const Pegasus::CIMValue& value);

}  // namespace QZ
