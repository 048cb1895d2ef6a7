// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Provider/ProviderException.h>

namespace Pegasus {

CIMOperationFailedException::CIMOperationFailedException(const String& message)
    : CIMException(CIM_ERR_FAILED, message) {}

CIMOperationFailedException::CIMOperationFailedException(CIMStatusCode code, const String& message)
    : CIMException(code, message) {}

CIMOperationFailedException::~CIMOperationFailedException() = default;

CIMAccessDeniedException::CIMAccessDeniedException(const String& message)
    : CIMOperationFailedException(CIM_ERR_ACCESS_DENIED, message) {}

CIMAccessDeniedException::~CIMAccessDeniedException() = default;

CIMInvalidParameterException::CIMInvalidParameterException(const String& message)
    : CIMOperationFailedException(CIM_ERR_INVALID_PARAMETER, message) {}

CIMInvalidParameterException::~CIMInvalidParameterException() = default;

CIMObjectNotFoundException::CIMObjectNotFoundException(const String& message)
    : CIMOperationFailedException(CIM_ERR_NOT_FOUND, message) {}

CIMObjectNotFoundException::~CIMObjectNotFoundException() = default;

CIMNotSupportedException::CIMNotSupportedException(const String& message)
    : CIMOperationFailedException(CIM_ERR_NOT_SUPPORTED, message) {}

CIMNotSupportedException::~CIMNotSupportedException() = default;

CIMObjectAlreadyExistsException::CIMObjectAlreadyExistsException(const String& message)
    : CIMOperationFailedException(CIM_ERR_ALREADY_EXISTS, message) {}

CIMObjectAlreadyExistsException::~CIMObjectAlreadyExistsException() = default;

CIMPropertyNotFoundException::CIMPropertyNotFoundException(const String& message)
    : CIMOperationFailedException(CIM_ERR_NO_SUCH_PROPERTY, message) {}

CIMPropertyNotFoundException::~CIMPropertyNotFoundException() = default;

CIMMethodNotFoundException::CIMMethodNotFoundException(const String& message)
    : CIMOperationFailedException(CIM_ERR_METHOD_NOT_FOUND, message) {}

CIMMethodNotFoundException::~CIMMethodNotFoundException() = default;

}  // namespace Pegasus
