// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <tavqz/CimTypeTable.h>

#include <memory>

namespace Pegasus {

class CIMInstance;
class CIMObject;
class CIMObjectPath;

class CIMValueRep;

// A value of one CIM type, or an array of such values, or null of either.
//
// There is a constructor, set() and get() for each type of the table and for its Array. Mind that a
// character literal pointer becomes a Boolean: write CIMValue(String("text")).
//
// Objects and instances are cloned on the way in, and must not be uninitialized handles
// (UninitializedObjectException). get() of another type than the value's throws
// TypeMismatchException; get() of a null value leaves its argument as it was.
//
// A value: a copy is independent of its original. Different threads may use different CIMValues at
// the same time, copies of one another included.
class PEGASUS_COMMON_LINKAGE CIMValue {
public:
    // Null, of type boolean.
    CIMValue();
    // Null of that type; an arraySize other than 0 makes a null array whose declared size it is.
    CIMValue(CIMType type, Boolean isArray, Uint32 arraySize = 0);
    CIMValue(const CIMValue& x);
    ~CIMValue();
    CIMValue& operator=(const CIMValue& x);

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are types.
#define TAVQZ_X(TYPE, PASSED, CODE) \
    CIMValue(PASSED x);             \
    CIMValue(const Array<TYPE>& x); \
    void set(PASSED x);             \
    void set(const Array<TYPE>& x); \
    void get(TYPE& x) const;        \
    void get(Array<TYPE>& x) const;
    TAVQZ_CIM_TYPES(TAVQZ_X)
#undef TAVQZ_X
    // NOLINTEND(bugprone-macro-parentheses)

    void assign(const CIMValue& x);
    // Back to a null boolean.
    void clear();
    void setNullValue(CIMType type, Boolean isArray, Uint32 arraySize = 0);

    CIMType getType() const;
    Boolean isArray() const;
    Boolean isNull() const;
    Uint32 getArraySize() const;

    // Same type, both arrays or neither.
    Boolean typeCompatible(const CIMValue& x) const;
    // Also compatible, and both null or of the same value; points in time against intervals throw
    // TypeMismatchException.
    Boolean equal(const CIMValue& x) const;

    // Numbers in decimal, reals in the form 1.5000000000000000e+00, TRUE and FALSE, objects by
    // their path; each element of an array is followed by a blank, null is empty.
    String toString() const;

private:
    // Never changed once made, so that copies may share it; null for a null boolean.
    std::shared_ptr<const CIMValueRep> _rep;
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMValue& x, const CIMValue& y);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMValue& x, const CIMValue& y);

extern template class PEGASUS_COMMON_LINKAGE Array<CIMValue>;

}  // namespace Pegasus
