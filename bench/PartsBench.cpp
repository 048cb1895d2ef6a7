// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "LoadedModule.h"

using namespace Pegasus;

namespace {

const std::string _machine = TAVQZ_SOURCE_DIR "/tests/machines/rack-server";

// The files that the probes read there, and those that they look for in vain.
std::vector<std::string> _probedFiles() {
    std::vector<std::string> files = {_machine + "/sys/firmware/dmi/tables/DMI",
                                      _machine + "/sys/firmware/dmi/tables/smbios_entry_point",
                                      _machine + "/proc/cpuinfo", _machine + "/etc/X11/XF86Config"};
    for (const char* disk : {"sda", "sdb", "sdc", "sdd"}) {
        files.push_back(_machine + "/dev/" + disk + "/12018000ff00");
        files.push_back(_machine + "/dev/" + disk + "/12000000ff00");
    }
    return files;
}

// What no program can do without: each file read in one piece, each disk looked for.
void _makeBareCalls(const std::vector<std::string>& files, const std::vector<std::string>& disks) {
    std::array<char, 65536> buffer;
    for (const std::string& file : files) {
        const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
        if (descriptor >= 0) {
            struct stat status {};
            (void)fstat(descriptor, &status);
            const ssize_t size = read(descriptor, buffer.data(), buffer.size());
            benchmark::DoNotOptimize(size);
            close(descriptor);
        }
    }
    for (const std::string& disk : disks) {
        struct stat status {};
        int found = stat(disk.c_str(), &status);
        benchmark::DoNotOptimize(found);
    }
}

// The parts of a machine beside the bare system calls that finding them takes, in turns, so that
// both meet the same noise. The counter is the ratio of their times.
void EnumerateParts(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    LoadedModule& module = LoadedModule::get();
    const CIMObjectPath path{String("TAVIRA_SerialNumberInformation")};
    const std::vector<std::string> files = _probedFiles();
    std::vector<std::string> disks = {_machine + "/proc/ide"};
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        disks.push_back(_machine + "/dev/sd" + letter);
    }
    setenv("TAVQZ_HOST_ROOT", _machine.c_str(), 1);
    unsigned count = module.enumerate(path);
    Clock::duration enumerating{};
    Clock::duration calling{};
    while (state.KeepRunning()) {
        const auto start = Clock::now();
        count = module.enumerate(path);
        const auto between = Clock::now();
        _makeBareCalls(files, disks);
        enumerating += between - start;
        calling += Clock::now() - between;
    }
    unsetenv("TAVQZ_HOST_ROOT");
    if (count != 16) {
        state.SkipWithError("the machine's parts are not as expected");
    }
    state.counters["ratio"] = std::chrono::duration<double>(enumerating).count() /
                              std::chrono::duration<double>(calling).count();
}
BENCHMARK(EnumerateParts)->Unit(benchmark::kMicrosecond);

}  // namespace
