// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// What the library and the providers throw. Not a std::exception, as little as the server's own:
// who catches both writes two handlers.
class PEGASUS_COMMON_LINKAGE Exception {
public:
    Exception(const String& message);
    Exception(const Exception& exception);
    virtual ~Exception();
    Exception& operator=(const Exception& exception);

    virtual const String& getMessage() const;

protected:
    Exception();

private:
    String _message;
};

class PEGASUS_COMMON_LINKAGE IndexOutOfBoundsException : public Exception {
public:
    IndexOutOfBoundsException();
    ~IndexOutOfBoundsException() override;
};

class PEGASUS_COMMON_LINKAGE AlreadyExistsException : public Exception {
public:
    AlreadyExistsException(const String& message);
    ~AlreadyExistsException() override;
};

class PEGASUS_COMMON_LINKAGE InvalidNameException : public Exception {
public:
    InvalidNameException(const String& name);
    ~InvalidNameException() override;
};

class PEGASUS_COMMON_LINKAGE InvalidNamespaceNameException : public Exception {
public:
    InvalidNamespaceNameException(const String& name);
    ~InvalidNamespaceNameException() override;
};

// A handle that was made without an object was used.
class PEGASUS_COMMON_LINKAGE UninitializedObjectException : public Exception {
public:
    UninitializedObjectException();
    ~UninitializedObjectException() override;
};

class PEGASUS_COMMON_LINKAGE TypeMismatchException : public Exception {
public:
    TypeMismatchException();
    TypeMismatchException(const String& message);
    ~TypeMismatchException() override;
};

class PEGASUS_COMMON_LINKAGE DynamicCastFailedException : public Exception {
public:
    DynamicCastFailedException();
    ~DynamicCastFailedException() override;
};

class PEGASUS_COMMON_LINKAGE InvalidDateTimeFormatException : public Exception {
public:
    InvalidDateTimeFormatException();
    ~InvalidDateTimeFormatException() override;
};

class PEGASUS_COMMON_LINKAGE DateTimeOutOfRangeException : public Exception {
public:
    DateTimeOutOfRangeException(const String& message);
    ~DateTimeOutOfRangeException() override;
};

class PEGASUS_COMMON_LINKAGE MalformedObjectNameException : public Exception {
public:
    MalformedObjectNameException(const String& objectName);
    ~MalformedObjectNameException() override;
};

// How an operation fails toward the client: a status and a sentence for the person who reads it.
class PEGASUS_COMMON_LINKAGE CIMException : public Exception {
public:
    CIMException(CIMStatusCode code = CIM_ERR_SUCCESS, const String& message = String::EMPTY);
    CIMException(const CIMException& exception);
    ~CIMException() override;
    CIMException& operator=(const CIMException& exception);

    CIMStatusCode getCode() const;

private:
    CIMStatusCode _code;
};

}  // namespace Pegasus
