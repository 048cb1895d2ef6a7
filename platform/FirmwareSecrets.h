// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "MachineRecord.h"
#include "Secrets.h"
#include "SmBios.h"

namespace QZ {

// The firmware's structures that a machine's record shows who replays it.
SmBios::Contents firmwareOf(const MachineFiles& files);

// The UUID in its bytes; empty where it is not a system's structure, or has none.
std::string uuidOf(const SmBios::Table& system);

// Adds the serial numbers, asset tags, UUIDs and names in the structures.
void addFirmwareSecrets(const SmBios::Contents& firmware, Secrets& secrets);

// Blanks what the record's table holds beyond the structures, such as the rest of one that is
// damaged. The structures stay those that they are, and what is wrong with the table does.
void blankBeyondFirmware(const SmBios::Contents& firmware, MachineFiles& files);

}  // namespace QZ
