// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMQualifier.h>

#include <utility>

#include "CIMQualifierRep.h"

namespace Pegasus {

template class Array<CIMQualifier>;

CIMConstQualifier::CIMConstQualifier(const CIMName& name, const CIMValue& value,
                                     const CIMFlavor& flavor, Boolean propagated) {
    if (name.isNull())
        throw UninitializedObjectException();
    _rep = std::make_shared<CIMQualifierRep>();
    _rep->name = name;
    _rep->value = value;
    _rep->flavor = flavor;
    _rep->propagated = propagated;
}

CIMConstQualifier::CIMConstQualifier(std::shared_ptr<CIMQualifierRep> rep) : _rep(std::move(rep)) {}

CIMQualifierRep& CIMConstQualifier::_get() const {
    if (!_rep)
        throw UninitializedObjectException();
    return *_rep;
}

const CIMName& CIMConstQualifier::getName() const {
    return _get().name;
}

CIMType CIMConstQualifier::getType() const {
    return _get().value.getType();
}

Boolean CIMConstQualifier::isArray() const {
    return _get().value.isArray();
}

const CIMValue& CIMConstQualifier::getValue() const {
    return _get().value;
}

const CIMFlavor& CIMConstQualifier::getFlavor() const {
    return _get().flavor;
}

Uint32 CIMConstQualifier::getPropagated() const {
    return _get().propagated ? 1 : 0;
}

Boolean CIMConstQualifier::isUninitialized() const {
    return !_rep;
}

Boolean CIMConstQualifier::identical(const CIMConstQualifier& x) const {
    const CIMQualifierRep& a = _get();
    const CIMQualifierRep& b = x._get();
    return &a == &b || (a.name == b.name && a.value == b.value && a.flavor.equal(b.flavor) &&
                        a.propagated == b.propagated);
}

CIMQualifier CIMConstQualifier::clone() const {
    const CIMQualifierRep& rep = _get();
    return CIMQualifier(rep.name, rep.value, rep.flavor, rep.propagated);
}

void CIMQualifier::setName(const CIMName& name) {
    CIMQualifierRep& rep = _get();
    if (name.isNull())
        throw UninitializedObjectException();
    if (!rep.owners.isNone() && rep.name != name)
        throw Exception("a qualifier keeps its name while something has it");
    rep.name = name;
}

void CIMQualifier::setValue(const CIMValue& value) {
    _get().value = value;
}

void CIMQualifier::setFlavor(const CIMFlavor& flavor) {
    _get().flavor = flavor;
}

void CIMQualifier::unsetFlavor(const CIMFlavor& flavor) {
    _get().flavor.removeFlavor(flavor);
}

void CIMQualifier::setPropagated(Boolean propagated) {
    _get().propagated = propagated;
}

}  // namespace Pegasus
