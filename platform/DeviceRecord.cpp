// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DeviceRecord.h"

#include <filesystem>
#include <initializer_list>
#include <set>
#include <sstream>
#include <string>
#include <system_error>

#include "MachinePaths.h"

namespace QZ {

namespace {

namespace fs = std::filesystem;

using Names = std::initializer_list<const char*>;

constexpr Names DiskAttributes = {"type",       "vendor",   "model",  "name",
                                  "raid_level", "vpd_pg80", "serial", "wwid"};
constexpr Names HostAttributes = {"proc_name", "board_assembly", "board_name", "board_tracer",
                                  "model",     "serial_number",  "vendor"};
constexpr Names BoardAttributes = {
    "class", "vendor", "device", "subsystem_vendor", "subsystem_device", "vpd"};
// Which boards and partitions alone have.
constexpr const char* BoardMark = "subsystem_vendor";
constexpr const char* PartitionMark = "partition";

bool startsWith(const std::string& text, const char* start) {
    return text.rfind(start, 0) == 0;
}

bool hasEntry(const fs::path& folder, const char* name) {
    std::error_code error;
    return fs::exists(folder / name, error);
}

// Calls use(path, name) for each entry of a folder, if there is one.
template <class Use>
void forEntries(const fs::path& folder, Use use) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        use(entry->path(), entry->path().filename().string());
}

void recordFolder(const fs::path& folder, MachineRecord& record) {
    record.files[nameBelowRoot(folder) + '/'];
}

void recordAttributes(const fs::path& folder, Names names, MachineRecord& record) {
    for (const char* const name : names)
        recordFile(folder / name, record);
}

// What a disk is, its block devices, and the slot that it is in.
void recordDisk(const fs::path& folder, MachineRecord& record) {
    recordFolder(folder, record);
    recordAttributes(folder, DiskAttributes, record);
    forEntries(folder / "block",
               [&](const fs::path& block, const std::string&) { recordFolder(block, record); });
    forEntries(folder, [&](const fs::path& slot, const std::string& name) {
        if (startsWith(name, "enclosure_device:")) {
            recordFolder(slot, record);
            recordFile(slot / "fault", record);
        }
    });
}

void recordArray(const fs::path& folder, MachineRecord& record) {
    recordAttributes(folder, {"level", "degraded"}, record);
    forEntries(folder, [&](const fs::path& member, const std::string& name) {
        if (startsWith(name, "dev-")) {
            recordFolder(member, record);
            recordAttributes(member, {"state", "slot"}, record);
        }
    });
}

void recordBlock(const fs::path& folder, MachineRecord& record) {
    recordFolder(folder, record);
    recordFile(folder / "serial", record);
    if (hasEntry(folder, "device"))
        recordDisk(folder / "device", record);
    recordArray(folder / "md", record);
    forEntries(folder / "slaves",
               [&](const fs::path& below, const std::string&) { recordFolder(below, record); });
    forEntries(folder, [&](const fs::path& part, const std::string&) {
        recordFile(part / PartitionMark, record);
    });
}

// The kernel's "0x1028\n" as the list of PCI numbers has it.
std::string vendorIn(const std::string& text) {
    return text.size() > 6 ? text.substr(2, 4) : std::string();
}

// Of the list of PCI numbers what it has of the makers of boards and of their parts: a line for a
// maker, and lines behind tabs for what it makes. The whole is more than a megabyte.
void recordPciNames(MachineRecord& record) {
    std::set<std::string> makers;
    for (const auto& [name, content] : record.files) {
        const std::string attribute = fs::path(name).filename();
        if (attribute == "vendor" || attribute == "subsystem_vendor")
            makers.insert(vendorIn(content));
    }
    if (makers.empty())
        return;
    MachineRecord whole;
    recordFile(MachinePaths::pciNames(), whole);
    for (const auto& [name, content] : whole.files) {
        std::string& kept = record.files[name];
        std::istringstream lines(content);
        bool isWanted = false;
        for (std::string line; std::getline(lines, line);) {
            if (!startsWith(line, "\t"))
                isWanted = makers.count(line.substr(0, 4)) != 0;
            if (isWanted)
                kept += line + '\n';
        }
    }
}

// The link to a host tells the board that it is on.
void recordHost(const fs::path& host, MachineRecord& record) {
    std::error_code error;
    const fs::path root = fs::canonical(MachinePaths::root() + '/', error);
    const fs::path resolved = fs::canonical(host, error);
    if (error)
        return;
    const fs::path below = resolved.lexically_relative(root);
    if (below.empty() || *below.begin() == "..")
        return;
    const fs::path folder = fs::path(MachinePaths::root() + '/') / below;
    recordFolder(folder, record);
    if (fs::is_symlink(host, error))
        record.files[nameBelowRoot(host) + '@'] =
            folder.lexically_relative(host.parent_path()).string();
    recordAttributes(folder, HostAttributes, record);
    fs::path board = folder;
    while (board.string().size() > MachinePaths::root().size() + 1 && !hasEntry(board, BoardMark))
        board = board.parent_path();
    if (hasEntry(board, BoardMark))
        recordAttributes(board, BoardAttributes, record);
}

}  // namespace

void recordDevices(MachineRecord& record) {
    forEntries(MachinePaths::blockDevices(),
               [&](const fs::path& block, const std::string&) { recordBlock(block, record); });
    forEntries(MachinePaths::scsiDevices(), [&](const fs::path& device, const std::string&) {
        recordDisk(device / "device", record);
    });
    forEntries(MachinePaths::scsiHosts(),
               [&](const fs::path& host, const std::string&) { recordHost(host, record); });
    forEntries(MachinePaths::raidVolumes(),
               [&](const fs::path& volume, const std::string&) { recordFolder(volume, record); });
    recordPciNames(record);
}

}  // namespace QZ
