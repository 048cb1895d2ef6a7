// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <tavqz/CimOmHandleBackend.h>

namespace QZ {

class InProcessServer;

// What providers reach through their CIMOMHandle: the operations of the server that asks them,
// which must outlive this object. What it does not have is refused with CIM_ERR_NOT_SUPPORTED.
class HandleBackend : public Pegasus::CimOmHandleBackend {
public:
    explicit HandleBackend(InProcessServer& server) : _server(server) {}

    Pegasus::CIMInstance getInstance(const Pegasus::OperationContext& context,
                                     const Pegasus::CIMNamespaceName& nameSpace,
                                     const Pegasus::CIMObjectPath& instanceName,
                                     Pegasus::Boolean localOnly, Pegasus::Boolean includeQualifiers,
                                     Pegasus::Boolean includeClassOrigin,
                                     const Pegasus::CIMPropertyList& propertyList) override;

    Pegasus::Array<Pegasus::CIMInstance> enumerateInstances(
        const Pegasus::OperationContext& context, const Pegasus::CIMNamespaceName& nameSpace,
        const Pegasus::CIMName& className, Pegasus::Boolean deepInheritance,
        Pegasus::Boolean localOnly, Pegasus::Boolean includeQualifiers,
        Pegasus::Boolean includeClassOrigin, const Pegasus::CIMPropertyList& propertyList) override;

    Pegasus::Array<Pegasus::CIMObjectPath> enumerateInstanceNames(
        const Pegasus::OperationContext& context, const Pegasus::CIMNamespaceName& nameSpace,
        const Pegasus::CIMName& className) override;

    void modifyInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMNamespaceName& nameSpace,
                        const Pegasus::CIMInstance& modifiedInstance,
                        Pegasus::Boolean includeQualifiers,
                        const Pegasus::CIMPropertyList& propertyList) override;

    Pegasus::CIMClass getClass(const Pegasus::OperationContext& context,
                               const Pegasus::CIMNamespaceName& nameSpace,
                               const Pegasus::CIMName& className, Pegasus::Boolean localOnly,
                               Pegasus::Boolean includeQualifiers,
                               Pegasus::Boolean includeClassOrigin,
                               const Pegasus::CIMPropertyList& propertyList) override;

    Pegasus::CIMObjectPath createInstance(const Pegasus::OperationContext& context,
                                          const Pegasus::CIMNamespaceName& nameSpace,
                                          const Pegasus::CIMInstance& newInstance) override;

    void deleteInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMNamespaceName& nameSpace,
                        const Pegasus::CIMObjectPath& instanceName) override;

private:
    InProcessServer& _server;
};

}  // namespace QZ
