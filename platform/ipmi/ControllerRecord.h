// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "MachineRecord.h"

namespace QZ {

// Adds to the record of a machine what its management controller replies to all that Bmc asks, if
// it has one. Called while nobody else replaces the transport.
void recordController(MachineRecord& record);

// Puts other texts in the places of serial numbers, asset tags and makers' own fields of the
// controller's units, and of the identifiers, as sanitizeMachine does, which is called after it
// with the same key. What is stored of a unit outside the areas that are decoded is erased.
// Checksums stay as right or wrong as they were.
void sanitizeController(MachineFiles& files, const std::string& key);

}  // namespace QZ
