// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PartInfoFactory.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <cstring>

#include "Descriptor.h"
#include "DeviceParts.h"
#include "FirmwareParts.h"
#include "InventoryMachine.h"

namespace QZ {
namespace {

using EntryPoint = SmBiosBuilder::EntryPoint;
using Texts = std::vector<std::string>;

class PartList : public InventoryMachine {
protected:
    // Each part as "tag|manufacturer|model|serial|version".
    static Texts list() {
        Texts texts;
        const std::list<PartInfo*> parts = PartInfoFactory::newList();
        for (const PartInfo* part : parts) {
            texts.push_back(_describe(*part));
        }
        PartInfoFactory::deleteList(parts);
        return texts;
    }

    void writeWholeMachine(unsigned char minorVersion) const {
        SmBiosBuilder firmware(EntryPoint::Version2, 2, minorVersion);
        addMemory(firmware, "DIMM 1", {"Modules", "", "", "M-0"}, "P");
        addEnclosure(firmware, {"Cases", "", "2U", "C-0"});
        addBaseBoard(firmware, {"Boards", "Main", "A", "B-0"});
        addBaseBoard(firmware, {"Boards", "Riser", "B", "B-1"}, daughterBoard);
        addMemory(firmware, "DIMM 2", {"Modules", "", "", "M-1"}, "P");
        addSystem(firmware, {"Corp", "Server", "04", "S-0"}, std::string(16, '\x11'));
        write(firmware.addEnd());
        writeFile("proc/cpuinfo", "vendor_id\t: Makers\nmodel name\t: CPU 1\n");
        writeFile("proc/ide/hdb/identify", IdentifyBuilder::drive("IDE 1", "I-0").build());
        writeFile("proc/ide/hdd/identify", IdentifyBuilder::drive("IDE 2", "I-1").build());
        writeFile("etc/X11/XF86Config",
                  "Section \"Device\"\nIdentifier Card\nVendorName Cards\nEndSection\n"
                  "Section \"Monitor\"\nIdentifier Screen\nVendorName Screens\nEndSection\n");
        writeScsiDisk(root(), 'c', "Disks", "Disk 1", "D-0");
        writeScsiDisk(root(), 'x', "Disks", "Disk 2", "D-1");
    }

private:
    static std::string _describe(const PartInfo& part) {
        std::string all;
        std::string text;
        for (const auto get : {&PartInfo::getTag, &PartInfo::getManufacturer, &PartInfo::getModel,
                               &PartInfo::getSerialNumber, &PartInfo::getVersion}) {
            (part.*get)(text);
            all += (all.empty() ? "" : "|") + text;
        }
        return all;
    }
};

TEST_F(PartList, ListsAllPartsInTheirOrder) {
    writeWholeMachine(7);
    EXPECT_EQ(list(),
              (Texts{"System|Corp|Server|S-0|04", "BaseBoard0|Boards|Main|B-0|A",
                     "BaseBoard1|Boards|Riser|B-1|B", "SystemEnclosure0|Cases||C-0|2U",
                     "Memory0|Modules||M-0|", "Memory1|Modules||M-1|", "Processor0|Makers|CPU 1||",
                     "IDEDevice0||IDE 1|I-0|", "IDEDevice1||IDE 2|I-1|",
                     "Monitor0|Screens|Screen||", "VideoCard0|Cards|Card||",
                     "SCSIDevice0|Disks|Disk 1|D-0|", "SCSIDevice1|Disks|Disk 2|D-1|"}));
}

TEST_F(PartList, StartsWithANamelessSystemOnAMachineWithoutFirmware) {
    EXPECT_EQ(list(), Texts{"System||||"});
}

TEST_F(PartList, HasNoMemoryBelowVersion2Point3) {
    writeWholeMachine(2);
    const Texts parts = list();
    ASSERT_EQ(parts.size(), 11U);
    EXPECT_EQ(parts[3], "SystemEnclosure0|Cases||C-0|2U");
    EXPECT_EQ(parts[4], "Processor0|Makers|CPU 1||");
}

TEST_F(PartList, HasNoDisplayWithoutAnXServer) {
    writeFile("proc/cpuinfo", "");
    EXPECT_EQ(list(), (Texts{"System||||", "Processor0||||"}));
}

TEST_F(PartList, ListsAMonitorOrAVideoCardThatHasAName) {
    writeFile("etc/X11/XF86Config", "Section \"Monitor\"\nVendorName Screens\nEndSection\n");
    EXPECT_EQ(list(), (Texts{"System||||", "Monitor0|Screens|||"}));
    writeFile("etc/X11/XF86Config", "Section \"Device\"\nIdentifier Card\nEndSection\n");
    EXPECT_EQ(list(), (Texts{"System||||", "VideoCard0||Card||"}));
    writeFile("etc/X11/XF86Config", "Section \"Device\"\nIdentifier Unknown\nEndSection\n");
    EXPECT_EQ(list(), Texts{"System||||"});
}

TEST_F(PartList, CleansTextsButForQuotes) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    addSystem(firmware, {" Corp\x01 ", "\tServer", "\r\n", " S-0\t"}, std::string(16, '\x11'));
    write(firmware.addEnd());
    writeFile("etc/X11/XF86Config", "Section \"Monitor\"\nIdentifier \" M \" \t\nEndSection\n");
    EXPECT_EQ(list(), (Texts{"System|Corp|Server|S-0|", "Monitor0||\" M \"||"}));
}

TEST_F(PartList, ReadsTheMachineAfresh) {
    EXPECT_EQ(list().size(), 1U);
    writeWholeMachine(7);
    EXPECT_EQ(list().size(), 13U);
}

// How often a file is opened while it lives.
class OpenCount {
public:
    explicit OpenCount(const std::string& path) : _events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        // Events of one kind in a row would be told as one.
        EXPECT_GE(inotify_add_watch(_events.get(), path.c_str(), IN_OPEN | IN_CLOSE), 0);
    }

    int value() const {
        alignas(inotify_event) char bytes[4096];
        const ssize_t size = read(_events.get(), bytes, sizeof bytes);
        int count = 0;
        for (ssize_t at = 0; at < size; at += ssize_t{sizeof(inotify_event)}) {
            inotify_event event{};
            std::memcpy(&event, bytes + at, sizeof event);
            count += (event.mask & IN_OPEN) != 0 ? 1 : 0;
        }
        return count;
    }

private:
    Descriptor _events;
};

// Two of them would let a list tell of two machines.
TEST_F(PartList, TakesOneSnapshotOfTheFirmware) {
    writeWholeMachine(7);
    const OpenCount table(root() + "/sys/firmware/dmi/tables/DMI");
    EXPECT_EQ(list().size(), 13U);
    EXPECT_EQ(table.value(), 1);
}

TEST(PartInfos, AreEmptyUntilFilled) {
    EXPECT_TRUE(partinfos.empty());
}

}  // namespace
}  // namespace QZ
