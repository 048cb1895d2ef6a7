// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMClass.h>

#include <utility>

#include "CIMObjectRep.h"

namespace Pegasus {

template class Array<CIMClass>;

template <class Owner>
static Boolean _isTrue(const Owner& owner, const char* qualifier) {
    const Uint32 position = owner.findQualifier(CIMName(qualifier));
    if (position == PEG_NOT_FOUND)
        return false;
    const CIMValue value = owner.getQualifier(position).getValue();
    Boolean flag = false;
    if (value.getType() == CIMTYPE_BOOLEAN && !value.isArray() && !value.isNull())
        value.get(flag);
    return flag;
}

static std::shared_ptr<CIMObjectRep> _makeClass(const CIMName& name, const CIMName& superClass) {
    auto rep = std::make_shared<CIMClassRep>(name);
    rep->superClassName = superClass;
    return rep;
}

// A handle to a class never holds anything else.
static CIMClassRep& _asClass(CIMObjectRep& rep) {
    return static_cast<CIMClassRep&>(rep);
}

CIMConstClass::CIMConstClass(std::shared_ptr<CIMObjectRep> rep) : CimObjectReader(std::move(rep)) {}

CIMConstClass::CIMConstClass(const CIMName& className, const CIMName& superClassName)
    : CimObjectReader(_makeClass(className, superClassName)) {}

CIMConstClass::CIMConstClass(const CIMConstObject& x) : CimObjectReader(x) {
    if (!x.isClass())
        throw DynamicCastFailedException();
}

Boolean CIMConstClass::isAssociation() const {
    return _isTrue(*this, "Association");
}

Boolean CIMConstClass::isAbstract() const {
    return _isTrue(*this, "Abstract");
}

const CIMName& CIMConstClass::getSuperClassName() const {
    return _asClass(_get()).superClassName;
}

void CIMConstClass::_setSuperClassName(const CIMName& superClassName) {
    _asClass(_get()).superClassName = superClassName;
}

void CIMConstClass::getKeyNames(Array<CIMName>& keyNames) const {
    keyNames.clear();
    for (Uint32 i = 0; i < getPropertyCount(); ++i) {
        const CIMConstProperty property = getProperty(i);
        if (_isTrue(property, "Key"))
            keyNames.append(property.getName());
    }
}

Boolean CIMConstClass::hasKeys() const {
    Array<CIMName> names;
    getKeyNames(names);
    return names.size() > 0;
}

CIMClass CIMConstClass::clone() const {
    return CIMClass(_get().clone());
}

Boolean CIMConstClass::identical(const CIMConstClass& x) const {
    return _get().identical(x._get());
}

CIMInstance CIMConstClass::_buildInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList) const {
    const CIMObjectRep& rep = _get();
    CIMInstance instance(rep.path.getClassName());
    for (Uint32 i = 0; includeQualifiers && i < rep.qualifiers.size(); ++i)
        instance.addQualifier(rep.qualifiers[i].clone());
    for (Uint32 i = 0; i < rep.properties.size(); ++i) {
        if (propertyList.useThisProperty(rep.properties[i].getName()))
            instance.addProperty(rep.properties[i].clone());
    }
    instance.instanceFilter(includeQualifiers, includeClassOrigin, propertyList);
    return instance;
}

CIMClass::CIMClass(std::shared_ptr<CIMObjectRep> rep) : CimObjectEditor(std::move(rep)) {}

CIMClass::CIMClass(const CIMName& className, const CIMName& superClassName)
    : CimObjectEditor(className, superClassName) {}

CIMClass::CIMClass(const CIMObject& x) : CimObjectEditor(x) {}

void CIMClass::setSuperClassName(const CIMName& superClassName) {
    _setSuperClassName(superClassName);
}

CIMInstance CIMClass::buildInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList) const {
    return _buildInstance(includeQualifiers, includeClassOrigin, propertyList);
}

}  // namespace Pegasus
