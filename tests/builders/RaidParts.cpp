// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RaidParts.h"

#include <filesystem>

#include "DeviceParts.h"
#include "SmBiosBuilder.h"

namespace {

namespace fs = std::filesystem;

const std::string _hosts = "/sys/class/scsi_host/";
const std::string _scsi = "/sys/class/scsi_device/";
const std::string _blocks = "/sys/block/";
const std::string _boards = "/sys/devices/pci0000:00/";

std::string _hostFolder(const std::string& board, int number) {
    const std::string host = "host" + std::to_string(number);
    return _boards + board + '/' + host + "/scsi_host/" + host;
}

// A keyword of two letters and its data.
std::string _field(const std::string& keyword, const std::string& text) {
    return text.empty() ? "" : keyword + char(text.size()) + text;
}

// A large resource.
std::string _resource(char tag, const std::string& data) {
    return std::string(1, tag) + char(data.size() & 0xFFU) + char(data.size() >> 8U) + data;
}

}  // namespace

RaidBuilder& RaidBuilder::_write(const std::string& file, const std::string& text) {
    writeTestFile(_root + file, text);
    return *this;
}

RaidBuilder& RaidBuilder::scsiDisk(const ScsiDisk& disk) {
    const auto padded = [](std::string text, std::size_t width) {
        text.resize(std::max(width, text.size()), ' ');
        return text + '\n';
    };
    scsiAttribute(disk.address, "type", disk.type + '\n');
    scsiAttribute(disk.address, "vendor", padded(disk.vendor, 8));
    scsiAttribute(disk.address, "model", padded(disk.model, 16));
    if (!disk.serial.empty())
        scsiAttribute(disk.address, "vpd_pg80", serialNumberReply(disk.serial));
    if (!disk.block.empty()) {
        scsiAttribute(disk.address, "block/" + disk.block + "/size", "1953525168\n");
        // The same folder by another way, as far as anybody asks.
        blockAttribute(disk.block, "type", disk.type + '\n');
    }
    return *this;
}

RaidBuilder& RaidBuilder::scsiAttribute(const std::string& address, const std::string& name,
                                        const std::string& text) {
    return _write(_scsi + address + "/device/" + name, text);
}

RaidBuilder& RaidBuilder::slot(const std::string& address, const std::string& name, bool isFaulty) {
    return scsiAttribute(address, "enclosure_device:" + name + "/fault", isFaulty ? "1\n" : "0\n");
}

RaidBuilder& RaidBuilder::blockAttribute(const std::string& block, const std::string& name,
                                         const std::string& text) {
    return _write(_blocks + block + "/device/" + name, text);
}

RaidBuilder& RaidBuilder::partition(const std::string& block, const std::string& name) {
    return _write(_blocks + block + '/' + name + "/partition", "1\n");
}

RaidBuilder& RaidBuilder::array(const Array& array) {
    const std::string folder = _blocks + array.name + "/md/";
    _write(folder + "level", array.level + '\n');
    return _write(folder + "degraded", std::to_string(array.degraded) + '\n');
}

RaidBuilder& RaidBuilder::member(const std::string& array, const std::string& block,
                                 const std::string& state, const std::string& slot) {
    const std::string folder = _blocks + array + "/md/dev-" + block + '/';
    _write(folder + "state", state + '\n');
    _write(folder + "slot", slot + '\n');
    return _write(_blocks + array + "/slaves/" + block + "/dev", "8:1\n");
}

RaidBuilder& RaidBuilder::board(const Board& board) {
    const std::string folder = _boards + board.address + '/';
    const auto write = [&](const char* name, const std::string& text) {
        _write(folder + name, "0x" + text + '\n');
    };
    _write(folder + "class", board.classCode + '\n');
    write("vendor", board.numbers.substr(0, 4));
    write("device", board.numbers.substr(5));
    write("subsystem_vendor", board.subsystem.substr(0, 4));
    write("subsystem_device", board.subsystem.substr(5));
    return board.vitalProductData.empty() ? *this : _write(folder + "vpd", board.vitalProductData);
}

RaidBuilder& RaidBuilder::host(const std::string& board, int number, const std::string& driver) {
    const std::string folder = _hostFolder(board, number);
    _write(folder + "/proc_name", driver + '\n');
    fs::create_directories(_root + _hosts);
    fs::create_directory_symlink("../.." + folder.substr(4),
                                 _root + _hosts + "host" + std::to_string(number));
    return *this;
}

RaidBuilder& RaidBuilder::hostAttribute(int number, const std::string& name,
                                        const std::string& text) {
    return _write(_hosts + "host" + std::to_string(number) + '/' + name, text + '\n');
}

RaidBuilder& RaidBuilder::volume(const std::string& address) {
    return _write("/sys/class/raid_devices/" + address + "/level", "raid1\n");
}

RaidBuilder& RaidBuilder::pciNames(const std::string& list) {
    return _write("/usr/share/misc/pci.ids", list);
}

std::string pciVpd(const std::string& product, const std::string& partNumber,
                   const std::string& serialNumber) {
    return _resource('\x82', product) +
           _resource('\x90', _field("PN", partNumber) + _field("SN", serialNumber) +
                                 _field("RV", std::string(1, '\0'))) +
           '\x78';
}
