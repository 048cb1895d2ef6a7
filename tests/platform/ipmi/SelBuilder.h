// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

// Makes records of a System Event Log (IPMI 2.0, 32.1 to 32.3).

// What a system event is made of.
struct TestEvent {
    unsigned record = 1;
    std::uint32_t seconds = 0;
    unsigned sensorType = 0;
    unsigned sensorNumber = 0;
    unsigned readingType = 0x6F;
    unsigned offset = 0;
    bool isDeassertion = false;
    unsigned generator = 0x20;
};
std::string selRecord(const TestEvent& event);

// A record of another type than 02h, from what stands behind the type, padded with FFh.
std::string otherSelRecord(unsigned record, unsigned type, const std::string& content);
