// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Provider/CIMOMHandle.h>
#include <benchmark/benchmark.h>
#include <tavqz/CimOmHandleBackend.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>

#include "LoadedModule.h"
#include "ObjectText.h"

using namespace Pegasus;

namespace {

CIMInstance _instance(const char* className, const char* keyName, int number) {
    CIMInstance instance{CIMName(className)};
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName(keyName), CIMValue(String(std::to_string(number).c_str()))));
    instance.addProperty(CIMProperty(CIMName(keyName), CIMValue(keys[0].getValue())));
    instance.addProperty(CIMProperty(CIMName("Name"), CIMValue(String("A disk drive"))));
    instance.setPath(CIMObjectPath(String(), "root/tavqz", CIMName(className), keys));
    return instance;
}

// A server whose RAID has so many disks, and nothing else.
class Disks : public CimOmHandleBackend {
public:
    explicit Disks(int count) {
        // Half of them are recorded, too.
        for (int i = 0; i < count; ++i)
            _disks.append(_instance("TAVIRA_PhysicalDiskDrive", "FRU", count / 2 + i));
    }

    Array<CIMInstance> enumerateInstances(const OperationContext&, const CIMNamespaceName&,
                                          const CIMName& className, Boolean, Boolean, Boolean,
                                          Boolean, const CIMPropertyList&) override {
        return className == CIMName("TAVIRA_PhysicalDiskDrive") ? _disks : Array<CIMInstance>();
    }

private:
    Array<CIMInstance> _disks;
};

// So many units recorded, so many gathered.
void _enumerate(benchmark::State& state, int count) {
    const std::string file = LoadedModule::get().dataFolder() + "/fru.dat";
    std::ofstream store(file);
    for (int i = 0; i < count; ++i)
        store << QZ::composeInstance(_instance("TAVIRA_FRU", "FRUNumber", i));
    store.close();
    CIMInstanceProvider* const provider = loadProvider("FruProvider");
    CIMOMHandle handle(std::make_shared<Disks>(count));
    provider->initialize(handle);
    const CIMObjectPath path("root/tavqz:TAVIRA_FRU");
    unsigned units = 0;
    while (state.KeepRunning())
        units = LoadedModule::enumerate(*provider, path);
    provider->terminate();
    static_cast<void>(std::remove(file.c_str()));
    if (units != static_cast<unsigned>(count + count / 2))
        state.SkipWithError("the units are not as expected");
}

void EnumerateFewUnits(benchmark::State& state) {
    _enumerate(state, 1000);
}
BENCHMARK(EnumerateFewUnits)->Unit(benchmark::kMillisecond);

void EnumerateManyUnits(benchmark::State& state) {
    _enumerate(state, 10000);
}
BENCHMARK(EnumerateManyUnits)->Unit(benchmark::kMillisecond);

}  // namespace
