// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RaidControllers.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <system_error>

#include "MachinePaths.h"
#include "SysFolder.h"

namespace QZ {

namespace fs = std::filesystem;

namespace {

// Base class and subclass (PCI Code and ID Assignment 1.11, 1.2): mass storage, RAID controller.
constexpr unsigned RaidClass = 0x0104;

// Domain, bus, device and function as the kernel writes them: "0000:03:00.0". A domain may have
// more than four digits.
bool _isPciAddress(const std::string& name) {
    constexpr std::string_view form = ":hh:hh.h";
    const std::size_t colon = name.find(':');
    if (colon == std::string::npos || colon < 4 || name.size() - colon != form.size())
        return false;
    const auto isHex = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
    if (!std::all_of(name.begin(), name.begin() + std::ptrdiff_t(colon), isHex))
        return false;
    return std::equal(form.begin(), form.end(), name.begin() + std::ptrdiff_t(colon),
                      [&](char wanted, char c) { return wanted == 'h' ? isHex(c) : c == wanted; });
}

// The nearest PCI board above a host: the kernel's link to a host leads to where it is plugged in.
fs::path _boardOf(const std::string& host) {
    std::error_code error;
    fs::path folder = fs::canonical(MachinePaths::scsiHosts() + '/' + host, error);
    if (error)
        return {};
    for (; folder.has_relative_path(); folder = folder.parent_path()) {
        if (_isPciAddress(folder.filename().string()))
            return folder;
    }
    return {};
}

std::optional<unsigned> _hostNumber(const std::string& name) {
    constexpr std::string_view prefix = "host";
    if (name.compare(0, prefix.size(), prefix) != 0)
        return std::nullopt;
    unsigned number = 0;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + prefix.size(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

}  // namespace

bool RaidController::has(const ScsiDevice& device) const {
    return std::find(hosts.begin(), hosts.end(), device.host) != hosts.end();
}

std::vector<RaidController> findRaidControllers(const std::vector<ScsiDevice>& devices) {
    std::vector<RaidController> boards;
    for (const std::string& name : entriesOf(MachinePaths::scsiHosts())) {
        const fs::path folder = _boardOf(name);
        const auto host = _hostNumber(name);
        if (folder.empty() || !host)
            continue;
        auto board = std::find_if(boards.begin(), boards.end(), [&](const RaidController& other) {
            return other.folder == folder.string();
        });
        if (board == boards.end()) {
            boards.push_back({folder.filename().string(), folder.string(), {}});
            board = std::prev(boards.end());
        }
        board->hosts.push_back(*host);
    }
    const auto isNone = [&](const RaidController& board) {
        const unsigned classCode = readNumber(board.folder, "class", 16).value_or(0);
        return classCode >> 8U != RaidClass &&
               std::none_of(devices.begin(), devices.end(), [&](const ScsiDevice& device) {
                   return device.isOfRaid && board.has(device);
               });
    };
    boards.erase(std::remove_if(boards.begin(), boards.end(), isNone), boards.end());
    return boards;
}

}  // namespace QZ
