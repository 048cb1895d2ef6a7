// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "BmcValues.h"
#include "SdrDecoder.h"

namespace QZ {

// A record of the System Event Log as people and programs read it. Texts are empty where there is
// none.
struct SelEvent {
    std::uint16_t record = 0;
    unsigned char type = 0;
    std::string time;                         // ISO 8601, in the machine's zone
    std::optional<std::uint32_t> sinceStart;  // seconds, where the controller's clock was not set
    // Only of system events (type 02h).
    std::optional<unsigned char> sensorNumber;
    std::string sensor;         // its name in the sensor data repository
    std::string sensorTypeKey;  // keys of the message catalogues
    std::string key;
    std::optional<bool> isAsserted;
    std::string bytes;  // all sixteen, in two digits with blanks between
};

// Pure, and total over any record.
SelEvent describeEvent(const BmcSelEntry& entry, const std::vector<SensorRecord>& sensors);

}  // namespace QZ
