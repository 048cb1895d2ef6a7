// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HandleBackend.h"

#include "InProcessServer.h"

namespace QZ {

using namespace Pegasus;

namespace {

CIMObjectPath _classPath(const CIMNamespaceName& nameSpace, const CIMName& className) {
    return CIMObjectPath(String(), nameSpace, className);
}

CIMObjectPath _in(const CIMNamespaceName& nameSpace, CIMObjectPath path) {
    path.setNameSpace(nameSpace);
    return path;
}

}  // namespace

CIMInstance HandleBackend::getInstance(const OperationContext&, const CIMNamespaceName& nameSpace,
                                       const CIMObjectPath& instanceName, Boolean, Boolean, Boolean,
                                       const CIMPropertyList& propertyList) {
    CIMInstance instance = _server.getInstance(_in(nameSpace, instanceName)).clone();
    instance.instanceFilter(false, false, propertyList);
    return instance;
}

Array<CIMInstance> HandleBackend::enumerateInstances(const OperationContext&,
                                                     const CIMNamespaceName& nameSpace,
                                                     const CIMName& className, Boolean, Boolean,
                                                     Boolean, Boolean,
                                                     const CIMPropertyList& propertyList) {
    Array<CIMInstance> result;
    for (const CIMInstance& found : _server.enumerateInstances(_classPath(nameSpace, className))) {
        CIMInstance instance = found.clone();
        instance.instanceFilter(false, false, propertyList);
        result.append(instance);
    }
    return result;
}

Array<CIMObjectPath> HandleBackend::enumerateInstanceNames(const OperationContext&,
                                                           const CIMNamespaceName& nameSpace,
                                                           const CIMName& className) {
    const std::vector<CIMObjectPath> found =
        _server.enumerateInstanceNames(_classPath(nameSpace, className));
    return Array<CIMObjectPath>(found.data(), Uint32(found.size()));
}

void HandleBackend::modifyInstance(const OperationContext&, const CIMNamespaceName& nameSpace,
                                   const CIMInstance& modifiedInstance, Boolean,
                                   const CIMPropertyList& propertyList) {
    CIMInstance modified = modifiedInstance.clone();
    modified.setPath(_in(nameSpace, modifiedInstance.getPath()));
    _server.modifyInstance(modified, propertyList);
}

}  // namespace QZ
