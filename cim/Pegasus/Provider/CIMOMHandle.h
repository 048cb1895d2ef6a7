// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/Linkage.h>

#include <memory>

namespace Pegasus {

class CimOmHandleBackend;

// A provider's way back to the server: the operations of a client, asked by the provider. Copies
// share the server that answers; any thread may call. What the server refuses is thrown as
// CIMException; where no server is behind the handle, every operation is refused with
// CIM_ERR_NOT_SUPPORTED.
class PEGASUS_PROVIDER_LINKAGE CIMOMHandle {
public:
    // A handle to the server that this process has, see tavqz/CimOmHandleBackend.h.
    CIMOMHandle();
    // A handle to this one; null stands for none.
    explicit CIMOMHandle(std::shared_ptr<CimOmHandleBackend> backend);
    // Copied, never moved from: there is always something behind a handle.
    CIMOMHandle(const CIMOMHandle& handle);
    CIMOMHandle& operator=(const CIMOMHandle& handle);
    ~CIMOMHandle();

    CIMClass getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                      const CIMName& className, Boolean localOnly, Boolean includeQualifiers,
                      Boolean includeClassOrigin, const CIMPropertyList& propertyList);

    CIMInstance getInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                            const CIMObjectPath& instanceName, Boolean localOnly,
                            Boolean includeQualifiers, Boolean includeClassOrigin,
                            const CIMPropertyList& propertyList);

    Array<CIMInstance> enumerateInstances(const OperationContext& context,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMName& className, Boolean deepInheritance,
                                          Boolean localOnly, Boolean includeQualifiers,
                                          Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList);

    Array<CIMObjectPath> enumerateInstanceNames(const OperationContext& context,
                                                const CIMNamespaceName& nameSpace,
                                                const CIMName& className);

    CIMObjectPath createInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMInstance& newInstance);

    void modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                        const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                        const CIMPropertyList& propertyList);

    void deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                        const CIMObjectPath& instanceName);

    // A provider that is needed though nobody asks it anything, for example because a thread of
    // it waits, says so here. The calls count: one allow takes back one disallow.
    void disallowProviderUnload();
    void allowProviderUnload();

private:
    std::shared_ptr<CimOmHandleBackend> _backend;
};

}  // namespace Pegasus
