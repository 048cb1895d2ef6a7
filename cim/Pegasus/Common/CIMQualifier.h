// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

#include <memory>

namespace Pegasus {

class CIMQualifier;
class CIMQualifierRep;
template <class Handle>
class CimOwnedList;

// A handle to a qualifier through which it is only read. Copies share one representation, whatever
// kind of handle they are; clone() makes another. Every call on a handle that holds nothing, save
// isUninitialized(), throws UninitializedObjectException. One representation is one thread's at a
// time as soon as somebody writes to it.
class PEGASUS_COMMON_LINKAGE CIMConstQualifier {
public:
    CIMConstQualifier() = default;
    // Throws UninitializedObjectException if `name` is null.
    CIMConstQualifier(const CIMName& name, const CIMValue& value,
                      const CIMFlavor& flavor = CIMFlavor(CIMFlavor::NONE),
                      Boolean propagated = false);

    const CIMName& getName() const;
    CIMType getType() const;
    Boolean isArray() const;
    const CIMValue& getValue() const;
    const CIMFlavor& getFlavor() const;
    Uint32 getPropagated() const;
    Boolean isUninitialized() const;
    // Same name, value, flavor and propagation.
    Boolean identical(const CIMConstQualifier& x) const;
    CIMQualifier clone() const;

protected:
    template <class Handle>
    friend class CimOwnedList;
    explicit CIMConstQualifier(std::shared_ptr<CIMQualifierRep> rep);
    CIMQualifierRep& _get() const;

    std::shared_ptr<CIMQualifierRep> _rep;
};

// The same, and it may be written to.
class PEGASUS_COMMON_LINKAGE CIMQualifier : public CIMConstQualifier {
public:
    using CIMConstQualifier::CIMConstQualifier;

    // Throws UninitializedObjectException if `name` is null, Exception if the qualifier belongs to
    // a property or an object, which would no longer find it.
    void setName(const CIMName& name);
    void setValue(const CIMValue& value);
    void setFlavor(const CIMFlavor& flavor);
    void unsetFlavor(const CIMFlavor& flavor);
    void setPropagated(Boolean propagated);
};

extern template class PEGASUS_COMMON_LINKAGE Array<CIMQualifier>;

}  // namespace Pegasus
