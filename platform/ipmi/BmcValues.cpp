// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "BmcValues.h"

#include <algorithm>

#include "IpmiBytes.h"
#include "IpmiText.h"

namespace QZ {

namespace {

unsigned char narrowAt(const std::string& data, std::size_t at) {
    return static_cast<unsigned char>(byteAt(data, at));
}

bool bitAt(const std::string& data, std::size_t at, unsigned bit) {
    return (byteAt(data, at) >> bit & 1U) != 0;
}

}  // namespace

std::optional<BmcDeviceId> decodeDeviceId(const std::string& data) {
    constexpr std::size_t Shortest = 11;
    constexpr std::size_t AuxiliaryPlace = 11;
    constexpr std::size_t AuxiliaryLength = 4;
    if (data.size() < Shortest)
        return std::nullopt;
    BmcDeviceId id;
    id.deviceId = narrowAt(data, 0);
    id.deviceRevision = narrowAt(data, 1) & 0xFU;
    id.majorFirmware = narrowAt(data, 2) & 0x7FU;
    id.isUpdating = bitAt(data, 2, 7);
    // BCD.
    id.minorFirmware =
        static_cast<unsigned char>((byteAt(data, 3) >> 4U) * 10U + (byteAt(data, 3) & 0xFU));
    // The digit behind the point stands in the high half.
    id.ipmiVersion =
        static_cast<unsigned char>((byteAt(data, 4) & 0xFU) << 4U | byteAt(data, 4) >> 4U);
    id.hasSdrRepository = bitAt(data, 5, 1);
    id.hasSel = bitAt(data, 5, 2);
    id.hasFruData = bitAt(data, 5, 3);
    id.manufacturer = (wordAt(data, 6) | byteAt(data, 8) << 16U) & 0xFFFFFU;
    id.product = wordAt(data, 9);
    if (data.size() >= AuxiliaryPlace + AuxiliaryLength)
        id.auxiliaryFirmware = data.substr(AuxiliaryPlace, AuxiliaryLength);
    return id;
}

std::optional<BmcChassisStatus> decodeChassisStatus(const std::string& data) {
    if (data.size() < 3)
        return std::nullopt;
    BmcChassisStatus status;
    status.isOn = bitAt(data, 0, 0);
    status.hasPowerOverload = bitAt(data, 0, 1);
    status.hasPowerFault = bitAt(data, 0, 3) || bitAt(data, 0, 4);
    status.lastPowerEvent = narrowAt(data, 1) & 0x1FU;
    status.hasIntrusion = bitAt(data, 2, 0);
    status.hasDriveFault = bitAt(data, 2, 2);
    status.hasCoolingFault = bitAt(data, 2, 3);
    return status;
}

std::optional<BmcWatchdog> decodeWatchdog(const std::string& data) {
    constexpr std::size_t Shortest = 6;
    constexpr std::size_t PresentPlace = 6;
    if (data.size() < Shortest)
        return std::nullopt;
    BmcWatchdog watchdog;
    watchdog.use = narrowAt(data, 0) & 7U;
    watchdog.isRunning = bitAt(data, 0, 6);
    watchdog.action = narrowAt(data, 1) & 7U;
    watchdog.pretimeoutSeconds = byteAt(data, 2);
    watchdog.initialTenths = wordAt(data, 4);
    if (data.size() >= PresentPlace + 2)
        watchdog.presentTenths = wordAt(data, PresentPlace);
    return watchdog;
}

std::optional<std::uint64_t> decodePowerOnMinutes(const std::string& data) {
    if (data.size() < 5)
        return std::nullopt;
    return static_cast<std::uint64_t>(longAt(data, 1)) * byteAt(data, 0);
}

std::optional<BmcSelInfo> decodeSelInfo(const std::string& data) {
    constexpr std::size_t Shortest = 14;
    if (data.size() < Shortest)
        return std::nullopt;
    BmcSelInfo info;
    info.entries = wordAt(data, 1);
    info.freeBytes = wordAt(data, 3);
    info.lastAdded = longAt(data, 5);
    info.lastErased = longAt(data, 9);
    info.hasOverflowed = bitAt(data, 13, 7);
    return info;
}

std::optional<BmcSelEntry> decodeSelEntry(const std::string& record) {
    constexpr std::size_t Length = 16;
    if (record.size() < Length)
        return std::nullopt;
    BmcSelEntry entry;
    entry.bytes = record.substr(0, Length);
    entry.recordId = wordAt(record, 0);
    entry.type = narrowAt(record, 2);
    entry.seconds = longAt(record, 3);
    entry.generator = wordAt(record, 7);
    entry.messageVersion = narrowAt(record, 9);
    entry.sensorType = narrowAt(record, 10);
    entry.sensorNumber = narrowAt(record, 11);
    entry.isDeassertion = bitAt(record, 12, 7);
    entry.eventReadingType = narrowAt(record, 12) & 0x7FU;
    for (std::size_t i = 0; i < 3; ++i)
        entry.data[i] = narrowAt(record, 13 + i);
    return entry;
}

std::optional<std::string> guidText(const std::string& guid) {
    constexpr std::size_t Length = 16;
    constexpr std::size_t order[Length] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    if (guid.size() != Length || guid.find_first_not_of(guid.front()) == std::string::npos)
        return std::nullopt;
    std::string bytes;
    for (const std::size_t at : order)
        bytes += guid[at];
    std::string text = decodeIpmiText(IpmiEncoding::Binary, bytes);
    for (const std::size_t at : {20U, 16U, 12U, 8U})
        text.insert(at, 1, '-');
    return text;
}

}  // namespace QZ
