// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "SdrDecoder.h"

namespace QZ {

// The units whose data can be asked for: the machine's own controller's unit 0 first if it has one,
// then those of the locators in their order, then unit 0 of each further controller. Each once,
// with the name and entity of the record that tells them. Pure.
std::vector<FruLocator> listFruUnits(bool hasOwnUnit, const SdrContents& sdr);

}  // namespace QZ
