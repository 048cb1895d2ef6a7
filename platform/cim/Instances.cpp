// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Instances.h"

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/OperationContext.h>

namespace QZ {

using namespace Pegasus;

namespace {

CIMInstance _bareInstance(CIMOMHandle* handle, const CIMNamespaceName& nameSpace,
                          const CIMName& className) {
    if (handle != nullptr) {
        try {
            return handle
                ->getClass(OperationContext(), nameSpace, className, false, false, false,
                           CIMPropertyList())
                .buildInstance(false, false, CIMPropertyList());
        } catch (const Exception&) {
            // The server may keep its classes to itself.
        }
    }
    return CIMInstance(className);
}

}  // namespace

CIMInstance spawnInstance(CIMOMHandle* handle, const CIMNamespaceName& nameSpace,
                          const CIMName& className) {
    CIMInstance instance = _bareInstance(handle, nameSpace, className);
    instance.setPath(CIMObjectPath(String(), nameSpace, className));
    return instance;
}

void setProperty(CIMInstance& instance, const CIMName& name, const CIMValue& value) {
    const Uint32 index = instance.findProperty(name);
    if (index == PEG_NOT_FOUND)
        instance.addProperty(CIMProperty(name, value));
    else
        instance.getProperty(index).setValue(value);
}

}  // namespace QZ
