// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Provider/CIMIndicationProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include <functional>
#include <string>
#include <vector>

#include "Model.h"
#include "Operations.h"
#include "ProviderTable.h"

namespace QZ {

// A CIM server without a wire: finds the provider that is registered for a class, asks it, and
// answers with what it delivered.
//
// Whatever goes wrong is thrown as CIMException: what the provider throws of that type as it is,
// anything else it does wrong as CIM_ERR_FAILED, an unknown namespace or class as
// CIM_ERR_INVALID_NAMESPACE or CIM_ERR_INVALID_CLASS, a class that nobody serves as
// CIM_ERR_NOT_SUPPORTED. A path without a namespace is one of the model's. Any thread may call,
// also a provider through its CIMOMHandle while it is asked, up to 16 within one another.
//
// Each operation is there twice: with the caller's name and languages and for one class alone, what
// is found handed on as it comes, for the server behind a wire; and for the rest of this program.
class InProcessServer : public Operations {
public:
    // Who asks, and in which languages the answer is wanted.
    struct Caller {
        std::string user;  // empty: nobody was authenticated
        Pegasus::AcceptLanguageList languages;
    };
    using TakeInstance = std::function<void(const Pegasus::CIMInstance& instance)>;
    using TakePath = std::function<void(const Pegasus::CIMObjectPath& path)>;

    InProcessServer(Schema schema, ProviderTable::Locator locate);
    // Of the model in that folder, which is read as far as is needed. What is wrong there is thrown
    // by what needs it, as Schema::load does.
    InProcessServer(const std::string& schemaFolder, ProviderTable::Locator locate,
                    ModuleBinding binding);

    const Schema& schema() override { return _model.schema(); }

    // What `take` throws passes through.
    void enumerateInstances(const Caller& caller, const Pegasus::CIMObjectPath& classPath,
                            const Pegasus::CIMPropertyList& properties, const TakeInstance& take);
    void enumerateInstanceNames(const Caller& caller, const Pegasus::CIMObjectPath& classPath,
                                const TakePath& take);
    Pegasus::CIMInstance getInstance(const Caller& caller,
                                     const Pegasus::CIMObjectPath& instancePath,
                                     const Pegasus::CIMPropertyList& properties);
    void modifyInstance(const Caller& caller, const Pegasus::CIMInstance& modified,
                        bool includeQualifiers, const Pegasus::CIMPropertyList& properties);
    Pegasus::CIMObjectPath createInstance(const Caller& caller,
                                          const Pegasus::CIMInstance& created);
    void deleteInstance(const Caller& caller, const Pegasus::CIMObjectPath& instancePath);

    // Calls with the provider of indications that is registered so, which stays as long as this
    // server does. What the call throws is taken for the provider's.
    void askIndications(const ProviderEntry& entry,
                        const std::function<void(Pegasus::CIMIndicationProvider&)>& call);

    std::vector<Pegasus::CIMInstance> enumerateInstances(
        const Pegasus::CIMObjectPath& classPath) override;
    std::vector<Pegasus::CIMObjectPath> enumerateInstanceNames(
        const Pegasus::CIMObjectPath& classPath) override;

    Pegasus::CIMInstance getInstance(const Pegasus::CIMObjectPath& instancePath) override;
    void modifyInstance(const Pegasus::CIMInstance& modified,
                        const Pegasus::CIMPropertyList& properties) override;

    // Where the provider delivers no path, that of the instance's class and keys.
    Pegasus::CIMObjectPath createInstance(const Pegasus::CIMInstance& created) override;
    void deleteInstance(const Pegasus::CIMObjectPath& instancePath) override;

private:
    const ProviderEntry& _entryFor(const Pegasus::CIMObjectPath& path) const;
    Pegasus::CIMObjectPath _keyPath(const Pegasus::CIMInstance& instance,
                                    const Pegasus::CIMObjectPath& classPath) const;
    template <class Operation>
    auto _guard(const ProviderEntry& entry, Operation operation);
    template <class Operation>
    auto _ask(const Pegasus::CIMObjectPath& path, Operation operation);

    Model _model;
    Pegasus::CIMOMHandle _handle;
    ProviderTable _providers;
};

}  // namespace QZ
