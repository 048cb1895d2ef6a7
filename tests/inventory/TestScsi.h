// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ScsiTransport.h"

// SCSI disks made of replies, in the machine's place for as long as it lives. A disk answers the
// commands that it has a reply for and refuses all others.
class TestScsi final : public QZ::ScsiTransport {
public:
    // Replies by the name of their command.
    using Disk = std::map<std::string, std::string>;

    std::map<std::string, Disk> disks;  // by path; others cannot be opened

    // What was asked, in order.
    std::vector<std::string> opened;
    std::vector<QZ::ScsiRequest> sent;
    int openDisks = 0;

    std::unique_ptr<QZ::ScsiDevice> open(const std::string& path) override {
        opened.push_back(path);
        const auto disk = disks.find(path);
        if (disk == disks.end()) {
            return nullptr;
        }
        return std::make_unique<Device>(*this, disk->second);
    }

private:
    class Device final : public QZ::ScsiDevice {
    public:
        Device(TestScsi& scsi, const Disk& disk) : _scsi(scsi), _disk(disk) { ++_scsi.openDisks; }
        ~Device() override { --_scsi.openDisks; }
        Device(const Device&) = delete;
        Device& operator=(const Device&) = delete;

        int sendCommand(QZ::ScsiRequest& request) override {
            _scsi.sent.push_back(request);
            const auto reply = _disk.find(QZ::recordedReplyName(request.data));
            if (reply == _disk.end()) {
                return 0x08000002;  // check condition, as the kernel says it
            }
            std::memset(request.data, 0, request.outputLength);
            std::memcpy(request.data, reply->second.data(), reply->second.size());
            return 0;
        }

    private:
        TestScsi& _scsi;
        const Disk& _disk;
    };

    QZ::ScsiTransportReplacement _replacement{*this};
};
