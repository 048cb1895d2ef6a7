// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// What loading the module costs a server: each measurement is a process of its own, which has what
// a server has in any case (the CIM library) and then loads the module and makes its provider.

#include <benchmark/benchmark.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <stdexcept>

#include "LoadedModule.h"

namespace {

struct Cost {
    double milliseconds = 0;
    double megabytes = 0;
};

double _residentMegabytes() {
    long pages = 0;
    long resident = 0;
    std::ifstream file("/proc/self/statm");
    if (!(file >> pages >> resident)) {
        throw std::runtime_error("no /proc/self/statm");
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

Cost _load() {
    const double before = _residentMegabytes();
    const auto start = std::chrono::steady_clock::now();
    loadProvider();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    return {time.count(), _residentMegabytes() - before};
}

Cost _loadInAnotherProcess() {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        const Cost cost = _load();
        const bool written = write(ends[1], &cost, sizeof cost) == sizeof cost;
        _exit(written ? 0 : 1);
    }
    close(ends[1]);
    Cost cost;
    const bool isRead = read(ends[0], &cost, sizeof cost) == sizeof cost;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (!isRead) {
        throw std::runtime_error("the loading process failed");
    }
    return cost;
}

// Registered first: the module must not be in this process yet.
void LoadModule(benchmark::State& state) {
    Cost best{1e9, 1e9};
    while (state.KeepRunning()) {
        const Cost cost = _loadInAnotherProcess();
        best.milliseconds = std::min(best.milliseconds, cost.milliseconds);
        best.megabytes = std::min(best.megabytes, cost.megabytes);
    }
    state.counters["ms"] = best.milliseconds;
    state.counters["MB"] = best.megabytes;
}
BENCHMARK(LoadModule)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace
