// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "BmcAnswers.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace {

using Tables = std::vector<QZ::SmBios::Table>;

// DSP0134, 7.1 and 7.2.
constexpr unsigned char _biosType = 0;
constexpr unsigned char _systemType = 1;
constexpr std::size_t _biosVersion = 0x05;
constexpr std::size_t _biosDate = 0x08;
constexpr std::size_t _biosMajor = 0x14;
constexpr std::size_t _biosMinor = 0x15;
constexpr std::size_t _systemProduct = 0x05;
constexpr std::size_t _systemSerial = 0x07;
constexpr std::size_t _systemUuid = 0x08;
constexpr std::size_t _uuidEnd = 0x18;
constexpr unsigned char _notTold = 0xFF;

constexpr std::uint16_t _statusUnknown = 2;
constexpr std::uint16_t _statusEnabled = 3;
constexpr std::uint16_t _statusDisabled = 4;
constexpr std::uint32_t _operatingSystemBooted = 5;

const QZ::SmBios::Table* _find(const Tables& firmware, unsigned char type) {
    const auto found = std::find_if(firmware.begin(), firmware.end(),
                                    [&](const auto& table) { return table.getType() == type; });
    return found != firmware.end() ? &*found : nullptr;
}

std::string _text(const QZ::SmBios::Table* table, std::size_t offset) {
    const char* text = table != nullptr ? table->getString(table->getByte(offset)) : nullptr;
    return text != nullptr ? text : "";
}

std::string _uuidBytes(const QZ::SmBios::Table* system) {
    std::string bytes;
    for (std::size_t at = _systemUuid; system != nullptr && at < _uuidEnd; ++at) {
        bytes += static_cast<char>(system->getByte(at));
    }
    return bytes;
}

// In upper case, without its hyphens.
std::string _uuidDigits(const std::string& bytes) {
    std::string digits;
    for (const char digit : QZ::guidText(bytes).value_or("")) {
        if (digit != '-') {
            digits += digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit;
        }
    }
    return digits;
}

// What stands between "-[" and "]-", without a hyphen; the type comes first.
std::string _typeAndModel(const std::string& product) {
    const std::size_t begin = product.find("-[");
    const std::size_t end = product.find("]-", begin == std::string::npos ? 0 : begin);
    if (begin == std::string::npos || end == std::string::npos) {
        return "";
    }
    std::string text = product.substr(begin + 2, end - begin - 2);
    text.erase(std::remove(text.begin(), text.end(), '-'), text.end());
    return text;
}

// All but the last character, which ends the room; blanks behind a shorter text.
template <std::size_t Size>
void _fillWhole(char (&room)[Size], const std::string& text) {
    std::fill(std::begin(room), std::end(room), ' ');
    std::copy_n(text.begin(), std::min(text.size(), Size - 1), room);
    room[Size - 1] = '\0';
}

template <std::size_t Size>
void _fillToNul(char (&room)[Size], const std::string& text) {
    std::fill(std::begin(room), std::end(room), '\0');
    std::copy_n(text.begin(), std::min(text.size(), Size), room);
}

}  // namespace

std::string firmwareVersion(const QZ::BmcDeviceId& id) {
    char text[16];
    (void)std::snprintf(text, sizeof text, "%u.%02u", unsigned(id.majorFirmware),
                        unsigned(id.minorFirmware));
    return text;
}

std::string firmwareBuild(const QZ::BmcDeviceId& id) {
    std::string text;
    for (const char byte : id.auxiliaryFirmware) {
        char digits[4];
        (void)std::snprintf(digits, sizeof digits, "%02X",
                            unsigned(static_cast<unsigned char>(byte)));
        text += digits;
    }
    return text;
}

bool fillMachineLevel(const Tables& firmware, const std::optional<std::string>& systemGuid,
                      MachineLevelRecord& record) {
    const QZ::SmBios::Table* system = _find(firmware, _systemType);
    if (system == nullptr && !systemGuid) {
        return false;
    }
    std::string uuid = _uuidDigits(_uuidBytes(system));
    if (uuid.empty()) {
        uuid = _uuidDigits(systemGuid.value_or(""));
    }
    const std::string typeAndModel = _typeAndModel(_text(system, _systemProduct));
    constexpr std::size_t typeLength = sizeof record.machineType - 1;
    _fillWhole(record.uuid, uuid);
    _fillWhole(record.machineType, typeAndModel.substr(0, typeLength));
    _fillWhole(record.machineModel, typeAndModel.substr(std::min(typeLength, typeAndModel.size())));
    _fillWhole(record.serialNumber, _text(system, _systemSerial));
    return true;
}

bool fillPostBios(const Tables& firmware, PostBiosRecord& record) {
    const QZ::SmBios::Table* bios = _find(firmware, _biosType);
    if (bios == nullptr) {
        return false;
    }
    _fillToNul(record.buildLevel, _text(bios, _biosVersion));
    _fillToNul(record.buildDate, _text(bios, _biosDate));
    const int major = bios->getByte(_biosMajor);
    const int minor = bios->getByte(_biosMinor);
    record.version = major == _notTold || minor == _notTold ? 0 : major * 100 + minor;
    return true;
}

bool fillSystemState(const std::optional<QZ::BmcChassisStatus>& chassis,
                     const std::optional<std::uint64_t>& powerOnMinutes, std::uint16_t restarts,
                     SystemStateRecord& record) {
    if (!chassis && !powerOnMinutes) {
        return false;
    }
    constexpr std::uint64_t minutesAnHour = 60;
    record = {};
    record.powerOnHours = powerOnMinutes.value_or(0) / minutesAnHour;
    record.restartCount = restarts;
    record.statusInfo = _statusUnknown;
    if (chassis) {
        record.statusInfo = chassis->isOn ? _statusEnabled : _statusDisabled;
        record.currentState = chassis->isOn ? _operatingSystemBooted : 0;
    }
    return true;
}

void fillWatchdog(const QZ::BmcWatchdog& watchdog, WatchdogRecord& record) {
    constexpr unsigned tenthsASecond = 10;
    record = {-1, -1, -1, -1};
    if (!watchdog.isRunning) {
        return;
    }
    const auto seconds = static_cast<std::int32_t>(watchdog.initialTenths / tenthsASecond);
    switch (watchdog.use) {
        case QZ::BmcWatchdog::Frb2:
        case QZ::BmcWatchdog::Post:
            record.postTimeout = seconds;
            break;
        case QZ::BmcWatchdog::OsLoad:
            record.loaderTimeout = seconds;
            break;
        case QZ::BmcWatchdog::System:
            record.osTimeout = seconds;
            break;
        case QZ::BmcWatchdog::Oem:
            record.powerTimeout = seconds;
            break;
        default:
            break;
    }
}
