// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

#include "FileReplacement.h"
#include "LoadedModule.h"

using namespace Pegasus;

namespace {

struct FileIdentity {
    ino_t number = 0;
    timespec changed{};

    bool operator==(const FileIdentity& other) const {
        return number == other.number && changed.tv_sec == other.changed.tv_sec &&
               changed.tv_nsec == other.changed.tv_nsec;
    }
};

FileIdentity _identity(const std::string& path) {
    struct stat status {};
    stat(path.c_str(), &status);
    return {status.st_ino, status.st_ctim};
}

void _enumerate(benchmark::State& state, const char* className, unsigned expected) {
    LoadedModule& module = LoadedModule::get();
    const CIMObjectPath path{String(className)};
    module.enumerate(path);  // the first one writes the keys
    const std::string file = module.dataFolder() + "/asset.dat";
    const FileIdentity before = _identity(file);
    unsigned count = expected;
    while (state.KeepRunning()) {
        count = module.enumerate(path);
    }
    if (count != expected) {
        state.SkipWithError("the class does not answer as expected");
    } else if (!(_identity(file) == before)) {
        state.SkipWithError("an enumeration wrote the file");
    }
}

void EnumerateNothing(benchmark::State& state) {
    _enumerate(state, "TAVIRA_VigilPresent", 0);
}
BENCHMARK(EnumerateNothing)->Unit(benchmark::kMicrosecond);

void EnumerateLease(benchmark::State& state) {
    _enumerate(state, "TAVIRA_Lease", 1);
}
BENCHMARK(EnumerateLease)->Unit(benchmark::kMicrosecond);

class Acknowledgement : public ResponseHandler {
public:
    void processing() override {}
    void complete() override {}
};

void _modify(LoadedModule& module, Uint32 value) {
    CIMInstance modified(CIMName("TAVIRA_Lease"));
    modified.addProperty(CIMProperty(CIMName("Buyout"), CIMValue(value)));
    Acknowledgement handler;
    module.provider().modifyInstance(OperationContext(), CIMObjectPath("TAVIRA_Lease"), modified,
                                     false, CIMPropertyList(), handler);
}

double _seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// A modification beside the bare replacement of a file of that size in the same folder, in turns,
// so that both meet the same noise. The counter is the ratio of their times.
void ModifyLease(benchmark::State& state) {
    LoadedModule& module = LoadedModule::get();
    _modify(module, 0);
    std::ifstream file(module.dataFolder() + "/asset.dat");
    const std::string content{std::istreambuf_iterator<char>(file),
                              std::istreambuf_iterator<char>()};
    const std::string beside = module.dataFolder() + "/bare";
    Uint32 value = 0;
    double modifying = 0;
    double replacing = 0;
    while (state.KeepRunning()) {
        ++value;
        modifying += _seconds([&] { _modify(module, value); });
        replacing += _seconds([&] { QZ::replaceFile(beside, content); });
    }
    state.counters["ratio"] = modifying / replacing;
}
BENCHMARK(ModifyLease)->Unit(benchmark::kMicrosecond)->Iterations(300);

}  // namespace
