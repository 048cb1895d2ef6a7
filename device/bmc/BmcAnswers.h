// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "BmcValues.h"
#include "SmBios.h"
#include "tavqz/ServiceProcessorRecords.h"

// What the management controller and the firmware say, as the records that the module asks for.
// Pure.

// As people write it, "2.14".
std::string firmwareVersion(const QZ::BmcDeviceId& id);

// The makers' own four bytes in hexadecimal digits; empty where there are none.
std::string firmwareBuild(const QZ::BmcDeviceId& id);

// The controller's identifier stands in where the firmware has none. A serial number longer than
// its room is cut off there. Type and model are told by makers who write "-[8840-25X]-" behind the
// product's name; blank for others. False where neither firmware nor controller say anything.
bool fillMachineLevel(const std::vector<QZ::SmBios::Table>& firmware,
                      const std::optional<std::string>& systemGuid, MachineLevelRecord& record);

// The version is a hundred times the system firmware's major release, plus the minor one; 0 where
// it does not tell. False where the firmware says nothing of itself.
bool fillPostBios(const std::vector<QZ::SmBios::Table>& firmware, PostBiosRecord& record);

// A machine that is on and asks is one whose operating system has booted. The status is CIM's
// StatusInfo: 3 enabled, 4 disabled, 2 not known. False where the controller says neither.
bool fillSystemState(const std::optional<QZ::BmcChassisStatus>& chassis,
                     const std::optional<std::uint64_t>& powerOnMinutes, std::uint16_t restarts,
                     SystemStateRecord& record);

// The one timer that there is, as that of what it is used for, while it runs: the self-test (FRB2
// or POST), the loader, the operating system, or the makers' own.
void fillWatchdog(const QZ::BmcWatchdog& watchdog, WatchdogRecord& record);
