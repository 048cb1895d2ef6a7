// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

// What cDeviceLib's queries fill. The offsets are the interface, on every architecture. Numbers
// have the machine's byte order. The module hands in records of zeros.

// Texts of a fixed number of characters: shorter ones are padded with blanks, for each character
// is shown, and what stands behind them is not looked at.
struct MachineLevelRecord {
    char uuid[33];         // 32 characters
    char machineType[5];   // 4
    char machineModel[4];  // 3
    char serialNumber[8];  // 7
};
static_assert(offsetof(MachineLevelRecord, uuid) == 0 &&
              offsetof(MachineLevelRecord, machineType) == 33 &&
              offsetof(MachineLevelRecord, machineModel) == 38 &&
              offsetof(MachineLevelRecord, serialNumber) == 42 && sizeof(MachineLevelRecord) == 50);

// The texts end at a NUL, at the latest where their room does.
struct PostBiosRecord {
    char buildLevel[26];
    char buildDate[10];
    std::int32_t version;
};
static_assert(offsetof(PostBiosRecord, buildLevel) == 0 &&
              offsetof(PostBiosRecord, buildDate) == 26 &&
              offsetof(PostBiosRecord, version) == 36 && sizeof(PostBiosRecord) == 40);

struct SystemStateRecord {
    std::uint64_t powerOnHours;
    std::uint16_t restartCount;
    std::uint16_t statusInfo;
    // 0 not known, 1 in POST, 2 stopped in POST, 3 booted its flash, 4 booting the operating
    // system, 5 that has booted, 6 processor in reset, 7 before POST.
    std::uint32_t currentState;
};
static_assert(offsetof(SystemStateRecord, powerOnHours) == 0 &&
              offsetof(SystemStateRecord, restartCount) == 8 &&
              offsetof(SystemStateRecord, statusInfo) == 10 &&
              offsetof(SystemStateRecord, currentState) == 12 && sizeof(SystemStateRecord) == 16);

// In seconds; -1 is a timer that is not set.
struct WatchdogRecord {
    std::int32_t postTimeout;
    std::int32_t loaderTimeout;
    std::int32_t osTimeout;
    std::int32_t powerTimeout;
};
static_assert(offsetof(WatchdogRecord, postTimeout) == 0 &&
              offsetof(WatchdogRecord, loaderTimeout) == 4 &&
              offsetof(WatchdogRecord, osTimeout) == 8 &&
              offsetof(WatchdogRecord, powerTimeout) == 12 && sizeof(WatchdogRecord) == 16);
