// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/SystemEventRecord.h"

#include <cstring>
#include <string_view>

#include "EventKeys.h"
#include "LogItem.h"

namespace {

constexpr const char* LOG_TAG = "geteventstring";
constexpr const char* NO_KEY = " ";

std::string _key(std::string_view prefix, std::string_view name) {
    return name.empty() ? std::string() : std::string(prefix).append(name);
}

// Whether the codes are beyond what there are lists for, which is worth a line in the log; a list
// that is empty or too short is not.
bool _isUnknown(const ipmiEvent& event) {
    if (event.eventReadingType == QZ::READING_TYPE_SENSOR_SPECIFIC) {
        return event.sensorType <= 43 && QZ::sensorTypeName(event.sensorType).empty();
    }
    return QZ::readingTypeName(event.eventReadingType).empty();
}

}  // namespace

SystemEventRecord::SystemEventRecord(ipmiEvent* event) : _event() {
    if (event) {
        _event = *event;
    }
}

std::string SystemEventRecord::getSensorTypeCodeString() const {
    return _key("IPMI_STC_", QZ::sensorTypeName(_event.sensorType));
}

std::string SystemEventRecord::getEventReadingCodeString() const {
    return _key("IPMI_ERC_", QZ::readingTypeName(_event.eventReadingType));
}

std::string SystemEventRecord::getEventString() const {
    if (_isUnknown(_event)) {
        QZ::logItem(LOG_TAG, "Could not find the event string");
        return NO_KEY;
    }
    const bool isSpecific = _event.eventReadingType == QZ::READING_TYPE_SENSOR_SPECIFIC;
    const QZ::EventNames names = isSpecific ? QZ::sensorEventNames(_event.sensorType)
                                            : QZ::genericEventNames(_event.eventReadingType);
    const std::string_view name = names.name(_event.eventOffset);
    std::string key = NO_KEY;
    if (!name.empty()) {
        key = isSpecific ? "IPMI_EVENT_STC_" : "IPMI_EVENT_ERC_";
        key.append(names.group).append("_").append(name);
    }
    // Never empty: a key that is not found is a blank, and told as one.
    QZ::logItem(LOG_TAG, "The eventstring is [" + key + "]");
    return key;
}

std::string SystemEventRecord::getData0String() const {
    if (_event.readingPresent == 0 || _event.thresholdPresent == 0) {
        return NO_KEY;
    }
    std::uint64_t bits = 0;
    std::memcpy(&bits, &_event.reading, sizeof bits);
    std::int32_t halves[2];  // low, high
    const std::uint32_t low = std::uint32_t(bits);
    const std::uint32_t high = std::uint32_t(bits >> 32);
    std::memcpy(&halves[0], &low, sizeof low);
    std::memcpy(&halves[1], &high, sizeof high);
    return "value " + std::to_string(halves[0]) + " threshold [" + std::to_string(halves[1]) + "]";
}

std::string SystemEventRecord::getData1String() const {
    return NO_KEY;
}

std::string SystemEventRecord::getRawDataString() const {
    return {};
}
