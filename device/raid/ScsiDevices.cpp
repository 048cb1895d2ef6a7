// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ScsiDevices.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "MachinePaths.h"
#include "SysFolder.h"

namespace QZ {

namespace {

// Peripheral device types: a disk, and one whose zones are written in turn (ZBC-2).
constexpr unsigned DirectAccess = 0x00;
constexpr unsigned HostManagedZoned = 0x14;
constexpr unsigned NoDevice = 0x1F;

// Drivers that put volumes on channels of their own, and nothing else there.
constexpr struct {
    const char* driver;
    unsigned firstChannel;
    unsigned lastChannel;
} _volumeChannels[] = {
    {"aacraid", 0, 0}, {"megaraid_sas", 2, 3}, {"mpt2sas", 1, 1}, {"mpt3sas", 1, 1}};

// The number in front of a colon, and moves behind it.
std::optional<unsigned> _takeNumber(const char*& at, const char* end) {
    unsigned number = 0;
    const auto [stop, error] = std::from_chars(at, end, number);
    if (error != std::errc() || stop == end || *stop != ':')
        return std::nullopt;
    at = stop + 1;
    return number;
}

bool _isVolumeChannel(const std::string& driver, unsigned channel) {
    return std::any_of(std::begin(_volumeChannels), std::end(_volumeChannels),
                       [&](const auto& row) {
                           return driver == row.driver && channel >= row.firstChannel &&
                                  channel <= row.lastChannel;
                       });
}

ScsiDevice _read(const std::string& address, unsigned host, unsigned channel) {
    ScsiDevice device;
    device.address = address;
    device.host = host;
    device.channel = channel;
    device.folder = MachinePaths::scsiDevices() + '/' + address + "/device";
    const std::vector<std::string> blocks = entriesOf(device.folder + "/block");
    device.block = blocks.empty() ? "" : blocks.front();
    const unsigned type = readNumber(device.folder, "type", 10).value_or(NoDevice);
    device.isDisk = type == DirectAccess || type == HostManagedZoned;
    // "N/A" is a disk that the controller hands through.
    const std::string level = readAttribute(device.folder, "raid_level");
    const bool isListed = hasEntry(MachinePaths::raidVolumes(), address);
    const std::string driver =
        readAttribute(MachinePaths::scsiHosts() + "/host" + std::to_string(host), "proc_name");
    device.isOfRaid = !level.empty() || isListed;
    device.isVolume =
        (!level.empty() && level != "N/A") || isListed || _isVolumeChannel(driver, channel);
    return device;
}

}  // namespace

std::vector<ScsiDevice> readScsiDevices() {
    std::vector<ScsiDevice> devices;
    for (const std::string& address : entriesOf(MachinePaths::scsiDevices())) {
        const char* at = address.data();
        const char* const end = at + address.size();
        const auto host = _takeNumber(at, end);
        const auto channel = _takeNumber(at, end);
        if (host && channel)
            devices.push_back(_read(address, *host, *channel));
    }
    return devices;
}

}  // namespace QZ
