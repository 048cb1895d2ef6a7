// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace QZ {

// What a management controller says of itself and its machine, as IPMI 2.0 has it. The decoders
// take a reply's data, behind the completion code; they are pure, and nothing where it is too
// short.

// Get Device ID (20.1).
struct BmcDeviceId {
    unsigned char deviceId = 0;
    unsigned char deviceRevision = 0;
    unsigned char majorFirmware = 0;
    unsigned char minorFirmware = 0;  // two decimal digits
    bool isUpdating = false;          // Its firmware is being changed, or it starts.
    unsigned char ipmiVersion = 0;    // 0x20 is 2.0
    bool hasFruData = false;
    bool hasSel = false;
    bool hasSdrRepository = false;
    std::uint32_t manufacturer = 0;  // enterprise number
    std::uint16_t product = 0;
    std::string auxiliaryFirmware;  // four bytes, or none
};
std::optional<BmcDeviceId> decodeDeviceId(const std::string& data);

// Get Chassis Status (28.2).
struct BmcChassisStatus {
    bool isOn = false;
    bool hasPowerFault = false;
    bool hasPowerOverload = false;
    unsigned char lastPowerEvent = 0;  // a bit each: AC failed, overload, interlock, fault, command
    bool hasIntrusion = false;
    bool hasDriveFault = false;
    bool hasCoolingFault = false;
};
std::optional<BmcChassisStatus> decodeChassisStatus(const std::string& data);

// Get Watchdog Timer (27.7).
struct BmcWatchdog {
    // Only these uses have a meaning.
    enum Use : unsigned char { Frb2 = 1, Post = 2, OsLoad = 3, System = 4, Oem = 5 };

    unsigned char use = 0;
    bool isRunning = false;
    unsigned char action = 0;  // 0 none, 1 reset, 2 power off, 3 power cycle
    unsigned pretimeoutSeconds = 0;
    unsigned initialTenths = 0;             // tenths of seconds
    std::optional<unsigned> presentTenths;  // not told by every controller
};
std::optional<BmcWatchdog> decodeWatchdog(const std::string& data);

// Get POH Counter (28.14), in minutes.
std::optional<std::uint64_t> decodePowerOnMinutes(const std::string& data);

// Get SEL Info (31.2).
struct BmcSelInfo {
    unsigned entries = 0;
    unsigned freeBytes = 0;
    std::uint32_t lastAdded = 0;  // seconds since 1970
    std::uint32_t lastErased = 0;
    bool hasOverflowed = false;
};
std::optional<BmcSelInfo> decodeSelInfo(const std::string& data);

// A record of the system event log (32.1). The fields behind the type are those of a system event
// (type 2); of others only the bytes tell.
struct BmcSelEntry {
    std::uint16_t recordId = 0;
    unsigned char type = 0;
    std::uint32_t seconds = 0;  // since 1970; up to 20000000h since the controller started
    std::uint16_t generator = 0;
    unsigned char messageVersion = 0;
    unsigned char sensorType = 0;
    unsigned char sensorNumber = 0;
    bool isDeassertion = false;
    unsigned char eventReadingType = 0;
    unsigned char data[3] = {};
    std::string bytes;  // all sixteen
};
// From the record's sixteen bytes.
std::optional<BmcSelEntry> decodeSelEntry(const std::string& record);

// A sixteen-byte identifier as text, taken as SMBIOS stores it: the first three numbers with their
// low byte first. Nothing where all bytes are the same, which stands for none.
std::optional<std::string> guidText(const std::string& guid);

}  // namespace QZ
