// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// The kernel's folders of disks and controllers, as far as a RAID is told from them, below a root.
class RaidBuilder {
public:
    explicit RaidBuilder(const std::string& root) : _root(root) {}

    struct ScsiDisk {
        std::string address;  // "0:0:1:0"
        std::string block;    // "sda"; empty for none
        std::string vendor;
        std::string model;
        std::string serial;  // on page 80h; empty for no such page
        std::string type = "0";
    };

    // A SCSI device with its attributes, and its block device, padded as the kernel shows them.
    RaidBuilder& scsiDisk(const ScsiDisk& disk);
    // One more attribute of it, and its place in an enclosure.
    RaidBuilder& scsiAttribute(const std::string& address, const std::string& name,
                               const std::string& text);
    RaidBuilder& slot(const std::string& address, const std::string& name, bool isFaulty = false);

    // A block device that is no SCSI disk, with the attributes of its device.
    RaidBuilder& blockAttribute(const std::string& block, const std::string& name,
                                const std::string& text);
    RaidBuilder& partition(const std::string& block, const std::string& name);

    struct Array {
        std::string name;   // "md0"
        std::string level;  // "raid1"
        int degraded = 0;
    };
    RaidBuilder& array(const Array& array);
    // Slots are numbers, or "none".
    RaidBuilder& member(const std::string& array, const std::string& block,
                        const std::string& state, const std::string& slot);

    struct Board {
        std::string address;           // "0000:03:00.0"
        std::string classCode;         // "0x010400"
        std::string numbers;           // "1000:005d", the chip's vendor and device
        std::string subsystem;         // the same of the board
        std::string vitalProductData;  // empty for none
    };
    RaidBuilder& board(const Board& board);
    // A host behind the board, and one more attribute of a host.
    RaidBuilder& host(const std::string& board, int number, const std::string& driver);
    RaidBuilder& hostAttribute(int number, const std::string& name, const std::string& text);
    // The host's device of that address is a volume.
    RaidBuilder& volume(const std::string& address);

    // The list of PCI names, in its own format.
    RaidBuilder& pciNames(const std::string& list);

private:
    RaidBuilder& _write(const std::string& file, const std::string& text);

    std::string _root;
};

// Vital product data of a board (PCI Local Bus 3.0, appendix I) with these texts; empty for none.
std::string pciVpd(const std::string& product, const std::string& partNumber,
                   const std::string& serialNumber);
