// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "IpmiFru.h"

// What this program answers for the machine's IPMI inventory.
extern std::vector<QZ::IpmiFru> testIpmiUnits;
// Makes it throw.
extern bool isTestIpmiFailing;
