// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/Linkage.h>

namespace Pegasus {

// The refusals of a provider: CIMException with the status code that the name says. The destructors
// are out of line, so that host and module share the type information and catch each other's.

// CIM_ERR_FAILED, or what a derived exception says.
class PEGASUS_PROVIDER_LINKAGE CIMOperationFailedException : public CIMException {
public:
    CIMOperationFailedException(const String& message);
    CIMOperationFailedException(const CIMOperationFailedException& x) = default;
    CIMOperationFailedException& operator=(const CIMOperationFailedException& x) = default;
    ~CIMOperationFailedException() override;

protected:
    CIMOperationFailedException(CIMStatusCode code, const String& message);
};

class PEGASUS_PROVIDER_LINKAGE CIMAccessDeniedException : public CIMOperationFailedException {
public:
    CIMAccessDeniedException(const String& message);
    CIMAccessDeniedException(const CIMAccessDeniedException& x) = default;
    CIMAccessDeniedException& operator=(const CIMAccessDeniedException& x) = default;
    ~CIMAccessDeniedException() override;
};

class PEGASUS_PROVIDER_LINKAGE CIMInvalidParameterException : public CIMOperationFailedException {
public:
    CIMInvalidParameterException(const String& message);
    CIMInvalidParameterException(const CIMInvalidParameterException& x) = default;
    CIMInvalidParameterException& operator=(const CIMInvalidParameterException& x) = default;
    ~CIMInvalidParameterException() override;
};

class PEGASUS_PROVIDER_LINKAGE CIMObjectNotFoundException : public CIMOperationFailedException {
public:
    CIMObjectNotFoundException(const String& message);
    CIMObjectNotFoundException(const CIMObjectNotFoundException& x) = default;
    CIMObjectNotFoundException& operator=(const CIMObjectNotFoundException& x) = default;
    ~CIMObjectNotFoundException() override;
};

class PEGASUS_PROVIDER_LINKAGE CIMNotSupportedException : public CIMOperationFailedException {
public:
    CIMNotSupportedException(const String& message);
    CIMNotSupportedException(const CIMNotSupportedException& x) = default;
    CIMNotSupportedException& operator=(const CIMNotSupportedException& x) = default;
    ~CIMNotSupportedException() override;
};

class PEGASUS_PROVIDER_LINKAGE CIMObjectAlreadyExistsException
    : public CIMOperationFailedException {
public:
    CIMObjectAlreadyExistsException(const String& message);
    CIMObjectAlreadyExistsException(const CIMObjectAlreadyExistsException& x) = default;
    CIMObjectAlreadyExistsException& operator=(const CIMObjectAlreadyExistsException& x) = default;
    ~CIMObjectAlreadyExistsException() override;
};

class PEGASUS_PROVIDER_LINKAGE CIMPropertyNotFoundException : public CIMOperationFailedException {
public:
    CIMPropertyNotFoundException(const String& message);
    CIMPropertyNotFoundException(const CIMPropertyNotFoundException& x) = default;
    CIMPropertyNotFoundException& operator=(const CIMPropertyNotFoundException& x) = default;
    ~CIMPropertyNotFoundException() override;
};

class PEGASUS_PROVIDER_LINKAGE CIMMethodNotFoundException : public CIMOperationFailedException {
public:
    CIMMethodNotFoundException(const String& message);
    CIMMethodNotFoundException(const CIMMethodNotFoundException& x) = default;
    CIMMethodNotFoundException& operator=(const CIMMethodNotFoundException& x) = default;
    ~CIMMethodNotFoundException() override;
};

}  // namespace Pegasus
