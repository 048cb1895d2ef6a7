// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "InProcessServer.h"

#include <Pegasus/Common/Exception.h>

#include <exception>
#include <memory>
#include <utility>

#include "CimText.h"
#include "ClassConversion.h"
#include "HandleBackend.h"
#include "ResponseCollector.h"

namespace QZ {

using namespace Pegasus;

namespace {

// What every server tells a provider. In this process nobody was authenticated, and no language
// asked for.
OperationContext _context() {
    OperationContext context;
    context.insert(IdentityContainer(String()));
    context.insert(AcceptLanguageListContainer(AcceptLanguageList()));
    context.insert(ContentLanguageListContainer(ContentLanguageList()));
    return context;
}

CIMObjectPath _inModel(const CIMObjectPath& path) {
    CIMObjectPath result = path;
    if (result.getNameSpace().isNull()) {
        result.setNameSpace(MODEL_NAMESPACE);
    }
    return result;
}

[[noreturn]] void _failed(const ProviderEntry& entry, const std::string& what) {
    throw CIMException(CIM_ERR_FAILED, make_String("provider " + entry.name + ": " + what));
}

}  // namespace

InProcessServer::InProcessServer(Schema schema, ProviderTable::Locator locate)
    : _schema(std::move(schema)),
      _handle(std::make_shared<HandleBackend>(*this)),
      _providers(std::move(locate), _handle) {}

const ProviderEntry& InProcessServer::_entryFor(const CIMObjectPath& path) const {
    const std::string nameSpace = make_string(path.getNameSpace().getString());
    const std::string name = make_string(path.getClassName().getString());
    if (!sameName(nameSpace, MODEL_NAMESPACE)) {
        throw CIMException(CIM_ERR_INVALID_NAMESPACE, path.getNameSpace().getString());
    }
    if (!_schema.classes.find(name)) {
        throw CIMException(CIM_ERR_INVALID_CLASS, path.getClassName().getString());
    }
    const ProviderEntry* entry = _schema.registration.instanceProvider(nameSpace, name);
    if (!entry) {
        throw CIMException(CIM_ERR_NOT_SUPPORTED, make_String("nobody serves the class " + name));
    }
    return *entry;
}

// Calls operation(provider, path) and turns whatever a provider may throw into a CIMException.
template <class Operation>
auto InProcessServer::_ask(const CIMObjectPath& path, Operation operation) {
    const CIMObjectPath full = _inModel(path);
    const ProviderEntry& entry = _entryFor(full);
    try {
        return operation(_providers.get(entry), full);
    } catch (const CIMException&) {
        throw;
    } catch (const Exception& exception) {
        _failed(entry, make_string(exception.getMessage()));
    } catch (const std::exception& exception) {
        _failed(entry, exception.what());
    } catch (...) {
        _failed(entry, "threw something that is no exception");
    }
}

std::vector<CIMInstance> InProcessServer::enumerateInstances(const CIMObjectPath& classPath) {
    return _ask(classPath, [](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        InstanceCollector collector;
        provider.enumerateInstances(_context(), path, false, false, CIMPropertyList(), collector);
        return collector.take();
    });
}

std::vector<CIMObjectPath> InProcessServer::enumerateInstanceNames(const CIMObjectPath& classPath) {
    return _ask(classPath, [](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        PathCollector collector;
        provider.enumerateInstanceNames(_context(), path, collector);
        return collector.take();
    });
}

CIMInstance InProcessServer::getInstance(const CIMObjectPath& instancePath) {
    return _ask(instancePath, [](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        InstanceCollector collector;
        provider.getInstance(_context(), path, false, false, CIMPropertyList(), collector);
        const std::vector<CIMInstance> found = collector.take();
        if (found.empty()) {
            throw CIMException(CIM_ERR_NOT_FOUND, path.toString());
        }
        return found.front();
    });
}

void InProcessServer::modifyInstance(const CIMInstance& modified,
                                     const CIMPropertyList& properties) {
    _ask(modified.getPath(), [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        Acknowledgement acknowledgement;
        provider.modifyInstance(_context(), path, modified, false, properties, acknowledgement);
        acknowledgement.check();
    });
}

CIMObjectPath InProcessServer::createInstance(const CIMInstance& created) {
    const CIMObjectPath classPath(String(), created.getPath().getNameSpace(),
                                  created.getClassName());
    return _ask(classPath, [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        PathCollector collector;
        provider.createInstance(_context(), path, created, collector);
        const std::vector<CIMObjectPath> found = collector.take();
        return found.empty() ? _keyPath(created, path) : found.front();
    });
}

void InProcessServer::deleteInstance(const CIMObjectPath& instancePath) {
    _ask(instancePath, [](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        Acknowledgement acknowledgement;
        provider.deleteInstance(_context(), path, acknowledgement);
        acknowledgement.check();
    });
}

// The path that the instance's keys make; `classPath` has its namespace.
CIMObjectPath InProcessServer::_keyPath(const CIMInstance& instance,
                                        const CIMObjectPath& classPath) const {
    const ClassDeclaration* declared =
        _schema.classes.find(make_string(classPath.getClassName().getString()));
    CIMObjectPath path = instance.buildPath(makeCimClass(*declared));
    path.setNameSpace(classPath.getNameSpace());
    return path;
}

}  // namespace QZ
