// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SelEvent.h"

#include <algorithm>

#include "DateTime.h"
#include "EventOffsets.h"
#include "IpmiText.h"
#include "tavqz/SystemEventRecord.h"

namespace QZ {

namespace {

// IPMI 2.0, 32.1 to 32.3.
constexpr unsigned char _systemEvent = 0x02;
constexpr unsigned char _firstOem = 0xC0;
constexpr unsigned char _firstOemWithoutTime = 0xE0;

// IPMI 2.0, chapter 37: up to here they are seconds since the controller's start.
constexpr std::uint32_t _lastSinceStart = 0x20000000;
constexpr std::uint32_t _unspecifiedTime = 0xFFFFFFFF;

std::string _hexText(const std::string& bytes) {
    std::string text = decodeIpmiText(IpmiEncoding::Binary, bytes);
    for (std::size_t at = text.size(); at > 2;) {
        at -= 2;
        text.insert(at, 1, ' ');
    }
    return text;
}

bool _hasTime(unsigned char type) {
    return type == _systemEvent || (type >= _firstOem && type < _firstOemWithoutTime);
}

void _setTime(SelEvent& event, std::uint32_t seconds) {
    if (seconds <= _lastSinceStart) {
        event.sinceStart = seconds;
    } else if (seconds != _unspecifiedTime) {
        event.time = DateTime(seconds, DateTime::CalendarDate | DateTime::TimeOfDay).toString();
    }
}

// The generator is the sensor's owner, and with an address of its own the unit there.
std::string _sensorName(const BmcSelEntry& entry, const std::vector<SensorRecord>& sensors) {
    const unsigned owner = entry.generator & 0xFFU;
    const unsigned lun = entry.generator >> 8U & 3U;
    const auto found = std::find_if(sensors.begin(), sensors.end(), [&](const SensorRecord& known) {
        return known.owner == owner && known.lun == lun && known.number == entry.sensorNumber &&
               known.sensorType == entry.sensorType;
    });
    return found == sensors.end() ? std::string() : found->name;
}

// Empty for what stands for none.
std::string _keyOf(const std::string& key) {
    return key.find_first_not_of(' ') == std::string::npos ? std::string() : key;
}

void _setKeys(SelEvent& event, const BmcSelEntry& entry) {
    const auto place = eventPlace(entry.eventReadingType, entry.sensorType, entry.data[0] & 0xFU);
    ipmiEvent decoded{};
    decoded.sensorType = entry.sensorType;
    decoded.eventReadingType = entry.eventReadingType;
    decoded.eventOffset = place.value_or(0);
    const SystemEventRecord record(&decoded);
    event.sensorTypeKey = _keyOf(record.getSensorTypeCodeString());
    if (place) {
        event.key = _keyOf(record.getEventString());
    }
}

}  // namespace

SelEvent describeEvent(const BmcSelEntry& entry, const std::vector<SensorRecord>& sensors) {
    SelEvent event;
    event.record = entry.recordId;
    event.type = entry.type;
    event.bytes = _hexText(entry.bytes);
    if (_hasTime(entry.type)) {
        _setTime(event, entry.seconds);
    }
    if (entry.type == _systemEvent) {
        event.sensorNumber = entry.sensorNumber;
        event.sensor = _sensorName(entry, sensors);
        event.isAsserted = !entry.isDeassertion;
        _setKeys(event, entry);
    }
    return event;
}

}  // namespace QZ
