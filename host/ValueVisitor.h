// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMValue.h>
#include <tavqz/CimTypeTable.h>

#include <stdexcept>

namespace QZ {

// Hands the content of a value that is not null to visitor(const T&), or to
// visitor(const Pegasus::Array<T>&) where it is an array, and answers what that answers: the same
// type for every T of the CIM types.
template <class Visitor>
auto visitValue(const Pegasus::CIMValue& value, Visitor&& visitor)
    -> decltype(visitor(Pegasus::Boolean())) {
    using namespace Pegasus;
    switch (value.getType()) {
#define TAVQZ_X(TYPE, PASSED, CODE) \
    case CODE:                      \
        if (value.isArray()) {      \
            Array<TYPE> array;      \
            value.get(array);       \
            return visitor(array);  \
        } else {                    \
            TYPE scalar = TYPE();   \
            value.get(scalar);      \
            return visitor(scalar); \
        }
        TAVQZ_CIM_TYPES(TAVQZ_X)
#undef TAVQZ_X
    }
    throw std::logic_error("a value of a type that CIM does not have");
}

}  // namespace QZ
