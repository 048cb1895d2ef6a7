// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CIMObjectRep.h"

namespace Pegasus {

CIMObjectRep::CIMObjectRep(const CIMName& className)
    : path(String(), CIMNamespaceName(), className) {
    if (className.isNull())
        throw UninitializedObjectException();
}

CIMObjectRep::~CIMObjectRep() = default;
CIMInstanceRep::~CIMInstanceRep() = default;
CIMClassRep::~CIMClassRep() = default;

Boolean CIMObjectRep::identical(const CIMObjectRep& x) const {
    return this == &x || (path.identical(x.path) && qualifiers.identical(x.qualifiers) &&
                          properties.identical(x.properties));
}

void CIMObjectRep::addProperty(const CIMProperty& property) {
    properties.add(property, "property");
}

std::shared_ptr<CIMObjectRep> CIMInstanceRep::clone() const {
    return std::make_shared<CIMInstanceRep>(*this);
}

std::shared_ptr<CIMObjectRep> CIMClassRep::clone() const {
    return std::make_shared<CIMClassRep>(*this);
}

Boolean CIMClassRep::identical(const CIMObjectRep& x) const {
    const auto* other = dynamic_cast<const CIMClassRep*>(&x);
    return other && CIMObjectRep::identical(x) && superClassName == other->superClassName;
}

void CIMClassRep::addProperty(const CIMProperty& property) {
    // An instance may leave open which class it refers to, a class may not.
    if (property.getType() == CIMTYPE_REFERENCE && property.getReferenceClassName().isNull())
        throw TypeMismatchException();
    CIMObjectRep::addProperty(property);
}

void filterObject(CIMObjectRep& object, Boolean includeQualifiers, Boolean includeClassOrigin,
                  const CIMPropertyList& propertyList) {
    if (!includeQualifiers)
        object.qualifiers.clear();
    // From the end, so that removing one moves none that is still to be looked at.
    for (Uint32 i = object.properties.size(); i-- > 0;) {
        CIMProperty property = object.properties[i];
        if (!propertyList.useThisProperty(property.getName())) {
            object.properties.remove(i);
            continue;
        }
        if (!includeClassOrigin)
            property.setClassOrigin(CIMName());
        if (!includeQualifiers) {
            for (Uint32 q = property.getQualifierCount(); q-- > 0;)
                property.removeQualifier(q);
        }
    }
}

}  // namespace Pegasus
