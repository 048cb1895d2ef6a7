// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PartInfoFactory.h"

#include <memory>
#include <string>
#include <utility>

#include "IdeProbe.h"
#include "MonitorProbe.h"
#include "ProcessorProbe.h"
#include "ScsiProbe.h"
#include "SerialNumberInformation.h"

namespace QZ {
namespace {

// Parts in the making, deleted if their making fails.
class PartList {
public:
    PartList() = default;
    ~PartList() { PartInfoFactory::deleteList(_parts); }
    PartList(const PartList&) = delete;
    PartList& operator=(const PartList&) = delete;

    void add(const std::string& tag, const std::string& manufacturer, const std::string& model,
             const std::string& serial, const std::string& version) {
        auto part = std::make_unique<PartInfo>(manufacturer, model, serial, tag, version);
        _parts.push_back(part.get());
        (void)part.release();
    }

    std::list<PartInfo*> release() { return std::exchange(_parts, {}); }

private:
    std::list<PartInfo*> _parts;
};

const std::string _none;

std::string _tag(const char* kind, int index) {
    return kind + std::to_string(index);
}

void _addFirmwareParts(PartList& parts) {
    const SerialNumberInformation information;
    std::string serial;
    std::string manufacturer;
    std::string model;
    std::string version;
    (void)information.getSystem(serial, manufacturer, model, version);
    parts.add("System", manufacturer, model, serial, version);
    for (int i = 0; information.getBaseBoard(i, serial, manufacturer, model, version); ++i) {
        parts.add(_tag("BaseBoard", i), manufacturer, model, serial, version);
    }
    for (int i = 0; information.getSystemEnclosure(i, serial, manufacturer, version); ++i) {
        parts.add(_tag("SystemEnclosure", i), manufacturer, _none, serial, version);
    }
    for (int i = 0; information.getMemory(i, serial, manufacturer); ++i) {
        parts.add(_tag("Memory", i), manufacturer, _none, serial, _none);
    }
}

void _addProcessor(PartList& parts) {
    CPUInfo info;
    if (getCPUInfo(info) != 0) {
        // One entry stands for all processors.
        parts.add(_tag("Processor", 0), info.vendor, info.modelName, _none, _none);
    }
}

void _addIdeDrives(PartList& parts) {
    std::vector<IDEInfo> drives;
    getIDEInfoDirect(drives);
    int index = 0;
    for (const IDEInfo& drive : drives) {
        parts.add(_tag("IDEDevice", index++), _none, drive.model, drive.serialNumber, _none);
    }
}

void _addDisplay(PartList& parts) {
    MonitorInfo info;
    if (getMonitorInfo(info) == 0) {
        return;
    }
    if (!info.monitorVendor.empty() || !info.monitorModel.empty()) {
        parts.add(_tag("Monitor", 0), info.monitorVendor, info.monitorModel, _none, _none);
    }
    if (!info.videoCardVendor.empty() || !info.videoCardModel.empty()) {
        parts.add(_tag("VideoCard", 0), info.videoCardVendor, info.videoCardModel, _none, _none);
    }
}

void _addScsiDisks(PartList& parts) {
    std::vector<SCSIInfo> disks;
    getSCSIInfo(disks);
    int index = 0;
    for (const SCSIInfo& disk : disks) {
        parts.add(_tag("SCSIDevice", index++), disk.manufacturer, disk.model, disk.serialNumber,
                  _none);
    }
}

}  // namespace

std::vector<PartInfo*> partinfos;

std::list<PartInfo*> PartInfoFactory::newList() {
    PartList parts;
    _addFirmwareParts(parts);
    _addProcessor(parts);
    _addIdeDrives(parts);
    _addDisplay(parts);
    _addScsiDisks(parts);
    return parts.release();
}

// By value, as callers outside this house know it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void PartInfoFactory::deleteList(std::list<PartInfo*> parts) {
    for (PartInfo* part : parts) {
        delete part;
    }
}

}  // namespace QZ
