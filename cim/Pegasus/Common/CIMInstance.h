// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

namespace Pegasus {

class CIMConstClass;
class CIMInstance;

// A handle to an instance, through which it is only read.
class PEGASUS_COMMON_LINKAGE CIMConstInstance : public CimObjectReader {
public:
    CIMConstInstance() = default;
    // An instance without properties. Throws UninitializedObjectException if the name is null.
    CIMConstInstance(const CIMName& className);
    // Shares the representation of `x`; throws DynamicCastFailedException if that is no instance.
    explicit CIMConstInstance(const CIMConstObject& x);

    // The path made of the class name of the instance and the values of those properties that
    // `cimClass` says are keys; host and namespace are left empty. Throws Exception if the
    // instance lacks one of them.
    CIMObjectPath buildPath(const CIMConstClass& cimClass) const;
    // A representation of its own, properties and qualifiers included.
    CIMInstance clone() const;
    // Same path, qualifiers, and properties in the same order.
    Boolean identical(const CIMConstInstance& x) const;

protected:
    friend class CIMConstClass;
    explicit CIMConstInstance(std::shared_ptr<CIMObjectRep> rep);
};

// The same, and it may be written to.
class PEGASUS_COMMON_LINKAGE CIMInstance : public CimObjectEditor<CIMInstance, CIMConstInstance> {
public:
    CIMInstance() = default;
    CIMInstance(const CIMName& className);
    explicit CIMInstance(const CIMObject& x);

    // Takes away what a client did not ask for: qualifiers, class origins, and properties that
    // are not in a list that is not null. The properties themselves change, so every handle that
    // shares them sees it.
    void instanceFilter(Boolean includeQualifiers, Boolean includeClassOrigin,
                        const CIMPropertyList& propertyList);

private:
    friend class CIMConstInstance;
    friend class CIMConstClass;
    explicit CIMInstance(std::shared_ptr<CIMObjectRep> rep);
};

extern template class PEGASUS_COMMON_LINKAGE Array<CIMInstance>;

}  // namespace Pegasus
