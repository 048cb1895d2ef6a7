// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/String.h>
#include <tavqz/CimTypeTable.h>

#include <variant>

namespace Pegasus {

// What a CIMValue holds: a type and, unless it is null, one of that type's values or arrays.
class CIMValueRep {
public:
#define TAVQZ_X(TYPE, PASSED, CODE) , TYPE, Array<TYPE>
    using Data = std::variant<std::monostate TAVQZ_CIM_TYPES(TAVQZ_X)>;
#undef TAVQZ_X

    CIMType type = CIMTYPE_BOOLEAN;
    bool isArray = false;
    // Also of a null array: the size it was declared with.
    Uint32 arraySize = 0;
    Data data;

    bool isNull() const {
        return std::holds_alternative<std::monostate>(data);
    }
};

}  // namespace Pegasus
