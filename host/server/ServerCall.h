// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Exception.h>

#include <vector>

#include "CimServer.h"
#include "CimText.h"
#include "InstanceForm.h"

namespace QZ {

// One call on its way through the server, with what its namespace means.
struct CimServer::Call {
    const CimRequest& request;
    const InProcessServer::Caller& caller;
    CimResponseWriter& writer;
    const ClassRepository& classes;  // of the namespace
    bool isInterop;

    // The class and all below it, itself first.
    std::vector<const ClassDeclaration*> familyOf(const ClassDeclaration& top) const {
        std::vector<const ClassDeclaration*> family{&top};
        for (const ClassDeclaration* declared : classes.subclasses(top.name, true)) {
            family.push_back(declared);
        }
        return family;
    }

    // What is left out is left at what a client expects of instances: LocalOnly is deprecated, and
    // who does not name it wants every property.
    InstanceForm::Wishes wishes() const {
        InstanceForm::Wishes wishes;
        wishes.localOnly = request.localOnly.value_or(false);
        wishes.includeQualifiers = request.includeQualifiers.value_or(false);
        wishes.includeClassOrigin = request.includeClassOrigin.value_or(false);
        wishes.properties = request.propertyList;
        return wishes;
    }

    // What stands there is the server's own.
    void refuseInInterop() const {
        if (isInterop) {
            throw Pegasus::CIMException(Pegasus::CIM_ERR_NOT_SUPPORTED,
                                        request.nameSpace.getString());
        }
    }
};

}  // namespace QZ
