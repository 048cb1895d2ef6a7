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
#include "ResponseRelay.h"
#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

// What every server tells a provider.
OperationContext _context(const InProcessServer::Caller& caller) {
    OperationContext context;
    context.insert(IdentityContainer(make_String(caller.user)));
    context.insert(AcceptLanguageListContainer(caller.languages));
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

// As a provider delivered it, with a path as clients see it: in the namespace that was asked in
// where the provider does not say, and without the host, which they know.
CIMObjectPath _delivered(const CIMObjectPath& path) {
    CIMObjectPath result = _inModel(path);
    result.setHost(String());
    return result;
}

CIMInstance _delivered(const CIMInstance& instance) {
    const CIMObjectPath& path = instance.getPath();
    if (!path.getNameSpace().isNull() && path.getHost().size() == 0) {
        return instance;
    }
    CIMInstance result = instance.clone();
    result.setPath(_delivered(path));
    return result;
}

// How many providers ask one another on this thread.
thread_local int depth = 0;
constexpr int MAX_DEPTH = 16;

// One more, as long as it lasts: what asks itself without end would use up the stack.
class Deeper {
public:
    Deeper() {
        if (depth >= MAX_DEPTH) {
            throw CIMException(CIM_ERR_FAILED, make_String("providers ask one another, more than " +
                                                           std::to_string(MAX_DEPTH) + " deep"));
        }
        ++depth;
    }
    ~Deeper() { --depth; }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;
};

[[noreturn]] void _failed(const ProviderEntry& entry, const std::string& what) {
    throw CIMException(CIM_ERR_FAILED, make_String("provider " + entry.name + ": " + what));
}

}  // namespace

InProcessServer::InProcessServer(Schema schema, ProviderTable::Locator locate)
    : _model(std::move(schema)),
      _handle(std::make_shared<HandleBackend>(*this)),
      _providers(std::move(locate), _handle, ModuleBinding::Whole) {}

InProcessServer::InProcessServer(const std::string& schemaFolder, ProviderTable::Locator locate,
                                 ModuleBinding binding)
    : _model(schemaFolder),
      _handle(std::make_shared<HandleBackend>(*this)),
      _providers(std::move(locate), _handle, binding) {}

const ProviderEntry& InProcessServer::_entryFor(const CIMObjectPath& path) const {
    const std::string nameSpace = make_string(path.getNameSpace().getString());
    const std::string name = make_string(path.getClassName().getString());
    if (!sameName(nameSpace, MODEL_NAMESPACE)) {
        throw CIMException(CIM_ERR_INVALID_NAMESPACE, path.getNameSpace().getString());
    }
    const ProviderEntry* const entry = _model.instanceProvider(nameSpace, name);
    if (entry) {
        return *entry;
    }
    if (!_model.schema().classes.find(name)) {
        throw CIMException(CIM_ERR_INVALID_CLASS, path.getClassName().getString());
    }
    throw CIMException(CIM_ERR_NOT_SUPPORTED, make_String("nobody serves the class " + name));
}

// Calls operation(provider) and turns whatever a provider may throw into a CIMException.
template <class Operation>
auto InProcessServer::_guard(const ProviderEntry& entry, Operation operation) {
    const Deeper deeper;
    try {
        return operation(_providers.get(entry));
    } catch (const CIMException&) {
        throw;
    } catch (const RelayFailure& failure) {
        std::rethrow_exception(failure.cause);
    } catch (const Exception& exception) {
        _failed(entry, make_string(exception.getMessage()));
    } catch (const std::exception& exception) {
        _failed(entry, exception.what());
    } catch (...) {
        _failed(entry, "threw something that is no exception");
    }
}

template <class Operation>
auto InProcessServer::_ask(const CIMObjectPath& path, Operation operation) {
    const CIMObjectPath full = _inModel(path);
    return _guard(_entryFor(full),
                  [&](CIMInstanceProvider& provider) { return operation(provider, full); });
}

void InProcessServer::askIndications(const ProviderEntry& entry,
                                     const std::function<void(CIMIndicationProvider&)>& call) {
    _guard(entry, [&](CIMInstanceProvider& provider) {
        auto* const indications = dynamic_cast<CIMIndicationProvider*>(&provider);
        if (!indications) {
            _failed(entry, "is registered for indications and has none");
        }
        call(*indications);
    });
}

void InProcessServer::enumerateInstances(const Caller& caller, const CIMObjectPath& classPath,
                                         const CIMPropertyList& properties,
                                         const TakeInstance& take) {
    _ask(classPath, [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        InstanceRelay relay([&](const CIMInstance& instance) { take(_delivered(instance)); });
        relay.run([&] {
            provider.enumerateInstances(_context(caller), path, false, false, properties, relay);
        });
    });
}

void InProcessServer::enumerateInstanceNames(const Caller& caller, const CIMObjectPath& classPath,
                                             const TakePath& take) {
    _ask(classPath, [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        PathRelay relay([&](const CIMObjectPath& found) { take(_delivered(found)); });
        relay.run([&] { provider.enumerateInstanceNames(_context(caller), path, relay); });
    });
}

CIMInstance InProcessServer::getInstance(const Caller& caller, const CIMObjectPath& instancePath,
                                         const CIMPropertyList& properties) {
    return _ask(instancePath, [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        CIMInstance found;
        InstanceRelay relay([&](const CIMInstance& instance) {
            if (found.isUninitialized()) {
                found = _delivered(instance);
            }
        });
        relay.run(
            [&] { provider.getInstance(_context(caller), path, false, false, properties, relay); });
        if (found.isUninitialized()) {
            throw CIMException(CIM_ERR_NOT_FOUND, path.toString());
        }
        return found;
    });
}

void InProcessServer::modifyInstance(const Caller& caller, const CIMInstance& modified,
                                     bool includeQualifiers, const CIMPropertyList& properties) {
    _ask(modified.getPath(), [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        Acknowledgement acknowledgement;
        provider.modifyInstance(_context(caller), path, modified, includeQualifiers, properties,
                                acknowledgement);
        acknowledgement.check();
    });
}

CIMObjectPath InProcessServer::createInstance(const Caller& caller, const CIMInstance& created) {
    const CIMObjectPath classPath(String(), created.getPath().getNameSpace(),
                                  created.getClassName());
    return _ask(classPath, [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        CIMObjectPath found;
        PathRelay relay([&](const CIMObjectPath& delivered) { found = delivered; });
        relay.run([&] { provider.createInstance(_context(caller), path, created, relay); });
        return found.getClassName().isNull() ? _keyPath(created, path) : found;
    });
}

void InProcessServer::deleteInstance(const Caller& caller, const CIMObjectPath& instancePath) {
    _ask(instancePath, [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
        Acknowledgement acknowledgement;
        provider.deleteInstance(_context(caller), path, acknowledgement);
        acknowledgement.check();
    });
}

std::vector<CIMInstance> InProcessServer::enumerateInstances(const CIMObjectPath& classPath) {
    std::vector<CIMInstance> found;
    enumerateInstances(Caller(), classPath, CIMPropertyList(),
                       [&](const CIMInstance& instance) { found.push_back(instance); });
    return found;
}

std::vector<CIMObjectPath> InProcessServer::enumerateInstanceNames(const CIMObjectPath& classPath) {
    std::vector<CIMObjectPath> found;
    enumerateInstanceNames(Caller(), classPath,
                           [&](const CIMObjectPath& path) { found.push_back(path); });
    return found;
}

CIMInstance InProcessServer::getInstance(const CIMObjectPath& instancePath) {
    return getInstance(Caller(), instancePath, CIMPropertyList());
}

void InProcessServer::modifyInstance(const CIMInstance& modified,
                                     const CIMPropertyList& properties) {
    modifyInstance(Caller(), modified, false, properties);
}

CIMObjectPath InProcessServer::createInstance(const CIMInstance& created) {
    return createInstance(Caller(), created);
}

void InProcessServer::deleteInstance(const CIMObjectPath& instancePath) {
    deleteInstance(Caller(), instancePath);
}

// The path that the instance's keys make; `classPath` has its namespace.
CIMObjectPath InProcessServer::_keyPath(const CIMInstance& instance,
                                        const CIMObjectPath& classPath) const {
    const ClassDeclaration* declared =
        _model.schema().classes.find(make_string(classPath.getClassName().getString()));
    if (!declared) {
        return classPath;  // somebody serves a class that nobody declared
    }
    CIMObjectPath path = instance.buildPath(makeCimClass(*declared));
    path.setNameSpace(classPath.getNameSpace());
    return path;
}

}  // namespace QZ
