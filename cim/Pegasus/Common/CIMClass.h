// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

namespace Pegasus {

class CIMClass;

// A handle to a class, through which it is only read. Methods are left out: no provider of
// instances or indications calls or serves one.
class PEGASUS_COMMON_LINKAGE CIMConstClass : public CimObjectReader {
public:
    CIMConstClass() = default;
    // A class without properties. Throws UninitializedObjectException if `className` is null.
    CIMConstClass(const CIMName& className, const CIMName& superClassName = CIMName());
    // Shares the representation of `x`; throws DynamicCastFailedException if that is no class.
    explicit CIMConstClass(const CIMConstObject& x);

    // Whether the qualifier of that name is there, Boolean and true.
    Boolean isAssociation() const;
    Boolean isAbstract() const;
    const CIMName& getSuperClassName() const;

    // The properties whose qualifier "Key" is true, in their order.
    void getKeyNames(Array<CIMName>& keyNames) const;
    Boolean hasKeys() const;

    // A representation of its own, properties and qualifiers included.
    CIMClass clone() const;
    // Same name, superclass, qualifiers, and properties in the same order.
    Boolean identical(const CIMConstClass& x) const;

protected:
    CIMInstance _buildInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                               const CIMPropertyList& propertyList) const;
    void _setSuperClassName(const CIMName& superClassName);
    explicit CIMConstClass(std::shared_ptr<CIMObjectRep> rep);
};

// The same, and it may be written to.
class PEGASUS_COMMON_LINKAGE CIMClass : public CimObjectEditor<CIMClass, CIMConstClass> {
public:
    CIMClass() = default;
    CIMClass(const CIMName& className, const CIMName& superClassName = CIMName());
    explicit CIMClass(const CIMObject& x);

    void setSuperClassName(const CIMName& superClassName);

    // An instance with the properties of the class and their default values, of which a list that
    // is not null takes a choice. Its path has the class name only. Nothing is shared with the
    // class.
    CIMInstance buildInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                              const CIMPropertyList& propertyList) const;

private:
    friend class CIMConstClass;
    explicit CIMClass(std::shared_ptr<CIMObjectRep> rep);
};

extern template class PEGASUS_COMMON_LINKAGE Array<CIMClass>;

}  // namespace Pegasus
