// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ProviderTable.h"

#include <utility>

namespace QZ {

ProviderTable::ProviderTable(Locator locate, Pegasus::CIMOMHandle& handle, ModuleBinding binding)
    : _locate(std::move(locate)), _handle(handle), _binding(binding) {}

Pegasus::CIMInstanceProvider& ProviderTable::get(const ProviderEntry& entry) {
    const std::lock_guard<std::recursive_mutex> lock(_mutex);
    const auto key = std::make_pair(entry.module, entry.name);
    const auto found = _providers.find(key);
    if (found != _providers.end()) {
        return *found->second;
    }
    ProviderPointer made = _module(entry).createProvider(entry.name, _handle);
    return *_providers.emplace(key, std::move(made)).first->second;
}

ProviderModule& ProviderTable::_module(const ProviderEntry& entry) {
    const std::string file = _locate(entry.location);
    auto& module = _modules[file];
    if (!module) {
        module = std::make_unique<ProviderModule>(file, _binding);
    }
    return *module;
}

}  // namespace QZ
