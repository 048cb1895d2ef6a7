// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include <vector>

#include "Schema.h"

namespace QZ {

// What a client may ask of a CIM server, wherever that is. A path without a namespace is one of the
// model's. What the server refuses is thrown as CIMException, what keeps it from answering as
// Error.
class Operations {
public:
    virtual ~Operations() = default;

    // The classes that the server has, and who answers for them. Valid as long as this object.
    virtual const Schema& schema() = 0;

    virtual std::vector<Pegasus::CIMInstance> enumerateInstances(
        const Pegasus::CIMObjectPath& classPath) = 0;
    virtual std::vector<Pegasus::CIMObjectPath> enumerateInstanceNames(
        const Pegasus::CIMObjectPath& classPath) = 0;

    // CIM_ERR_NOT_FOUND where there is none.
    virtual Pegasus::CIMInstance getInstance(const Pegasus::CIMObjectPath& instancePath) = 0;

    // The instance carries its path. Instance and list reach the provider as they are.
    virtual void modifyInstance(const Pegasus::CIMInstance& modified,
                                const Pegasus::CIMPropertyList& properties) = 0;

    // Where the new instance is: with its class and keys at least.
    virtual Pegasus::CIMObjectPath createInstance(const Pegasus::CIMInstance& created) = 0;
    virtual void deleteInstance(const Pegasus::CIMObjectPath& instancePath) = 0;
};

}  // namespace QZ
