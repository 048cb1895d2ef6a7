// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "tavqz/Export.h"

// One decoded event of a System Event Log, as a device library fills it: twelve 32-bit words in
// the machine's byte order. Codes are those of IPMI 2.0, tables 42-1 and 42-3.
struct ipmiEvent {
    std::uint32_t carried[4];        // the library's own
    std::uint32_t eventOffset;       // in the reading type's or the sensor type's list, from 0
    std::uint32_t sensorType;        // sensor type code
    std::uint32_t eventReadingType;  // event/reading type code
    std::uint8_t readingPresent;
    std::uint8_t thresholdPresent;
    std::uint8_t unused[2];
    double reading;
    std::uint32_t carriedToo[2];  // the library's own
};

static_assert(offsetof(ipmiEvent, eventOffset) == 16);
static_assert(offsetof(ipmiEvent, sensorType) == 20);
static_assert(offsetof(ipmiEvent, eventReadingType) == 24);
static_assert(offsetof(ipmiEvent, readingPresent) == 28);
static_assert(offsetof(ipmiEvent, thresholdPresent) == 29);
static_assert(offsetof(ipmiEvent, reading) == 32);
static_assert(sizeof(ipmiEvent) == 48 && sizeof(double) == 8);

// Turns an event into keys of a message catalogue. A value that owns its event; nothing throws but
// for want of memory, and objects share nothing.
class TAVQZ_EXPORT SystemEventRecord {
public:
    // Copies all twelve words, and only reads them; null makes a record of zeros.
    explicit SystemEventRecord(ipmiEvent* event);

    // "IPMI_STC_" and the sensor type's short name; empty for a type without a key.
    std::string getSensorTypeCodeString() const;

    // "IPMI_ERC_" and the event/reading type's short name; empty for a type without a key.
    std::string getEventReadingCodeString() const;

    // "IPMI_EVENT_", the name of the type and that of the offset; a single blank where there is no
    // such key. Says through addLogItem what it found.
    std::string getEventString() const;

    // "value %d threshold [%d]" with the low and the high half of the reading's IEEE 754 bits as
    // signed decimals, which is what readers of this text expect; a single blank unless reading
    // and threshold are both present.
    std::string getData0String() const;

    // Always a single blank.
    std::string getData1String() const;

    // Always empty.
    std::string getRawDataString() const;

private:
    ipmiEvent _event;
};
