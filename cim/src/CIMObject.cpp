// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>

#include <utility>

#include "CIMObjectRep.h"

namespace Pegasus {

template class Array<CIMObject>;

CimObjectReader::CimObjectReader(std::shared_ptr<CIMObjectRep> rep) : _rep(std::move(rep)) {}

CIMObjectRep& CimObjectReader::_get() const {
    if (!_rep)
        throw UninitializedObjectException();
    return *_rep;
}

const CIMName& CimObjectReader::getClassName() const {
    return _get().path.getClassName();
}

const CIMObjectPath& CimObjectReader::getPath() const {
    return _get().path;
}

Uint32 CimObjectReader::findQualifier(const CIMName& name) const {
    return _get().qualifiers.find(name);
}

Uint32 CimObjectReader::findProperty(const CIMName& name) const {
    return _get().properties.find(name);
}

CIMConstQualifier CimObjectReader::getQualifier(Uint32 index) const {
    return _get().qualifiers[index];
}

CIMConstProperty CimObjectReader::getProperty(Uint32 index) const {
    return _get().properties[index];
}

Uint32 CimObjectReader::getQualifierCount() const {
    return _get().qualifiers.size();
}

Uint32 CimObjectReader::getPropertyCount() const {
    return _get().properties.size();
}

Boolean CimObjectReader::isUninitialized() const {
    return !_rep;
}

void CimObjectReader::_setPath(const CIMObjectPath& path) {
    CIMObjectRep& rep = _get();
    if (path.getClassName().isNull())
        throw UninitializedObjectException();
    if (path.getClassName() != rep.path.getClassName())
        throw TypeMismatchException();
    rep.path = path;
}

void CimObjectReader::_addQualifier(const CIMQualifier& qualifier) {
    _get().qualifiers.add(qualifier, "qualifier");
}

void CimObjectReader::_addProperty(const CIMProperty& property) {
    _get().addProperty(property);
}

CIMQualifier CimObjectReader::_qualifier(Uint32 index) {
    return _get().qualifiers[index];
}

CIMProperty CimObjectReader::_property(Uint32 index) {
    return _get().properties[index];
}

void CimObjectReader::_removeQualifier(Uint32 index) {
    _get().qualifiers.remove(index);
}

void CimObjectReader::_removeProperty(Uint32 index) {
    _get().properties.remove(index);
}

CIMConstObject::CIMConstObject(std::shared_ptr<CIMObjectRep> rep)
    : CimObjectReader(std::move(rep)) {}

CIMConstObject::CIMConstObject(const CIMConstInstance& x) : CimObjectReader(x) {}

CIMConstObject::CIMConstObject(const CIMConstClass& x) : CimObjectReader(x) {}

CIMObject CIMConstObject::clone() const {
    return CIMObject(_get().clone());
}

Boolean CIMConstObject::identical(const CIMConstObject& x) const {
    return _get().identical(x._get());
}

Boolean CIMConstObject::isClass() const {
    return dynamic_cast<const CIMClassRep*>(_rep.get()) != nullptr;
}

Boolean CIMConstObject::isInstance() const {
    return dynamic_cast<const CIMInstanceRep*>(_rep.get()) != nullptr;
}

CIMObject::CIMObject(std::shared_ptr<CIMObjectRep> rep) : CimObjectEditor(std::move(rep)) {}

CIMObject::CIMObject(const CIMInstance& x) : CimObjectEditor(x) {}

CIMObject::CIMObject(const CIMClass& x) : CimObjectEditor(x) {}

void CIMObject::instanceFilter(Boolean includeQualifiers, Boolean includeClassOrigin,
                               const CIMPropertyList& propertyList) {
    filterObject(_get(), includeQualifiers, includeClassOrigin, propertyList);
}

}  // namespace Pegasus
