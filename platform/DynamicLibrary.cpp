// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DynamicLibrary.h"

#include <dlfcn.h>

namespace QZ {

DynamicLibrary::DynamicLibrary(const std::string& path)
    : _handle(::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (_handle != nullptr)
        return;
    const char* const error = ::dlerror();
    _error = error != nullptr ? error : "Cannot load " + path;
}

DynamicLibrary::~DynamicLibrary() {
    if (_handle != nullptr)
        ::dlclose(_handle);
}

void* DynamicLibrary::getSymbol(const char* name) const {
    return _handle != nullptr ? ::dlsym(_handle, name) : nullptr;
}

}  // namespace QZ
