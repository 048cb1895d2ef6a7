// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Exception.h>

#include <exception>

namespace QZ {

// A failure inside as the server is to see it: CIM_ERR_FAILED with its sentence.
Pegasus::CIMException asCimException(const std::exception& failure);

// Runs an operation of the provider. Exceptions of the CIM interface pass; every other one
// becomes a CIM_ERR_FAILED, for what leaves a provider may end the server that hosts it.
template <class Operation>
void atBoundary(Operation operation) {
    try {
        operation();
    } catch (const std::exception& failure) {
        throw asCimException(failure);
    }
}

}  // namespace QZ
