// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "RaidParts.h"
#include "RaidUnits.h"
#include "TestMachine.h"

using namespace QZ;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class RaidDisks : public testing::Test {
protected:
    // A SCSI disk "EXAMPLE EX600" whose serial number is "S" and its block device's name.
    void disk(const std::string& block, const std::string& address) {
        raid.scsiDisk({address, block, "EXAMPLE", "EX600", "S" + block});
    }

    // Of every disk, "name: description".
    static std::vector<std::string> descriptions() {
        std::vector<std::string> texts;
        for (const RaidUnit& unit : readRaidDisks())
            texts.push_back(unit.name + ": " + unit.description);
        return texts;
    }

    const TestMachine machine;
    RaidBuilder raid{machine.folder().path()};
};

}  // namespace

TEST_F(RaidDisks, AreNoneWithoutTheKernelsFolders) {
    EXPECT_THAT(readRaidDisks(), IsEmpty());
}

TEST_F(RaidDisks, AreThoseOfAnArrayWithTheirTexts) {
    disk("sda", "0:0:0:0");
    disk("sdb", "0:0:1:0");
    disk("sdc", "0:0:2:0");
    raid.array({"md0", "raid1"});
    raid.member("md0", "sda", "in_sync", "0").member("md0", "sdb", "in_sync,write_mostly", "1");
    ASSERT_EQ(2U, readRaidDisks().size());
    const RaidUnit first = readRaidDisks()[0];
    EXPECT_EQ("0:0:0:0", first.id);
    EXPECT_EQ("Ssda", first.fru);
    EXPECT_EQ("EX600", first.model);
    EXPECT_EQ("EXAMPLE", first.manufacturer);
    EXPECT_THAT(descriptions(), ElementsAre("Disk sda: member 0 of md0 (raid1)",
                                            "Disk sdb: member 1 of md0 (raid1)"));
}

TEST_F(RaidDisks, TellSparesFromMembersAndFromFaultyOnes) {
    for (const char* const name : {"sda", "sdb", "sdc", "sdd", "sde"})
        disk(name, std::string("0:0:") + name[2] + ":0");
    raid.array({"md127", "raid5", 1}).member("md127", "sda", "in_sync", "0");
    raid.member("md127", "sdb", "faulty", "none").member("md127", "sdc", "spare", "none");
    raid.member("md127", "sdd", "spare", "2").member("md127", "sde", "in_sync,journal", "none");
    EXPECT_THAT(descriptions(),
                ElementsAre("Disk sda: member 0 of md127 (raid5, degraded)",
                            "Disk sdb: faulty member of md127 (raid5, degraded)",
                            "Disk sdc: spare of md127 (raid5, degraded)",
                            "Disk sdd: rebuilding member 2 of md127 (raid5, degraded)",
                            "Disk sde: journal of md127 (raid5, degraded)"));
}

TEST_F(RaidDisks, AreNotThoseThatWereRemoved) {
    disk("sda", "0:0:0:0");
    disk("sdb", "0:0:1:0");
    raid.array({"md0", "raid1", 1}).member("md0", "sda", "in_sync", "0");
    EXPECT_THAT(descriptions(), ElementsAre("Disk sda: member 0 of md0 (raid1, degraded)"));
}

TEST_F(RaidDisks, AreEachThereOnceWhateverPartitionsTheyHave) {
    disk("sda", "0:0:0:0");
    raid.partition("sda", "sda1").partition("sda", "sda2");
    raid.array({"md10", "raid0"}).member("md10", "sda2", "in_sync", "0");
    raid.array({"md9", "raid1"}).member("md9", "sda1", "in_sync", "0");
    EXPECT_THAT(descriptions(),
                ElementsAre("Disk sda: member 0 of md9 (raid1); member 0 of md10 (raid0)"));
}

TEST_F(RaidDisks, AreThoseBelowArraysOfArrays) {
    disk("sda", "0:0:0:0");
    raid.array({"md0", "raid1"}).member("md0", "sda", "in_sync", "0");
    raid.array({"md1", "raid0"}).member("md1", "md0", "in_sync", "0");
    EXPECT_THAT(descriptions(),
                ElementsAre("Disk sda: member 0 of md0 (raid1); member 0 of md1 (raid0)"));
}

TEST_F(RaidDisks, AreNoFilesAndNothingThatWent) {
    machine.folder().write("sys/block/loop0/size", "8\n");
    raid.array({"md0", "raid1"});
    raid.member("md0", "loop0", "in_sync", "0").member("md0", "sdz1", "faulty", "1");
    // Which lies on itself, as nothing does.
    raid.member("md0", "md0", "in_sync", "2");
    EXPECT_THAT(readRaidDisks(), IsEmpty());
}

TEST_F(RaidDisks, AreKnownByTheirSerialNumberOnAnyBus) {
    raid.blockAttribute("nvme0n1", "model", "Example NVMe 2  \n");
    raid.blockAttribute("nvme0n1", "serial", "N0001  \n");
    raid.blockAttribute("vda", "vendor", "0x1af4\n");
    machine.folder().write("sys/block/vda/serial", "V0001\n");
    raid.blockAttribute("mmcblk0", "name", "EXCARD\n").blockAttribute("mmcblk0", "vendor", "ATA\n");
    raid.array({"md0", "raid1"});
    for (const char* const name : {"mmcblk0", "nvme0n1", "vda"})
        raid.member("md0", name, "in_sync", "0");
    const std::vector<RaidUnit> units = readRaidDisks();
    ASSERT_EQ(3U, units.size());
    EXPECT_EQ("EXCARD", units[0].fru);
    EXPECT_EQ("EXCARD", units[0].model);
    EXPECT_EQ("N0001", units[1].fru);
    EXPECT_EQ("Example NVMe 2", units[1].model);
    EXPECT_EQ("V0001", units[2].fru);
    EXPECT_EQ("", units[2].model);
    for (const RaidUnit& unit : units)
        EXPECT_EQ("", unit.manufacturer) << unit.id;
}

TEST_F(RaidDisks, AreKnownByTheirWorldWideNameWithoutASerialNumber) {
    raid.scsiDisk({"0:0:0:0", "sda", "EXAMPLE", "EX600", ""});
    raid.scsiAttribute("0:0:0:0", "wwid", "naa.5000c50012345678\n");
    // A page of another number.
    raid.scsiAttribute("0:0:0:0", "vpd_pg80", std::string("\x00\x83\x00\x02no", 6));
    raid.array({"md0", "raid1"}).member("md0", "sda", "in_sync", "0");
    EXPECT_EQ("naa.5000c50012345678", readRaidDisks().at(0).fru);
}

TEST_F(RaidDisks, TakeAnyTextsOfTheMachine) {
    raid.scsiDisk({"0:0:0:0", "sda", "<&\"'>\xFF", "\x1B[31m%s%n", std::string(251, '=')});
    raid.array({"md0", "\x1B]0;<raid>\xFF"}).member("md0", "sda", "in_sync", "99999999999999");
    raid.slot("0:0:0:0", "\xFF \x1B[2J");
    const RaidUnit unit = readRaidDisks().at(0);
    EXPECT_EQ("<&\"'>\xFF", unit.manufacturer);
    EXPECT_EQ(std::string(251, '='), unit.fru);
    EXPECT_EQ("member of md0 (\x1B]0;<raid>\xFF); in enclosure slot \xFF \x1B[2J",
              unit.description);
}
