// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

#include <memory>

namespace Pegasus {

class CIMProperty;
class CIMPropertyRep;
template <class Handle>
class CimOwnedList;

// A handle to a property through which it is only read. Sharing, emptiness and threads are as for
// CIMConstQualifier.
class PEGASUS_COMMON_LINKAGE CIMConstProperty {
public:
    CIMConstProperty() = default;

    // Throws UninitializedObjectException if `name` is null; TypeMismatchException if `arraySize`
    // is neither 0 nor the number of elements of `value`, for an array of references, and for a
    // `referenceClassName` with a value that is no reference.
    CIMConstProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize = 0,
                     const CIMName& referenceClassName = CIMName(),
                     const CIMName& classOrigin = CIMName(), Boolean propagated = false);

    const CIMName& getName() const;
    const CIMValue& getValue() const;
    CIMType getType() const;
    Boolean isArray() const;
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;
    const CIMName& getClassOrigin() const;
    Boolean getPropagated() const;

    // Position of the qualifier of that name, ignoring case, or PEG_NOT_FOUND.
    Uint32 findQualifier(const CIMName& name) const;
    // Throws IndexOutOfBoundsException.
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;

    // Same name, value, reference class, class origin, propagation and qualifiers.
    Boolean identical(const CIMConstProperty& x) const;
    // A representation of its own, qualifiers included.
    CIMProperty clone() const;
    Boolean isUninitialized() const;

protected:
    template <class Handle>
    friend class CimOwnedList;
    explicit CIMConstProperty(std::shared_ptr<CIMPropertyRep> rep);
    CIMPropertyRep& _get() const;

    std::shared_ptr<CIMPropertyRep> _rep;
};

// The same, and it may be written to.
class PEGASUS_COMMON_LINKAGE CIMProperty : public CIMConstProperty {
public:
    using CIMConstProperty::CIMConstProperty;

    // Throws UninitializedObjectException if `name` is null, Exception if the property belongs to
    // an object, which would no longer find it.
    void setName(const CIMName& name);
    // The type stays: throws TypeMismatchException if `value` has another, or is an array where
    // the property is none, or has not the fixed number of elements.
    void setValue(const CIMValue& value);
    void setClassOrigin(const CIMName& classOrigin);
    void setPropagated(Boolean propagated);

    // Throws AlreadyExistsException for a second of the same name, UninitializedObjectException for
    // a handle that holds nothing.
    CIMProperty& addQualifier(const CIMQualifier& x);
    using CIMConstProperty::getQualifier;
    CIMQualifier getQualifier(Uint32 index);
    void removeQualifier(Uint32 index);
};

extern template class PEGASUS_COMMON_LINKAGE Array<CIMProperty>;

}  // namespace Pegasus
