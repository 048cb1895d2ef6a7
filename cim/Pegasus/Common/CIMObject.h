// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <tavqz/CimObjectHandle.h>

namespace Pegasus {

class CIMClass;
class CIMConstClass;
class CIMConstInstance;
class CIMInstance;
class CIMObject;

// A handle to a class or an instance, through which it is only read.
class PEGASUS_COMMON_LINKAGE CIMConstObject : public CimObjectReader {
public:
    CIMConstObject() = default;
    // These share the representation of `x`, and hold nothing where it does.
    CIMConstObject(const CIMConstInstance& x);
    CIMConstObject(const CIMConstClass& x);

    // A representation of its own, properties and qualifiers included.
    CIMObject clone() const;
    // Same path, qualifiers, properties in the same order, and for classes the same superclass.
    Boolean identical(const CIMConstObject& x) const;
    // False also where the handle holds nothing.
    Boolean isClass() const;
    Boolean isInstance() const;

protected:
    friend class CIMConstInstance;
    friend class CIMConstClass;
    explicit CIMConstObject(std::shared_ptr<CIMObjectRep> rep);
};

// The same, and it may be written to.
class PEGASUS_COMMON_LINKAGE CIMObject : public CimObjectEditor<CIMObject, CIMConstObject> {
public:
    CIMObject() = default;
    CIMObject(const CIMInstance& x);
    CIMObject(const CIMClass& x);

    // As CIMInstance::instanceFilter().
    void instanceFilter(Boolean includeQualifiers, Boolean includeClassOrigin,
                        const CIMPropertyList& propertyList);

private:
    friend class CIMConstObject;
    explicit CIMObject(std::shared_ptr<CIMObjectRep> rep);
};

extern template class PEGASUS_COMMON_LINKAGE Array<CIMObject>;

}  // namespace Pegasus
