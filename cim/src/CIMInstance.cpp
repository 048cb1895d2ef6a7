// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>

#include <utility>

#include "CIMObjectRep.h"

namespace Pegasus {

template class Array<CIMInstance>;

CIMConstInstance::CIMConstInstance(std::shared_ptr<CIMObjectRep> rep)
    : CimObjectReader(std::move(rep)) {}

CIMConstInstance::CIMConstInstance(const CIMName& className)
    : CimObjectReader(std::make_shared<CIMInstanceRep>(className)) {}

CIMConstInstance::CIMConstInstance(const CIMConstObject& x) : CimObjectReader(x) {
    if (!x.isInstance())
        throw DynamicCastFailedException();
}

CIMObjectPath CIMConstInstance::buildPath(const CIMConstClass& cimClass) const {
    Array<CIMName> keyNames;
    cimClass.getKeyNames(keyNames);
    Array<CIMKeyBinding> keys;
    for (Uint32 i = 0; i < keyNames.size(); ++i) {
        const Uint32 position = findProperty(keyNames[i]);
        if (position == PEG_NOT_FOUND)
            throw Exception(String("the instance has no key property ") + keyNames[i].getString());
        keys.append(CIMKeyBinding(keyNames[i], getProperty(position).getValue()));
    }
    return CIMObjectPath(String(), CIMNamespaceName(), getClassName(), keys);
}

CIMInstance CIMConstInstance::clone() const {
    return CIMInstance(_get().clone());
}

Boolean CIMConstInstance::identical(const CIMConstInstance& x) const {
    return _get().identical(x._get());
}

CIMInstance::CIMInstance(std::shared_ptr<CIMObjectRep> rep) : CimObjectEditor(std::move(rep)) {}

CIMInstance::CIMInstance(const CIMName& className) : CimObjectEditor(className) {}

CIMInstance::CIMInstance(const CIMObject& x) : CimObjectEditor(x) {}

void CIMInstance::instanceFilter(Boolean includeQualifiers, Boolean includeClassOrigin,
                                 const CIMPropertyList& propertyList) {
    filterObject(_get(), includeQualifiers, includeClassOrigin, propertyList);
}

}  // namespace Pegasus
