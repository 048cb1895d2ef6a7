// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Provider/CIMOMHandle.h>
#include <tavqz/CimOmHandleBackend.h>

#include <utility>

namespace Pegasus {

CIMOMHandle::CIMOMHandle() : _backend(CimOmHandleBackend::installed()) {}

CIMOMHandle::CIMOMHandle(std::shared_ptr<CimOmHandleBackend> backend)
    : _backend(backend ? std::move(backend) : std::make_shared<CimOmHandleBackend>()) {}

CIMOMHandle::CIMOMHandle(const CIMOMHandle& handle) = default;
CIMOMHandle& CIMOMHandle::operator=(const CIMOMHandle& handle) = default;
CIMOMHandle::~CIMOMHandle() = default;

CIMClass CIMOMHandle::getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                               const CIMName& className, Boolean localOnly,
                               Boolean includeQualifiers, Boolean includeClassOrigin,
                               const CIMPropertyList& propertyList) {
    return _backend->getClass(context, nameSpace, className, localOnly, includeQualifiers,
                              includeClassOrigin, propertyList);
}

CIMInstance CIMOMHandle::getInstance(const OperationContext& context,
                                     const CIMNamespaceName& nameSpace,
                                     const CIMObjectPath& instanceName, Boolean localOnly,
                                     Boolean includeQualifiers, Boolean includeClassOrigin,
                                     const CIMPropertyList& propertyList) {
    return _backend->getInstance(context, nameSpace, instanceName, localOnly, includeQualifiers,
                                 includeClassOrigin, propertyList);
}

Array<CIMInstance> CIMOMHandle::enumerateInstances(
    const OperationContext& context, const CIMNamespaceName& nameSpace, const CIMName& className,
    Boolean deepInheritance, Boolean localOnly, Boolean includeQualifiers,
    Boolean includeClassOrigin, const CIMPropertyList& propertyList) {
    return _backend->enumerateInstances(context, nameSpace, className, deepInheritance, localOnly,
                                        includeQualifiers, includeClassOrigin, propertyList);
}

Array<CIMObjectPath> CIMOMHandle::enumerateInstanceNames(const OperationContext& context,
                                                         const CIMNamespaceName& nameSpace,
                                                         const CIMName& className) {
    return _backend->enumerateInstanceNames(context, nameSpace, className);
}

CIMObjectPath CIMOMHandle::createInstance(const OperationContext& context,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMInstance& newInstance) {
    return _backend->createInstance(context, nameSpace, newInstance);
}

void CIMOMHandle::modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                                 const CIMPropertyList& propertyList) {
    _backend->modifyInstance(context, nameSpace, modifiedInstance, includeQualifiers, propertyList);
}

void CIMOMHandle::deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& instanceName) {
    _backend->deleteInstance(context, nameSpace, instanceName);
}

void CIMOMHandle::disallowProviderUnload() {
    _backend->disallowProviderUnload();
}

void CIMOMHandle::allowProviderUnload() {
    _backend->allowProviderUnload();
}

}  // namespace Pegasus
