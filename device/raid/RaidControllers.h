// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ScsiDevices.h"

namespace QZ {

// A PCI board that makes a RAID of disks, and the SCSI hosts that its driver shows for it.
struct RaidController {
    std::string address;  // on the PCI bus: "0000:03:00.0"
    std::string folder;   // of its attributes there
    std::vector<unsigned> hosts;

    bool has(const ScsiDevice& device) const;
};

// Boards of the class of RAID controllers, and whichever has devices that their driver speaks of
// RAID with: many of those are of the class of plain SAS controllers.
std::vector<RaidController> findRaidControllers(const std::vector<ScsiDevice>& devices);

}  // namespace QZ
