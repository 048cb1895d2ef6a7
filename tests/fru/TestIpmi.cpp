// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TestIpmi.h"

#include <stdexcept>

std::vector<QZ::IpmiFru> testIpmiUnits;
bool isTestIpmiFailing = false;

// In the place of the one that asks the machine.
std::vector<QZ::IpmiFru> QZ::GetIpmiFruInstances() {
    if (isTestIpmiFailing)
        throw std::runtime_error("the controller hung up");
    return testIpmiUnits;
}
