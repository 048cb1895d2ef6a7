// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "CimRequest.h"
#include "Error.h"

namespace QZ {

// What a server that was asked for answered with something else than CIM-XML, or to something else.
class NoCimAnswer : public Error {
public:
    using Error::Error;
};

// What an intrinsic method returned: of each kind as many as there were.
struct CimAnswer {
    std::vector<Pegasus::CIMInstance> instances;  // with their paths, where these were sent
    std::vector<Pegasus::CIMObjectPath> paths;
    std::vector<Pegasus::CIMClass> classes;
    std::vector<std::string> classNames;
    std::vector<CimUntypedValue> values;
    std::map<std::string, std::string> parameters;  // output parameters
};

// Reads the answer to that call. An ERROR is thrown as CIMException with its status and
// description, anything that is no answer to the call as NoCimAnswer.
CimAnswer decodeAnswer(std::string_view body, const CimCall& call);

}  // namespace QZ
