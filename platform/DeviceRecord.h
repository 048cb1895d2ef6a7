// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "MachineRecord.h"

namespace QZ {

// Adds what the kernel shows of the machine's block devices, SCSI devices and the boards above
// them: those attributes that units of RAIDs are made from, and the folders that tell which is of
// which. What is not there is left out.
void recordDevices(MachineRecord& record);

}  // namespace QZ
