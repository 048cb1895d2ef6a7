// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Exception.h>

// Throws the n-th kind of exception, as a provider would in the host's call.
extern "C" PEGASUS_EXPORT void throwException(int kind) {
    using namespace Pegasus;
    switch (kind) {
        case 0:
            throw CIMException(CIM_ERR_NOT_FOUND, "no such lease");
        case 1:
            throw TypeMismatchException();
        case 2:
            throw InvalidNameException("1a");
        default:
            throw IndexOutOfBoundsException();
    }
}
