// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include <memory>

#include "CIMPropertyRep.h"

namespace Pegasus {

// What handles to one class or instance share; the derived kinds say which it is.
class CIMObjectRep {
public:
    // Throws UninitializedObjectException if the name is null.
    explicit CIMObjectRep(const CIMName& className);
    CIMObjectRep(const CIMObjectRep& x) = default;
    CIMObjectRep& operator=(const CIMObjectRep&) = delete;
    virtual ~CIMObjectRep();

    virtual std::shared_ptr<CIMObjectRep> clone() const = 0;
    virtual Boolean identical(const CIMObjectRep& x) const;
    // What handles promise of their addProperty().
    virtual void addProperty(const CIMProperty& property);

    CIMObjectPath path;
    CimOwnedList<CIMQualifier> qualifiers;
    CimOwnedList<CIMProperty> properties;
};

class CIMInstanceRep : public CIMObjectRep {
public:
    using CIMObjectRep::CIMObjectRep;
    ~CIMInstanceRep() override;
    std::shared_ptr<CIMObjectRep> clone() const override;
};

class CIMClassRep : public CIMObjectRep {
public:
    using CIMObjectRep::CIMObjectRep;
    ~CIMClassRep() override;
    std::shared_ptr<CIMObjectRep> clone() const override;
    Boolean identical(const CIMObjectRep& x) const override;
    void addProperty(const CIMProperty& property) override;

    CIMName superClassName;
};

// Takes away what a client did not ask for, see CIMInstance::instanceFilter().
void filterObject(CIMObjectRep& object, Boolean includeQualifiers, Boolean includeClassOrigin,
                  const CIMPropertyList& propertyList);

}  // namespace Pegasus
