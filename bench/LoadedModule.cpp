// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LoadedModule.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

using namespace Pegasus;

namespace {

class Counter : public InstanceResponseHandler {
public:
    void processing() override {}
    void complete() override {}
    void deliver(const CIMInstance&) override { ++count; }
    void deliver(const Array<CIMInstance>& instances) override { count += instances.size(); }

    unsigned count = 0;
};

}  // namespace

std::string modulePath() {
    return std::string(TAVQZ_BINARY_DIR) + "/lib/libAssetIDProvider.so";
}

CIMInstanceProvider* loadProvider(const char* name) {
    void* handle = dlopen(modulePath().c_str(), RTLD_NOW | RTLD_GLOBAL);
    if (handle == nullptr) {
        throw std::runtime_error(dlerror());
    }
    using Create = CIMProvider* (*)(const String&);
    const auto create = reinterpret_cast<Create>(dlsym(handle, "PegasusCreateProvider"));
    auto* provider = create == nullptr ? nullptr : dynamic_cast<CIMInstanceProvider*>(create(name));
    if (provider == nullptr) {
        throw std::runtime_error("the module makes no provider");
    }
    return provider;
}

LoadedModule& LoadedModule::get() {
    static LoadedModule module;
    return module;
}

LoadedModule::LoadedModule() {
    std::string folder = std::string(TAVQZ_BINARY_DIR) + "/bench-data-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) {
        throw std::runtime_error("no folder for the benchmarks' data");
    }
    _dataFolder = folder;
    setenv("TAVQZ_DATA_DIR", folder.c_str(), 1);
    if (std::atexit([] { std::filesystem::remove_all(get().dataFolder()); }) != 0) {
        throw std::runtime_error("the benchmarks' data could not be removed at the end");
    }
    _provider = loadProvider();
}

unsigned LoadedModule::enumerate(const CIMObjectPath& classPath) {
    return enumerate(*_provider, classPath);
}

unsigned LoadedModule::enumerate(CIMInstanceProvider& provider, const CIMObjectPath& classPath) {
    Counter counter;
    provider.enumerateInstances(OperationContext(), classPath, false, false, CIMPropertyList(),
                                counter);
    return counter.count;
}
