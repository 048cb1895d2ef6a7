// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include <memory>
#include <string>

namespace QZ {

// Ends a provider: terminate() deletes it. What that throws is dropped.
struct TerminateProvider {
    void operator()(Pegasus::CIMInstanceProvider* provider) const noexcept;
};

using ProviderPointer = std::unique_ptr<Pegasus::CIMInstanceProvider, TerminateProvider>;

// When a module's calls are looked up: all as it is loaded, so that what it lacks is told then, or
// each when it is made first. That takes a third of the time where one thing is asked, and ends the
// process where something is lacking.
enum class ModuleBinding { Whole, AsCalled };

// A module's library, loaded with global symbols as a CIM server does, because the libraries that a
// module loads resolve symbols from it. Unloaded with this object, which must outlive its
// providers. Used by one thread at a time.
class ProviderModule {
public:
    // Throws Error where the library cannot be loaded or is no provider module.
    explicit ProviderModule(const std::string& file, ModuleBinding binding = ModuleBinding::Whole);
    ~ProviderModule();
    ProviderModule(const ProviderModule&) = delete;
    ProviderModule& operator=(const ProviderModule&) = delete;

    // A provider of instances, initialized with the handle, which must outlive it. Throws Error
    // where the module does not know the name, or makes something else of it; what the provider's
    // constructor or initialize() throws gets out.
    ProviderPointer createProvider(const std::string& name, Pegasus::CIMOMHandle& handle) const;

private:
    using Create = Pegasus::CIMProvider* (*)(const Pegasus::String&);

    std::string _file;
    void* _library;
    Create _create;
};

}  // namespace QZ
