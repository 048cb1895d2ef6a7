// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RaidControllers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RaidParts.h"
#include "RaidUnits.h"
#include "TestMachine.h"

using namespace QZ;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const _names =
    "1000  Example Chips\n"
    "\t005d  EX3108\n"
    "\t\t1028 1f43  Eight-Port RAID Card\n"
    "1028  Example Corp\n";

class RaidControllerUnits : public testing::Test {
protected:
    // The board 0000:03:00.0 with one host.
    void board(const std::string& classCode, const std::string& driver,
               const std::string& productData = "") {
        raid.board({_address, classCode, "1000:005d", "1028:1f43", productData});
        raid.host(_address, 0, driver).pciNames(_names);
    }

    static std::vector<std::string> diskIds() {
        std::vector<std::string> ids;
        for (const RaidUnit& unit : readRaidDisks())
            ids.push_back(unit.id);
        return ids;
    }

    const std::string _address = "0000:03:00.0";
    const TestMachine machine;
    RaidBuilder raid{machine.folder().path()};
};

}  // namespace

TEST_F(RaidControllerUnits, AreNoneWithoutTheKernelsFolders) {
    EXPECT_THAT(readRaidControllers(), IsEmpty());
}

TEST_F(RaidControllerUnits, AreThereWithoutDisks) {
    board("0x010400", "megaraid_sas");
    ASSERT_EQ(1U, readRaidControllers().size());
    const RaidUnit unit = readRaidControllers()[0];
    EXPECT_EQ("0000:03:00.0", unit.id);
    EXPECT_EQ("1028:1f43", unit.fru);
    EXPECT_EQ("Eight-Port RAID Card", unit.model);
    EXPECT_EQ("Example Corp", unit.manufacturer);
    EXPECT_EQ("RAID controller 0000:03:00.0", unit.name);
    EXPECT_EQ("EX3108, driver megaraid_sas, no disks to be seen", unit.description);
    EXPECT_THAT(diskIds(), IsEmpty());
}

TEST_F(RaidControllerUnits, AreKnownByTheirProductData) {
    board("0x010400", "megaraid_sas", pciVpd("RAID 8i", "03-25420-09A", "SV53300001"));
    EXPECT_EQ("03-25420-09A", readRaidControllers().at(0).fru);
    EXPECT_EQ("RAID 8i", readRaidControllers().at(0).model);
}

TEST_F(RaidControllerUnits, AreKnownByWhatTheirDriverTells) {
    board("0x010400", "mpt3sas", pciVpd("other", "other", "other"));
    raid.hostAttribute(0, "board_assembly", "03-1-A").hostAttribute(0, "board_name", "SAS 8i");
    EXPECT_EQ("03-1-A", readRaidControllers().at(0).fru);
    EXPECT_EQ("SAS 8i", readRaidControllers().at(0).model);
}

TEST_F(RaidControllerUnits, HaveNumbersWhereNobodyHasNames) {
    board("0x010400", "megaraid_sas");
    raid.pciNames("");
    const RaidUnit unit = readRaidControllers().at(0);
    EXPECT_EQ("PCI device 1000:005d", unit.model);
    EXPECT_EQ("", unit.manufacturer);
}

TEST_F(RaidControllerUnits, AreKnownByTheirChipWithoutASubsystem) {
    raid.board({_address, "0x010400", "1000:005d", "0000:0000", ""});
    raid.host(_address, 0, "megaraid_sas").pciNames("");
    EXPECT_EQ("1000:005d", readRaidControllers().at(0).fru);
    raid.board({_address, "0x010400", "hell:1000", "what:ever", ""});
    EXPECT_EQ("", readRaidControllers().at(0).fru);
    EXPECT_EQ("PCI device", readRaidControllers().at(0).model);
}

TEST_F(RaidControllerUnits, AreNoPlainAdapters) {
    board("0x010700", "mpt3sas");
    raid.scsiDisk({"0:0:0:0", "sda", "EXAMPLE", "EX600", "S1"});
    EXPECT_THAT(readRaidControllers(), IsEmpty());
    EXPECT_THAT(diskIds(), IsEmpty());
}

TEST_F(RaidControllerUnits, AreAdaptersWhoseDriverSpeaksOfRaid) {
    board("0x010700", "smartpqi");
    raid.scsiDisk({"0:0:0:0", "sda", "EXAMPLE", "EX600", "S1"});
    raid.scsiAttribute("0:0:0:0", "raid_level", "N/A\n");
    raid.scsiDisk({"0:1:0:0", "sdb", "EXAMPLE", "LOGICAL", "S2"});
    raid.scsiAttribute("0:1:0:0", "raid_level", "RAID-1(1+0)\n");
    ASSERT_EQ(1U, readRaidControllers().size());
    EXPECT_EQ("EX3108, driver smartpqi, 1 disk", readRaidControllers()[0].description);
    EXPECT_THAT(diskIds(), ElementsAre("0:0:0:0"));
}

TEST_F(RaidControllerUnits, AreAdaptersWithAVolumeOfTheKernelsList) {
    board("0x010700", "mptsas");
    raid.scsiDisk({"0:3:0:0", "sda", "EXAMPLE", "VOLUME", ""}).volume("0:3:0:0");
    raid.scsiDisk({"0:0:4:0", "", "EXAMPLE", "EX600", "S1"});
    EXPECT_EQ(1U, readRaidControllers().size());
    EXPECT_THAT(diskIds(), ElementsAre("0:0:4:0"));
}

TEST_F(RaidControllerUnits, HaveTheirDisksWithoutVolumesAndEnclosures) {
    board("0x010400", "megaraid_sas");
    raid.scsiDisk({"0:0:10:0", "", "EXAMPLE", "EX600", "S10"}).slot("0:0:10:0", "Slot 03", true);
    raid.scsiDisk({"0:0:9:0", "", "EXAMPLE", "EX600", "S9"}).slot("0:0:9:0", "Slot 02");
    raid.scsiDisk({"0:2:0:0", "sda", "EXAMPLE", "VOLUME", "V"});
    raid.scsiDisk({"0:0:32:0", "", "EXAMPLE", "BACKPLANE", "", "13"});
    raid.scsiDisk({"1:0:0:0", "sdb", "EXAMPLE", "ELSEWHERE", "E"});
    const std::vector<RaidUnit> disks = readRaidDisks();
    ASSERT_EQ(2U, disks.size());
    EXPECT_EQ("S9", disks[0].fru);
    EXPECT_EQ("Disk 0:0:9:0", disks[0].name);
    EXPECT_EQ("behind RAID controller 0000:03:00.0; in enclosure slot Slot 02",
              disks[0].description);
    EXPECT_EQ("behind RAID controller 0000:03:00.0; in enclosure slot Slot 03, reported as faulty",
              disks[1].description);
    EXPECT_EQ("EX3108, driver megaraid_sas, 2 disks", readRaidControllers().at(0).description);
}

TEST_F(RaidControllerUnits, AreEachThereOnceWhateverHostsTheyHave) {
    board("0x010400", "ahci");
    raid.host(_address, 1, "ahci");
    raid.board({"0000:04:00.0", "0x010400", "1000:005d", "1028:1f43", ""});
    raid.host("0000:04:00.0", 2, "ahci");
    raid.scsiDisk({"1:0:0:0", "sda", "ATA", "EXAMPLE SSD", "S1"});
    raid.array({"md0", "raid1"}).member("md0", "sda", "in_sync", "0");
    EXPECT_EQ(2U, readRaidControllers().size());
    ASSERT_EQ(1U, readRaidDisks().size());
    EXPECT_EQ("", readRaidDisks()[0].manufacturer);
    EXPECT_EQ("behind RAID controller 0000:03:00.0; member 0 of md0 (raid1)",
              readRaidDisks()[0].description);
}

TEST_F(RaidControllerUnits, TakeAnyFoldersOfTheMachine) {
    board("not a class", "");
    machine.folder().write("sys/class/scsi_host/host", "");
    machine.folder().write("sys/class/scsi_host/\xFF\x1B/proc_name", "x");
    machine.folder().write("sys/class/scsi_device/0:0/device/type", "0\n");
    machine.folder().write("sys/class/scsi_device/99999999999:0:0:0/device/type", "0\n");
    std::filesystem::create_symlink("nowhere", machine.folder().file("sys/class/scsi_host/host7"));
    std::filesystem::create_symlink("host8", machine.folder().file("sys/class/scsi_host/host8"));
    EXPECT_THAT(readRaidControllers(), IsEmpty());
    EXPECT_THAT(diskIds(), IsEmpty());
}
