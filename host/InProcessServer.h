// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include <string>
#include <vector>

#include "ProviderTable.h"
#include "Schema.h"

namespace QZ {

// A CIM server without a wire: finds the provider that is registered for a class, asks it, and
// answers with what it delivered.
//
// Whatever goes wrong is thrown as CIMException: what the provider throws of that type as it is,
// anything else it does wrong as CIM_ERR_FAILED, an unknown namespace or class as
// CIM_ERR_INVALID_NAMESPACE or CIM_ERR_INVALID_CLASS, a class that nobody serves as
// CIM_ERR_NOT_SUPPORTED. A path without a namespace is one of the model's. Any thread may call,
// also a provider through its CIMOMHandle while it is asked.
class InProcessServer {
public:
    InProcessServer(Schema schema, ProviderTable::Locator locate);

    const Schema& schema() const { return _schema; }

    std::vector<Pegasus::CIMInstance> enumerateInstances(const Pegasus::CIMObjectPath& classPath);
    std::vector<Pegasus::CIMObjectPath> enumerateInstanceNames(
        const Pegasus::CIMObjectPath& classPath);

    // CIM_ERR_NOT_FOUND where the provider delivers none.
    Pegasus::CIMInstance getInstance(const Pegasus::CIMObjectPath& instancePath);

    // The instance carries its path. Instance and list reach the provider as they are.
    void modifyInstance(const Pegasus::CIMInstance& modified,
                        const Pegasus::CIMPropertyList& properties);

private:
    const ProviderEntry& _entryFor(const Pegasus::CIMObjectPath& path) const;
    template <class Operation>
    auto _ask(const Pegasus::CIMObjectPath& path, Operation operation);

    Schema _schema;
    Pegasus::CIMOMHandle _handle;
    ProviderTable _providers;
};

}  // namespace QZ
