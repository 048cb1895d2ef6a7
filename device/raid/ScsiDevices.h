// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// What answers behind a SCSI host, as the kernel knows it.
struct ScsiDevice {
    std::string address;  // host, channel, target and unit: "0:1:4:0"
    unsigned host = 0;
    unsigned channel = 0;
    std::string folder;     // of its attributes
    std::string block;      // its block device, "sda"; empty where it has none
    bool isDisk = false;    // by its peripheral device type (SPC-4, 6.6.2)
    bool isOfRaid = false;  // its driver speaks of RAID where it describes it
    bool isVolume = false;  // what a RAID makes of disks, rather than a disk
};

// In the order of their addresses.
std::vector<ScsiDevice> readScsiDevices();

}  // namespace QZ
