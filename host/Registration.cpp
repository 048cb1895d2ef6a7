// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Registration.h"

#include <algorithm>

#include "Text.h"

namespace QZ {

namespace {

// Of PG_ProviderCapabilities.ProviderType.
constexpr std::uint64_t _instanceProviderType = 2;
constexpr std::uint64_t _indicationProviderType = 4;

const MofLiteral& _value(const MofDocument& document, const MofInstance& instance,
                         const char* property, MofLiteral::Kind kind) {
    const MofLiteral* value = instance.find(property);
    if (!value) {
        document.fail(instance.position,
                      "an instance of " + instance.className + " needs " + property);
    }
    if (value->kind != kind) {
        document.fail(value->position,
                      kind == MofLiteral::String ? "a string expected" : "an array expected");
    }
    return *value;
}

std::string _string(const MofDocument& document, const MofInstance& instance,
                    const char* property) {
    return _value(document, instance, property, MofLiteral::String).text;
}

}  // namespace

void Registration::add(const MofDocument& document) {
    for (const MofInstance& instance : document.instances) {
        if (sameName(instance.className, "PG_ProviderModule")) {
            _addModule(document, instance);
        } else if (sameName(instance.className, "PG_Provider")) {
            _addProvider(document, instance);
        } else if (sameName(instance.className, "PG_ProviderCapabilities")) {
            _addCapability(document, instance);
        }
    }
}

void Registration::add(const ProviderEntry& provider, const std::string& nameSpace,
                       const std::string& className) {
    Capability capability;
    capability.className = className;
    capability.namespaces = {nameSpace};
    capability.provider = _providers.size();
    _capabilities.push_back(std::move(capability));
    _providers.push_back(provider);
}

void Registration::_addModule(const MofDocument& document, const MofInstance& instance) {
    ProviderEntry entry;
    entry.module = _string(document, instance, "Name");
    entry.location = _string(document, instance, "Location");
    // Else the module could name any file as its library.
    if (entry.location.empty() || entry.location.find('/') != std::string::npos) {
        document.fail(instance.find("Location")->position,
                      "a library's name expected, without a folder");
    }
    _modules.push_back(std::move(entry));
}

void Registration::_addProvider(const MofDocument& document, const MofInstance& instance) {
    const std::string module = _string(document, instance, "ProviderModuleName");
    const auto found = std::find_if(_modules.begin(), _modules.end(),
                                    [&](const auto& entry) { return entry.module == module; });
    if (found == _modules.end()) {
        document.fail(instance.position, "module \"" + module + "\" is not registered");
    }
    ProviderEntry entry = *found;
    entry.name = _string(document, instance, "Name");
    _providers.push_back(std::move(entry));
}

void Registration::_addCapability(const MofDocument& document, const MofInstance& instance) {
    const std::string module = _string(document, instance, "ProviderModuleName");
    const std::string name = _string(document, instance, "ProviderName");
    const auto provider = std::find_if(
        _providers.begin(), _providers.end(),
        [&](const auto& entry) { return entry.module == module && entry.name == name; });
    if (provider == _providers.end()) {
        document.fail(instance.position,
                      "provider \"" + name + "\" of module \"" + module + "\" is not registered");
    }
    Capability capability;
    capability.className = _string(document, instance, "ClassName");
    capability.provider = std::size_t(provider - _providers.begin());
    for (const MofLiteral& element :
         _value(document, instance, "Namespaces", MofLiteral::Array).elements) {
        capability.namespaces.push_back(element.text);
    }
    const MofLiteral& types = _value(document, instance, "ProviderType", MofLiteral::Array);
    const auto has = [&types](std::uint64_t wanted) {
        return std::any_of(types.elements.begin(), types.elements.end(),
                           [wanted](const MofLiteral& type) { return type.number == wanted; });
    };
    capability.ofInstances = has(_instanceProviderType);
    capability.ofIndications = has(_indicationProviderType);
    _capabilities.push_back(std::move(capability));
}

template <class Wanted>
const ProviderEntry* Registration::_find(const std::string& nameSpace, const std::string& className,
                                         Wanted wanted) const {
    for (const Capability& capability : _capabilities) {
        if (wanted(capability) && sameName(capability.className, className) &&
            std::any_of(capability.namespaces.begin(), capability.namespaces.end(),
                        [&](const auto& name) { return sameName(name, nameSpace); })) {
            return &_providers[capability.provider];
        }
    }
    return nullptr;
}

const ProviderEntry* Registration::instanceProvider(const std::string& nameSpace,
                                                    const std::string& className) const {
    return _find(nameSpace, className,
                 [](const Capability& capability) { return capability.ofInstances; });
}

const ProviderEntry* Registration::indicationProvider(const std::string& nameSpace,
                                                      const std::string& className) const {
    return _find(nameSpace, className,
                 [](const Capability& capability) { return capability.ofIndications; });
}

}  // namespace QZ
