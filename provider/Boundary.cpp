// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Boundary.h"

#include "CimText.h"

namespace QZ {

Pegasus::CIMException asCimException(const std::exception& failure) {
    return Pegasus::CIMException(Pegasus::CIM_ERR_FAILED, make_String(std::string(failure.what())));
}

}  // namespace QZ
