// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "CimRequest.h"

namespace QZ {

// What a parameter of an intrinsic method holds, and where in a CimRequest it goes.
struct CimParameter {
    const char* name;
    void (*read)(const XmlElement& value, CimRequest& request);
    bool isRequired = false;
};

// An intrinsic method that the server has.
struct CimMethod {
    const char* name;
    const CimParameter* parameters;
    std::size_t parameterCount;
};

// By DSP0200's name, exactly; null where the server has no such method.
const CimMethod* findMethod(const std::string& name);

}  // namespace QZ
