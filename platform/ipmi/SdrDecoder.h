// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace QZ {

// What a record's device is part of (IPMI 2.0, 43.14).
struct IpmiEntity {
    unsigned char id = 0;
    unsigned char instance = 0;
};

// Where FRU inventory data are to be had (43.8). Logical: by command from the controller at that
// address; otherwise from a memory on a bus, which the standard's FRU commands do not reach.
struct FruLocator {
    std::uint16_t recordId = 0;
    unsigned char address = 0;
    unsigned char fruId = 0;
    bool isLogical = false;
    unsigned char lun = 0;
    unsigned char channel = 0;
    unsigned char deviceType = 0;
    IpmiEntity entity;
    std::string name;
};

// A management controller (43.9).
struct ControllerLocator {
    std::uint16_t recordId = 0;
    unsigned char address = 0;
    unsigned char channel = 0;
    bool hasFruData = false;
    IpmiEntity entity;
    std::string name;
};

// A full, compact or event-only sensor record (43.1 to 43.3), as far as it says which sensor it is.
struct SensorRecord {
    std::uint16_t recordId = 0;
    unsigned char owner = 0;
    unsigned char lun = 0;
    unsigned char number = 0;
    IpmiEntity entity;
    unsigned char sensorType = 0;
    unsigned char eventReadingType = 0;
    std::string name;
};

// The records of a sensor data repository that say something of parts, in its order.
struct SdrContents {
    bool isDamaged =
        false;  // A record was shorter than its kind needs, and what it lacks is left out.
    std::vector<FruLocator> fruLocators;
    std::vector<ControllerLocator> controllers;
    std::vector<SensorRecord> sensors;
};

// Decodes whole records, each with its header. Of one that ends before its name, the name is empty
// or what there is of it; one that ends before that is left out. Pure and total over any bytes.
SdrContents decodeSdr(const std::vector<std::string>& records);

}  // namespace QZ
