// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Provider/CIMOMHandle.h>

#include <memory>

namespace Pegasus {

// The server behind a CIMOMHandle; a host derives from it, one per provider if it counts the
// unload hints of each. The default of every operation is to refuse it with CIM_ERR_NOT_SUPPORTED;
// unload hints are ignored. Called from any thread of a provider's; what it throws reaches the
// provider.
class PEGASUS_PROVIDER_LINKAGE CimOmHandleBackend {
public:
    CimOmHandleBackend();
    CimOmHandleBackend(const CimOmHandleBackend&) = delete;
    CimOmHandleBackend& operator=(const CimOmHandleBackend&) = delete;
    virtual ~CimOmHandleBackend();

    virtual CIMClass getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                              const CIMName& className, Boolean localOnly,
                              Boolean includeQualifiers, Boolean includeClassOrigin,
                              const CIMPropertyList& propertyList);

    virtual CIMInstance getInstance(const OperationContext& context,
                                    const CIMNamespaceName& nameSpace,
                                    const CIMObjectPath& instanceName, Boolean localOnly,
                                    Boolean includeQualifiers, Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList);

    virtual Array<CIMInstance> enumerateInstances(const OperationContext& context,
                                                  const CIMNamespaceName& nameSpace,
                                                  const CIMName& className, Boolean deepInheritance,
                                                  Boolean localOnly, Boolean includeQualifiers,
                                                  Boolean includeClassOrigin,
                                                  const CIMPropertyList& propertyList);

    virtual Array<CIMObjectPath> enumerateInstanceNames(const OperationContext& context,
                                                        const CIMNamespaceName& nameSpace,
                                                        const CIMName& className);

    virtual CIMObjectPath createInstance(const OperationContext& context,
                                         const CIMNamespaceName& nameSpace,
                                         const CIMInstance& newInstance);

    virtual void modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                                const CIMPropertyList& propertyList);

    virtual void deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& instanceName);

    virtual void disallowProviderUnload();
    virtual void allowProviderUnload();

    // Makes `backend` the one that default-constructed handles made from now on speak to; null
    // takes it away. Any thread may call.
    static void install(std::shared_ptr<CimOmHandleBackend> backend);

    // What is installed, or one that refuses everything; never null.
    static std::shared_ptr<CimOmHandleBackend> installed();
};

}  // namespace Pegasus
