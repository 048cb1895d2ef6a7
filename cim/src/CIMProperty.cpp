// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMProperty.h>

#include <utility>

#include "CIMPropertyRep.h"

namespace Pegasus {

template class Array<CIMProperty>;

static void _refuseReferenceArray(const CIMValue& value) {
    // DSP0004: a property may be a reference, but not an array of them.
    if (value.isArray() && value.getType() == CIMTYPE_REFERENCE)
        throw TypeMismatchException();
}

CIMConstProperty::CIMConstProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize,
                                   const CIMName& referenceClassName, const CIMName& classOrigin,
                                   Boolean propagated) {
    if (name.isNull())
        throw UninitializedObjectException();
    if (arraySize != 0 && (!value.isArray() || value.getArraySize() != arraySize))
        throw TypeMismatchException();
    _refuseReferenceArray(value);
    if (!referenceClassName.isNull() && value.getType() != CIMTYPE_REFERENCE)
        throw TypeMismatchException();
    _rep = std::make_shared<CIMPropertyRep>();
    _rep->name = name;
    _rep->value = value;
    _rep->arraySize = arraySize;
    _rep->referenceClassName = referenceClassName;
    _rep->classOrigin = classOrigin;
    _rep->propagated = propagated;
}

CIMConstProperty::CIMConstProperty(std::shared_ptr<CIMPropertyRep> rep) : _rep(std::move(rep)) {}

CIMPropertyRep& CIMConstProperty::_get() const {
    if (!_rep)
        throw UninitializedObjectException();
    return *_rep;
}

const CIMName& CIMConstProperty::getName() const {
    return _get().name;
}

const CIMValue& CIMConstProperty::getValue() const {
    return _get().value;
}

CIMType CIMConstProperty::getType() const {
    return _get().value.getType();
}

Boolean CIMConstProperty::isArray() const {
    return _get().value.isArray();
}

Uint32 CIMConstProperty::getArraySize() const {
    return _get().arraySize;
}

const CIMName& CIMConstProperty::getReferenceClassName() const {
    return _get().referenceClassName;
}

const CIMName& CIMConstProperty::getClassOrigin() const {
    return _get().classOrigin;
}

Boolean CIMConstProperty::getPropagated() const {
    return _get().propagated;
}

Uint32 CIMConstProperty::findQualifier(const CIMName& name) const {
    return _get().qualifiers.find(name);
}

CIMConstQualifier CIMConstProperty::getQualifier(Uint32 index) const {
    return _get().qualifiers[index];
}

Uint32 CIMConstProperty::getQualifierCount() const {
    return _get().qualifiers.size();
}

Boolean CIMConstProperty::identical(const CIMConstProperty& x) const {
    const CIMPropertyRep& a = _get();
    const CIMPropertyRep& b = x._get();
    return &a == &b ||
           (a.name == b.name && a.value == b.value &&
            a.referenceClassName == b.referenceClassName && a.qualifiers.identical(b.qualifiers) &&
            a.classOrigin == b.classOrigin && a.propagated == b.propagated);
}

CIMProperty CIMConstProperty::clone() const {
    CIMProperty property;
    property._rep = std::make_shared<CIMPropertyRep>(_get());
    return property;
}

Boolean CIMConstProperty::isUninitialized() const {
    return !_rep;
}

void CIMProperty::setName(const CIMName& name) {
    CIMPropertyRep& rep = _get();
    if (name.isNull())
        throw UninitializedObjectException();
    if (!rep.owners.isNone() && rep.name != name)
        throw Exception("a property keeps its name while an object has it");
    rep.name = name;
}

void CIMProperty::setValue(const CIMValue& value) {
    CIMPropertyRep& rep = _get();
    if (!value.typeCompatible(rep.value))
        throw TypeMismatchException();
    if (rep.arraySize != 0 && rep.arraySize != value.getArraySize())
        throw TypeMismatchException();
    _refuseReferenceArray(value);
    rep.value = value;
}

void CIMProperty::setClassOrigin(const CIMName& classOrigin) {
    _get().classOrigin = classOrigin;
}

void CIMProperty::setPropagated(Boolean propagated) {
    _get().propagated = propagated;
}

CIMProperty& CIMProperty::addQualifier(const CIMQualifier& x) {
    _get().qualifiers.add(x, "qualifier");
    return *this;
}

CIMQualifier CIMProperty::getQualifier(Uint32 index) {
    return _get().qualifiers[index];
}

void CIMProperty::removeQualifier(Uint32 index) {
    _get().qualifiers.remove(index);
}

}  // namespace Pegasus
