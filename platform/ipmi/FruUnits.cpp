// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruUnits.h"

#include <algorithm>

#include "IpmiCommand.h"

namespace QZ {

namespace {

// A channel means something only behind the machine's own controller.
bool isSameUnit(const FruLocator& one, const FruLocator& other) {
    return one.fruId == other.fruId && one.address == other.address && one.lun == other.lun &&
           (one.address == BmcAddress || one.channel == other.channel);
}

void add(std::vector<FruLocator>& units, const FruLocator& unit) {
    const auto known = std::find_if(units.begin(), units.end(), [&unit](const FruLocator& other) {
        return isSameUnit(unit, other);
    });
    if (known == units.end())
        units.push_back(unit);
    else if (known->name.empty())
        *known = unit;
}

FruLocator unitOf(const ControllerLocator& controller) {
    FruLocator unit;
    unit.recordId = controller.recordId;
    unit.address = controller.address;
    unit.channel = controller.channel;
    unit.isLogical = true;
    unit.entity = controller.entity;
    unit.name = controller.name;
    return unit;
}

}  // namespace

std::vector<FruLocator> listFruUnits(bool hasOwnUnit, const SdrContents& sdr) {
    std::vector<FruLocator> units;
    if (hasOwnUnit) {
        FruLocator own;
        own.address = BmcAddress;
        own.isLogical = true;
        units.push_back(own);
    }
    for (const FruLocator& locator : sdr.fruLocators) {
        if (locator.isLogical)
            add(units, locator);
    }
    for (const ControllerLocator& controller : sdr.controllers) {
        if (controller.hasFruData)
            add(units, unitOf(controller));
    }
    return units;
}

}  // namespace QZ
