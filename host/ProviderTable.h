// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Provider/CIMOMHandle.h>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "ProviderModule.h"
#include "Registration.h"

namespace QZ {

// The providers of this process. Each module is loaded and each provider made when it is first
// asked for, and kept until the table goes: then the providers are ended before their modules are
// unloaded. Any thread may ask.
class ProviderTable {
public:
    // The library's file of a module that is registered with that location.
    using Locator = std::function<std::string(const std::string& location)>;

    // The handle is what the providers are initialized with; it must outlive the table.
    ProviderTable(Locator locate, Pegasus::CIMOMHandle& handle, ModuleBinding binding);

    // Valid as long as the table. Throws as ProviderModule does; the next call then tries again.
    Pegasus::CIMInstanceProvider& get(const ProviderEntry& entry);

private:
    ProviderModule& _module(const ProviderEntry& entry);

    Locator _locate;
    Pegasus::CIMOMHandle& _handle;
    const ModuleBinding _binding;
    // A provider may ask the server, and so this table, while it is initialized.
    std::recursive_mutex _mutex;
    std::map<std::string, std::unique_ptr<ProviderModule>> _modules;            // by file
    std::map<std::pair<std::string, std::string>, ProviderPointer> _providers;  // by module, name
};

}  // namespace QZ
