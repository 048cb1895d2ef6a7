// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "MachineRecord.h"

namespace QZ {

// Puts other texts in the places of those that tell one machine from all others: serial numbers
// and asset tags of the firmware and the disks, UUIDs, world wide names, machine id and host name.
// The same text becomes the same other one wherever it stands and whatever pads it, of the same
// length and with digits for digits, letters for letters and every other byte as it was, so that
// what is wrong with it stays wrong. UUIDs and world wide names become others, the same in every
// order of their bytes and as text. Texts of fewer than four characters and placeholders stay: they
// tell no machine from another. What nobody is shown who replays the machine is blanked: the bytes
// behind the firmware's structures, and disks' own bytes of their makers.
//
// The key makes the choice: nobody without it can try which text became which.
void sanitizeMachine(MachineFiles& files, const std::string& key);

}  // namespace QZ
