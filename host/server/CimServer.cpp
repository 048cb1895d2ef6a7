// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimServer.h"

#include <Pegasus/Common/Exception.h>

#include "Assignment.h"
#include "CimText.h"
#include "ClassConversion.h"
#include "InstanceForm.h"
#include "ServerCall.h"
#include "XmlObjects.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Fills in what a path leaves open, the namespace and the name of a single key, and names the class
// as it is declared.
CIMObjectPath _completed(const CIMObjectPath& given, const CIMNamespaceName& nameSpace,
                         const ClassDeclaration& declared) {
    CIMObjectPath path = given;
    path.setNameSpace(nameSpace);
    path.setClassName(CIMName(make_String(declared.name)));
    Array<CIMKeyBinding> keys = path.getKeyBindings();
    if (keys.size() != 1 || !keys[0].getName().equal(CIMName(UNNAMED_KEY))) {
        return path;
    }
    const PropertyDeclaration* only = nullptr;
    for (const PropertyDeclaration& property : declared.properties) {
        if (property.isKey()) {
            if (only) {
                throw CIMException(CIM_ERR_INVALID_PARAMETER,
                                   make_String(declared.name + " has several keys: name them"));
            }
            only = &property;
        }
    }
    if (only) {
        keys[0].setName(CIMName(make_String(only->name)));
        path.setKeyBindings(keys);
    }
    return path;
}

bool _hasReplacedTogether(const ClassDeclaration& declared) {
    for (const PropertyDeclaration& property : declared.properties) {
        if (property.qualifiers.isTrue("TAVIRA_ReplacedTogether")) {
            return true;
        }
    }
    return false;
}

}  // namespace

CimServer::CimServer(InProcessServer& providers, PullContexts::Limits limits,
                     Subscriptions* subscriptions)
    : _providers(providers),
      _subscriptions(subscriptions),
      _interop(providers.schema()),
      _contexts(limits) {}

// Whether the instances of that class are subscriptions, in any namespace.
bool CimServer::_keeps(const CIMName& className) const {
    return _subscriptions && Subscriptions::serves(nameText(className));
}

const ClassDeclaration& CimServer::_declared(const Call& call, const CIMName& name,
                                             CIMStatusCode unknown) const {
    const ClassDeclaration* const declared = call.classes.find(nameText(name));
    if (!declared) {
        throw CIMException(unknown, name.getString());
    }
    return *declared;
}

CIMObjectPath CimServer::_path(const Call& call, const CIMObjectPath& given) const {
    return _completed(given, call.request.nameSpace,
                      _declared(call, given.getClassName(), CIM_ERR_INVALID_CLASS));
}

// The instances of the class and of all below it, each class by its own provider.
void CimServer::_visitInstances(const Call& call, const InProcessServer::TakeInstance& take) {
    const ClassDeclaration& top = _declared(call, call.request.className, CIM_ERR_INVALID_CLASS);
    for (const ClassDeclaration* declared : call.familyOf(top)) {
        if (_keeps(CIMName(make_String(declared->name)))) {
            for (const CIMInstance& instance :
                 _subscriptions->instances(call.request.nameSpace, declared->name)) {
                take(instance);
            }
        } else if (call.isInterop) {
            for (const CIMInstance& instance : _interop.instances(declared->name)) {
                take(instance);
            }
        } else if (_providers.schema().registration.instanceProvider(MODEL_NAMESPACE,
                                                                     declared->name)) {
            const CIMObjectPath path(String(), call.request.nameSpace,
                                     CIMName(make_String(declared->name)));
            _providers.enumerateInstances(call.caller, path, call.request.propertyList, take);
        }
    }
}

void CimServer::_visitPaths(const Call& call, const InProcessServer::TakePath& take) {
    const ClassDeclaration& top = _declared(call, call.request.className, CIM_ERR_INVALID_CLASS);
    for (const ClassDeclaration* declared : call.familyOf(top)) {
        if (_keeps(CIMName(make_String(declared->name)))) {
            for (const CIMInstance& instance :
                 _subscriptions->instances(call.request.nameSpace, declared->name)) {
                take(instance.getPath());
            }
        } else if (call.isInterop) {
            for (const CIMInstance& instance : _interop.instances(declared->name)) {
                take(instance.getPath());
            }
        } else if (_providers.schema().registration.instanceProvider(MODEL_NAMESPACE,
                                                                     declared->name)) {
            const CIMObjectPath path(String(), call.request.nameSpace,
                                     CIMName(make_String(declared->name)));
            _providers.enumerateInstanceNames(call.caller, path, take);
        }
    }
}

CIMInstance CimServer::_find(const Call& call, const CIMObjectPath& path) {
    if (_keeps(path.getClassName())) {
        return _subscriptions->get(path);
    }
    if (!call.isInterop) {
        const std::string name = nameText(path.getClassName());
        const Schema& schema = _providers.schema();
        if (schema.classes.find(name) &&
            !schema.registration.instanceProvider(MODEL_NAMESPACE, name)) {
            throw CIMException(CIM_ERR_NOT_FOUND, path.toString());
        }
        return _providers.getInstance(call.caller, path, call.request.propertyList);
    }
    for (const CIMInstance& instance : _interop.instances(nameText(path.getClassName()))) {
        if (instance.getPath().identical(path)) {
            return instance;
        }
    }
    throw CIMException(CIM_ERR_NOT_FOUND, path.toString());
}

void CimServer::_enumerateInstances(const Call& call) {
    const CimRequest& request = call.request;
    InstanceForm::Wishes wishes = call.wishes();
    if (!request.deepInheritance.value_or(true)) {
        wishes.shallow = &_declared(call, request.className, CIM_ERR_INVALID_CLASS);
    }
    const InstanceForm form(call.classes, wishes);
    CIMName lastClass;
    XmlForm xmlForm;
    _visitInstances(call, [&](const CIMInstance& instance) {
        if (lastClass.isNull() || !lastClass.equal(instance.getClassName())) {
            lastClass = instance.getClassName();
            xmlForm = form.form(lastClass);
        }
        call.writer.namedInstance(form.path(instance, request.nameSpace), form.prepared(instance),
                                  xmlForm);
    });
    call.writer.returns();
}

void CimServer::_enumerateInstanceNames(const Call& call) {
    _visitPaths(call, [&](const CIMObjectPath& path) {
        std::string xml;
        appendInstanceName(xml, path);
        call.writer.element(xml);
    });
    call.writer.returns();
}

void CimServer::_getInstance(const Call& call) {
    const CIMInstance found = _find(call, _path(call, call.request.instanceName));
    const InstanceForm form(call.classes, call.wishes());
    std::string xml;
    appendInstance(xml, form.prepared(found), form.form(found.getClassName()));
    call.writer.element(xml);
}

void CimServer::_modifyInstance(const Call& call) {
    CIMInstance modified = call.request.instance;
    if (_keeps(modified.getPath().getClassName())) {
        _subscriptions->modify(_path(call, modified.getPath()), modified,
                               call.request.propertyList);
        return;
    }
    call.refuseInInterop();
    modified.setPath(_path(call, modified.getPath()));
    _providers.modifyInstance(call.caller, modified, call.request.includeQualifiers.value_or(true),
                              call.request.propertyList);
}

void CimServer::_createInstance(const Call& call) {
    CIMInstance created = call.request.instance;
    CIMObjectPath path;
    if (_keeps(created.getClassName())) {
        path = _subscriptions->create(call.request.nameSpace, created);
    } else {
        call.refuseInInterop();
        const CIMName declared(
            make_String(_declared(call, created.getClassName(), CIM_ERR_INVALID_CLASS).name));
        created.setPath(CIMObjectPath(String(), call.request.nameSpace, created.getClassName()));
        path = _providers.createInstance(call.caller, created);
        if (path.getClassName().equal(declared)) {
            path.setClassName(declared);
        }
    }
    std::string xml;
    appendInstanceName(xml, path);
    call.writer.element(xml);
}

void CimServer::_deleteInstance(const Call& call) {
    if (_keeps(call.request.instanceName.getClassName())) {
        _subscriptions->remove(_path(call, call.request.instanceName));
        return;
    }
    call.refuseInInterop();
    _providers.deleteInstance(call.caller, _path(call, call.request.instanceName));
}

void CimServer::_getProperty(const Call& call) {
    const CIMObjectPath path = _path(call, call.request.instanceName);
    const ClassDeclaration& declared = _declared(call, path.getClassName(), CIM_ERR_INVALID_CLASS);
    const PropertyDeclaration* const property = declared.find(call.request.propertyName);
    if (!property) {
        throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, make_String(call.request.propertyName));
    }
    const CIMInstance found = _find(call, path);
    const Uint32 at = found.findProperty(CIMName(make_String(property->name)));
    std::string xml;
    if (at != PEG_NOT_FOUND) {
        appendValue(xml, found.getProperty(at).getValue());
    }
    if (!xml.empty()) {
        call.writer.element(xml);
    }
}

void CimServer::_setProperty(const Call& call) {
    const CIMObjectPath path = _path(call, call.request.instanceName);
    const bool isKept = _keeps(path.getClassName());
    if (!isKept) {
        call.refuseInInterop();
    }
    const ClassDeclaration& declared = _declared(call, path.getClassName(), CIM_ERR_INVALID_CLASS);
    const PropertyDeclaration* const property = declared.find(call.request.propertyName);
    if (!property) {
        throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, make_String(call.request.propertyName));
    }
    if (!property->isWritable()) {
        throw CIMException(CIM_ERR_NOT_SUPPORTED,
                           make_String(declared.name + "." + property->name + " is read only"));
    }
    Assignment assignment{property, CIMValue(property->type, property->isArray)};
    try {
        assignment.value = typedValue(call.request.newValue, property->type, property->isArray);
    } catch (const XmlValueError& error) {
        throw CIMException(CIM_ERR_TYPE_MISMATCH, make_String(error.what()));
    }
    CIMInstance current(path.getClassName());
    if (isKept) {
        current.addProperty(CIMProperty(CIMName(make_String(property->name)), assignment.value));
        _subscriptions->modify(path, current, CIMPropertyList());
        return;
    }
    if (_hasReplacedTogether(declared)) {
        // Else those that go with it would be emptied.
        current = _providers.getInstance(call.caller, path, CIMPropertyList());
    }
    current.setPath(path);
    const CIMInstance modified = modifiedInstance(declared, current, {assignment});
    _providers.modifyInstance(call.caller, modified, false, propertyNames(modified));
}

}  // namespace QZ
