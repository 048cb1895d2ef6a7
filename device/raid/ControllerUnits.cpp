// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <initializer_list>
#include <map>

#include "MachinePaths.h"
#include "PciNames.h"
#include "PciVpd.h"
#include "RaidControllers.h"
#include "RaidUnits.h"
#include "SysFolder.h"

namespace QZ {

namespace {

PciNumbers _numbersOf(const std::string& folder) {
    const auto number = [&](const char* name) { return readNumber(folder, name, 16).value_or(0); };
    return {number("vendor"), number("device"), number("subsystem_vendor"),
            number("subsystem_device")};
}

// "1028:1f43"; empty where the vendor is not known.
std::string _pair(unsigned vendor, unsigned device) {
    if (vendor == 0)
        return {};
    char text[24];
    (void)std::snprintf(text, sizeof text, "%04x:%04x", vendor & 0xFFFFU, device & 0xFFFFU);
    return text;
}

std::string _firstOf(std::initializer_list<std::string> texts) {
    const auto found =
        std::find_if(texts.begin(), texts.end(), [](const auto& text) { return !text.empty(); });
    return found == texts.end() ? std::string() : *found;
}

// How many devices of the controller are disks that can be replaced.
std::string _diskCount(const RaidController& controller, const std::vector<ScsiDevice>& devices) {
    const auto count = std::count_if(devices.begin(), devices.end(), [&](const ScsiDevice& device) {
        return controller.has(device) && device.isDisk && !device.isVolume;
    });
    return count == 0   ? "no disks to be seen"
           : count == 1 ? "1 disk"
                        : std::to_string(count) + " disks";
}

RaidUnit _unitOf(const RaidController& controller, const std::vector<ScsiDevice>& devices,
                 PciNames& names) {
    const PciNumbers numbers = _numbersOf(controller.folder);
    const PciVpd vpd = decodePciVpd(readBytes(controller.folder, "vpd"));
    // What drivers tell of the board, each in words of its own: mpt3sas, then aacraid and smartpqi.
    const std::string host =
        MachinePaths::scsiHosts() + "/host" + std::to_string(controller.hosts.front());
    const auto told = [&](const char* name) { return readAttribute(host, name); };
    const std::string chip = _pair(numbers.vendor, numbers.device);
    const std::string chipName =
        _firstOf({names.device(numbers), chip.empty() ? "" : "PCI device " + chip, "PCI device"});

    RaidUnit unit;
    unit.id = controller.address;
    unit.fru = _firstOf({told("board_assembly"), vpd.partNumber, told("board_tracer"),
                         told("serial_number"), vpd.serialNumber,
                         _pair(numbers.subsystemVendor, numbers.subsystemDevice), chip});
    unit.model = _firstOf(
        {told("board_name"), told("model"), vpd.product, names.subsystem(numbers), chipName});
    unit.manufacturer =
        _firstOf({vpd.manufacturer, told("vendor"), names.vendor(numbers.subsystemVendor),
                  names.vendor(numbers.vendor)});
    unit.name = "RAID controller " + controller.address;
    const std::string driver = told("proc_name");
    unit.description = chipName + (driver.empty() ? "" : ", driver " + driver) + ", " +
                       _diskCount(controller, devices);
    return unit;
}

}  // namespace

std::vector<RaidUnit> readRaidControllers() {
    const std::vector<ScsiDevice> devices = readScsiDevices();
    PciNames names(MachinePaths::pciNames());
    std::vector<RaidUnit> units;
    for (const RaidController& controller : findRaidControllers(devices))
        units.push_back(_unitOf(controller, devices, names));
    return units;
}

}  // namespace QZ
