// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>

#include <stdexcept>

namespace QZ {

// A type of C++ as a value.
template <class T>
struct ObjectType {
    using Type = T;
};

// Calls visitor(ObjectType<T>()) for the T of a CIM type, and answers what that answers: the same
// type for every T.
template <class Visitor>
auto visitType(Pegasus::CIMType type, Visitor&& visitor) {
    using namespace Pegasus;
    switch (type) {
        case CIMTYPE_BOOLEAN:
            return visitor(ObjectType<Boolean>());
        case CIMTYPE_UINT8:
            return visitor(ObjectType<Uint8>());
        case CIMTYPE_SINT8:
            return visitor(ObjectType<Sint8>());
        case CIMTYPE_UINT16:
            return visitor(ObjectType<Uint16>());
        case CIMTYPE_SINT16:
            return visitor(ObjectType<Sint16>());
        case CIMTYPE_UINT32:
            return visitor(ObjectType<Uint32>());
        case CIMTYPE_SINT32:
            return visitor(ObjectType<Sint32>());
        case CIMTYPE_UINT64:
            return visitor(ObjectType<Uint64>());
        case CIMTYPE_SINT64:
            return visitor(ObjectType<Sint64>());
        case CIMTYPE_REAL32:
            return visitor(ObjectType<Real32>());
        case CIMTYPE_REAL64:
            return visitor(ObjectType<Real64>());
        case CIMTYPE_CHAR16:
            return visitor(ObjectType<Char16>());
        case CIMTYPE_STRING:
            return visitor(ObjectType<String>());
        case CIMTYPE_DATETIME:
            return visitor(ObjectType<CIMDateTime>());
        case CIMTYPE_REFERENCE:
            return visitor(ObjectType<CIMObjectPath>());
        case CIMTYPE_OBJECT:
            return visitor(ObjectType<CIMObject>());
        case CIMTYPE_INSTANCE:
            return visitor(ObjectType<CIMInstance>());
    }
    throw std::logic_error("a type that CIM does not have");
}

}  // namespace QZ
