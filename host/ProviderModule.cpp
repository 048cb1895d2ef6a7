// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ProviderModule.h"

#include <dlfcn.h>

#include "CimText.h"
#include "Error.h"

namespace QZ {

namespace {

std::string _loaderError() {
    const char* text = dlerror();
    return text ? text : "unknown error";
}

}  // namespace

void TerminateProvider::operator()(Pegasus::CIMInstanceProvider* provider) const noexcept {
    try {
        provider->terminate();
    } catch (...) {
        // It is on its way out, and nobody is left to tell.
    }
}

ProviderModule::ProviderModule(const std::string& file)
    : _file(file), _library(dlopen(file.c_str(), RTLD_NOW | RTLD_GLOBAL)), _create(nullptr) {
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
