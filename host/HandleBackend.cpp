// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HandleBackend.h"

#include <Pegasus/Common/Exception.h>

#include "CimText.h"
#include "ClassConversion.h"
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

// The class as it is declared, all of it.
CIMClass HandleBackend::getClass(const OperationContext&, const CIMNamespaceName& nameSpace,
                                 const CIMName& className, Boolean, Boolean, Boolean,
                                 const CIMPropertyList&) {
    const ClassRepository* const classes =
        _server.schema().find(make_string(nameSpace.getString()));
    if (!classes) {
        throw CIMException(CIM_ERR_INVALID_NAMESPACE, nameSpace.getString());
    }
    const ClassDeclaration* const declared = classes->find(make_string(className.getString()));
    if (!declared) {
        throw CIMException(CIM_ERR_NOT_FOUND, className.getString());
    }
    return makeCimClass(*declared);
}

CIMObjectPath HandleBackend::createInstance(const OperationContext&,
                                            const CIMNamespaceName& nameSpace,
                                            const CIMInstance& newInstance) {
    CIMInstance created = newInstance.clone();
    CIMObjectPath path = created.getPath();
    path.setClassName(created.getClassName());
    created.setPath(_in(nameSpace, path));
    return _server.createInstance(created);
}

void HandleBackend::deleteInstance(const OperationContext&, const CIMNamespaceName& nameSpace,
                                   const CIMObjectPath& instanceName) {
    _server.deleteInstance(_in(nameSpace, instanceName));
}

}  // namespace QZ
