// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "XmlTree.h"

namespace QZ {

// A value that stands without its type: the texts of VALUE, or of the VALUEs of a VALUE.ARRAY.
struct CimUntypedValue {
    bool isNull = true;
    bool isArray = false;
    std::vector<std::optional<std::string>> texts;  // none: VALUE.NULL
};

// What identifies a call, for its answer.
struct CimCall {
    std::string messageId;
    std::string method;
    bool isIntrinsic = true;  // else a method of a class
};

// An intrinsic method call of DSP0200. What the client left out is absent here.
struct CimRequest {
    CimCall call;
    Pegasus::CIMNamespaceName nameSpace;

    Pegasus::CIMName className;
    Pegasus::CIMObjectPath instanceName;  // without namespace, as it is sent
    Pegasus::CIMInstance instance;        // a modified one with its path
    std::optional<bool> localOnly;
    std::optional<bool> deepInheritance;
    std::optional<bool> includeQualifiers;
    std::optional<bool> includeClassOrigin;
    Pegasus::CIMPropertyList propertyList;  // null: all properties
    std::string propertyName;
    std::string qualifierName;
    CimUntypedValue newValue;
    std::optional<std::string> enumerationContext;
    std::optional<std::uint32_t> maxObjectCount;
    std::optional<std::uint32_t> operationTimeout;  // seconds
    std::optional<bool> continueOnError;
    std::optional<std::string> filterQuery;
    std::optional<std::string> filterQueryLanguage;
};

// The request cannot be told from another, or is none: what HTTP is told (DSP0200, 7.3).
struct CimBadRequest {
    int status;            // of HTTP: 400 or 501
    const char* cimError;  // for the CIMError header: "request-not-valid"
    std::string reason;
};

// The call is refused, as an ERROR of its answer.
struct CimRefusal {
    CimCall call;
    int status;  // a CIM status
    std::string reason;
};

// Reads the CIM-XML of a request (DSP0201). Throws CimBadRequest or CimRefusal.
CimRequest decodeRequest(std::string_view body, const XmlLimits& limits);

}  // namespace QZ
