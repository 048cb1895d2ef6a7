// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <map>
#include <string_view>

#include "MachinePaths.h"
#include "MdArrays.h"
#include "RaidControllers.h"
#include "RaidUnits.h"
#include "SysFolder.h"

namespace QZ {

namespace {

// Whoever translates ATA to SCSI puts this where a maker stands (SAT-4, 8.3.2).
constexpr const char* _noMaker = "ATA";

// What attributes of an enclosure's slot are linked under.
constexpr std::string_view _slotPrefix = "enclosure_device:";

// A disk to be listed: its attributes, and what it is for.
struct Disk {
    std::string id;
    std::string block;   // its block device; empty where it has none
    std::string folder;  // of its attributes
    std::vector<std::string> roles;
};

std::string _firstAttribute(const std::string& folder, std::initializer_list<const char*> names) {
    for (const char* const name : names) {
        std::string text = readAttribute(folder, name);
        if (!text.empty())
            return text;
    }
    return {};
}

// The serial number of vital product data page 80h (SPC-4, 7.8.15), behind a header of four bytes.
std::string _pageSerial(const std::string& folder) {
    constexpr std::size_t header = 4;
    const std::string page = readBytes(folder, "vpd_pg80");
    if (page.size() < header || page[1] != '\x80')
        return {};
    constexpr std::string_view around(" \0", 2);
    const std::string text = page.substr(header, static_cast<unsigned char>(page[3]));
    const std::size_t first = text.find_first_not_of(around);
    return first == std::string::npos
               ? std::string()
               : text.substr(first, text.find_last_not_of(around) - first + 1);
}

// SCSI, then NVMe, then virtio, whose number belongs to the block device.
std::string _serialOf(const Disk& disk) {
    std::string serial = _pageSerial(disk.folder);
    if (serial.empty())
        serial = readAttribute(disk.folder, "serial");
    if (serial.empty() && !disk.block.empty())
        serial = readAttribute(pathIn(MachinePaths::blockDevices(), disk.block), "serial");
    return serial;
}

// "slot Bay 4 of an enclosure", by the name that the enclosure has for it; empty without one.
std::string _slotOf(const std::string& folder) {
    for (const std::string& entry : entriesOf(folder)) {
        if (entry.compare(0, _slotPrefix.size(), _slotPrefix) != 0)
            continue;
        std::string slot = "in enclosure slot ";
        slot += entry.substr(_slotPrefix.size());
        if (readNumber(pathIn(folder, entry), "fault", 10).value_or(0) != 0)
            slot += ", reported as faulty";
        return slot;
    }
    return {};
}

RaidUnit _unitOf(const Disk& disk) {
    const std::string maker = readAttribute(disk.folder, "vendor");
    RaidUnit unit;
    unit.id = disk.id;
    // A multimedia card has a name where others have a model.
    unit.model = _firstAttribute(disk.folder, {"model", "name"});
    unit.fru = _serialOf(disk);
    if (unit.fru.empty())
        unit.fru = _firstAttribute(disk.folder, {"wwid", "model", "name"});
    // The number of a bus's own, of what is not SCSI, is no maker's name.
    if (maker != _noMaker && maker.compare(0, 2, "0x") != 0)
        unit.manufacturer = maker;
    unit.name = "Disk " + (disk.block.empty() ? disk.id : disk.block);
    for (const std::string& role : disk.roles) {
        if (!unit.description.empty())
            unit.description += "; ";
        unit.description += role;
    }
    return unit;
}

class Disks {
public:
    Disks() : _devices(readScsiDevices()) {}

    // Those behind hardware controllers.
    void addControlled() {
        for (const RaidController& controller : findRaidControllers(_devices)) {
            for (const ScsiDevice& device : _devices) {
                if (controller.has(device) && device.isDisk && !device.isVolume) {
                    Disk& disk = _find({device.address, device.block, device.folder, {}});
                    disk.roles.push_back("behind RAID controller " + controller.address);
                }
            }
        }
    }

    void addMembers() {
        for (const MdMember& member : readMdMembers()) {
            for (const std::string& block : disksBelow(member.block))
                _find(_diskOf(block)).roles.push_back(member.role);
        }
    }

    std::vector<RaidUnit> units() {
        std::vector<RaidUnit> units;
        for (Disk& disk : _disks) {
            const std::string slot = _slotOf(disk.folder);
            if (!slot.empty())
                disk.roles.push_back(slot);
            units.push_back(_unitOf(disk));
        }
        return units;
    }

private:
    Disk _diskOf(const std::string& block) const {
        const auto found =
            std::find_if(_devices.begin(), _devices.end(),
                         [&](const ScsiDevice& device) { return device.block == block; });
        if (found != _devices.end())
            return {found->address, block, found->folder, {}};
        return {block, block, pathIn(pathIn(MachinePaths::blockDevices(), block), "device"), {}};
    }

    // The disk of that id that is listed, or that one from now on.
    Disk& _find(const Disk& disk) {
        const auto found = std::find_if(_disks.begin(), _disks.end(),
                                        [&](const Disk& other) { return other.id == disk.id; });
        if (found != _disks.end())
            return *found;
        _disks.push_back(disk);
        return _disks.back();
    }

    std::vector<ScsiDevice> _devices;
    std::vector<Disk> _disks;
};

}  // namespace

std::vector<RaidUnit> readRaidDisks() {
    Disks disks;
    disks.addControlled();
    disks.addMembers();
    return disks.units();
}

}  // namespace QZ
