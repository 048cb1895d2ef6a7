// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

// The destructors stand here, not in the header: each is the function that ties its class's type
// information to this library.

Exception::Exception() = default;
Exception::Exception(const String& message) : _message(message) {}
Exception::Exception(const Exception& exception) = default;
Exception::~Exception() = default;
Exception& Exception::operator=(const Exception& exception) = default;

const String& Exception::getMessage() const {
    return _message;
}

IndexOutOfBoundsException::IndexOutOfBoundsException() : Exception("index out of bounds") {}
IndexOutOfBoundsException::~IndexOutOfBoundsException() = default;

AlreadyExistsException::AlreadyExistsException(const String& message)
    : Exception("already exists: " + message) {}
AlreadyExistsException::~AlreadyExistsException() = default;

InvalidNameException::InvalidNameException(const String& name)
    : Exception("not a CIM name: \"" + name + "\"") {}
InvalidNameException::~InvalidNameException() = default;

InvalidNamespaceNameException::InvalidNamespaceNameException(const String& name)
    : Exception("not a CIM namespace name: \"" + name + "\"") {}
InvalidNamespaceNameException::~InvalidNamespaceNameException() = default;

UninitializedObjectException::UninitializedObjectException()
    : Exception("the handle holds no object") {}
UninitializedObjectException::~UninitializedObjectException() = default;

TypeMismatchException::TypeMismatchException() : Exception("type mismatch") {}
TypeMismatchException::TypeMismatchException(const String& message)
    : Exception("type mismatch: " + message) {}
TypeMismatchException::~TypeMismatchException() = default;

DynamicCastFailedException::DynamicCastFailedException()
    : Exception("the object is of another kind") {}
DynamicCastFailedException::~DynamicCastFailedException() = default;

InvalidDateTimeFormatException::InvalidDateTimeFormatException()
    : Exception("not a CIM datetime text") {}
InvalidDateTimeFormatException::~InvalidDateTimeFormatException() = default;

DateTimeOutOfRangeException::DateTimeOutOfRangeException(const String& message)
    : Exception("datetime out of range: " + message) {}
DateTimeOutOfRangeException::~DateTimeOutOfRangeException() = default;

MalformedObjectNameException::MalformedObjectNameException(const String& objectName)
    : Exception("malformed object name: \"" + objectName + "\"") {}
MalformedObjectNameException::~MalformedObjectNameException() = default;

CIMException::CIMException(CIMStatusCode code, const String& message)
    : Exception(message), _code(code) {}
CIMException::CIMException(const CIMException& exception) = default;
CIMException::~CIMException() = default;
CIMException& CIMException::operator=(const CIMException& exception) = default;

CIMStatusCode CIMException::getCode() const {
    return _code;
}

}  // namespace Pegasus
