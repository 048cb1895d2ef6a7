// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include <string>

#include "SmBiosBuilder.h"
#include "SmBiosDecoder.h"

namespace {

// A large server's table: 199 structures of the size of a memory device, and the end.
SmBiosBuilder _machine() {
    SmBiosBuilder firmware(SmBiosBuilder::EntryPoint::Version3, 3, 5);
    for (int i = 0; i < 199; ++i) {
        firmware.add(17, 0x54)
            .text(0x10, "DIMM " + std::to_string(i))
            .text(0x11, "Node 0 Channel 0")
            .text(0x17, "Example Memory")
            .text(0x18, "5A3C10" + std::to_string(i))
            .text(0x19, "Not Specified")
            .text(0x1A, "EM16G-3200R");
    }
    firmware.addEnd();
    return firmware;
}

// Aim: at most 20 us.
void SmBiosDecode200Structures(benchmark::State& state) {
    const SmBiosBuilder firmware = _machine();
    const std::string entryPoint = firmware.entryPoint();
    const std::string table = firmware.table();
    std::size_t structures = 0;
    while (state.KeepRunning()) {
        structures = QZ::decodeSmBios(entryPoint, table).tables.size();
        benchmark::DoNotOptimize(structures);
    }
    if (structures != 200) {
        state.SkipWithError("the table does not decode to 200 structures");
    }
}
BENCHMARK(SmBiosDecode200Structures)->Unit(benchmark::kMicrosecond);

// The list of tables is copied by whoever keeps a snapshot.
void SmBiosCopy200Tables(benchmark::State& state) {
    const SmBiosBuilder firmware = _machine();
    const auto contents = QZ::decodeSmBios(firmware.entryPoint(), firmware.table());
    while (state.KeepRunning()) {
        auto copy = contents.tables;
        benchmark::DoNotOptimize(copy.data());
    }
}
BENCHMARK(SmBiosCopy200Tables)->Unit(benchmark::kMicrosecond);

}  // namespace
