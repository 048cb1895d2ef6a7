// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ProviderModule.h"

#include <dlfcn.h>

#include <algorithm>

#include "CimText.h"
#include "Error.h"
#include "NeededLibraries.h"

namespace QZ {

namespace {

std::string _loaderError() {
    const char* text = dlerror();
    return text ? text : "unknown error";
}

// Told before it is loaded: its CIM library has the names of ours, and the loader would mix the two
// while they start.
void _refuseOthers(const std::string& file) {
    const std::vector<std::string> needed = neededLibraries(file);
    const auto other = std::find_if(needed.begin(), needed.end(), [](const std::string& name) {
        return name.rfind("libpegcommon.so", 0) == 0 || name.rfind("libpegprovider.so", 0) == 0;
    });
    if (other != needed.end()) {
        throw Error("Cannot load the provider module " + file +
                    ": it was built for OpenPegasus, with " + *other +
                    "; build it without PEGASUS_ROOT for this program");
    }
}

void* _open(const std::string& file, ModuleBinding binding) {
    _refuseOthers(file);
    const int when = binding == ModuleBinding::Whole ? RTLD_NOW : RTLD_LAZY;
    return dlopen(file.c_str(), when | RTLD_GLOBAL);
}

}  // namespace

void TerminateProvider::operator()(Pegasus::CIMInstanceProvider* provider) const noexcept {
    try {
        provider->terminate();
    } catch (...) {
        // It is on its way out, and nobody is left to tell.
    }
}

ProviderModule::ProviderModule(const std::string& file, ModuleBinding binding)
    : _file(file), _library(_open(file, binding)), _create(nullptr) {
    if (!_library) {
        // The loader's text names the file.
        throw Error("Cannot load the provider module: " + _loaderError());
    }
    _create = reinterpret_cast<Create>(dlsym(_library, "PegasusCreateProvider"));
    if (!_create) {
        dlclose(_library);
        throw Error("Cannot load the provider module " + file +
                    ": it has no PegasusCreateProvider");
    }
}

ProviderModule::~ProviderModule() {
    dlclose(_library);
}

ProviderPointer ProviderModule::createProvider(const std::string& name,
                                               Pegasus::CIMOMHandle& handle) const {
    Pegasus::CIMProvider* const made = _create(make_String(name));
    if (!made) {
        throw Error("The provider module " + _file + " has no provider \"" + name + "\"");
    }
    ProviderPointer provider(dynamic_cast<Pegasus::CIMInstanceProvider*>(made));
    if (!provider) {
        made->terminate();
        throw Error("Provider \"" + name + "\" of " + _file + " is no provider of instances");
    }
    provider->initialize(handle);
    return provider;
}

}  // namespace QZ
