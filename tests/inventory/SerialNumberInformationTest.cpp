// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SerialNumberInformation.h"

#include <climits>

#include "InventoryMachine.h"

namespace QZ {
namespace {

using EntryPoint = SmBiosBuilder::EntryPoint;

class SerialNumberInformationTest : public InventoryMachine {
protected:
    static void addBoard(SmBiosBuilder& firmware, unsigned char type, const std::string& mark) {
        firmware.add(type, 0x15)
            .text(4, "maker " + mark)
            .text(5, "product " + mark)
            .text(6, "version " + mark)
            .text(7, "serial " + mark);
    }

    static void addMemory(SmBiosBuilder& firmware, const std::string& mark) {
        firmware.add(17, 0x1B).text(0x17, "maker " + mark).text(0x18, "serial " + mark);
    }

    void writeMachine(unsigned char major, unsigned char minor) const {
        SmBiosBuilder firmware(EntryPoint::Version2, major, minor);
        addBoard(firmware, 1, "system");
        addBoard(firmware, 1, "second system");
        addBoard(firmware, 2, "board 0");
        addBoard(firmware, 3, "enclosure 0");
        addBoard(firmware, 2, "board 1");
        addBoard(firmware, 3, "enclosure 1");
        addMemory(firmware, "memory 0");
        addMemory(firmware, "memory 1");
        write(firmware.addEnd());
    }

    void expect(const std::string& mark) const {
        EXPECT_EQ(serial, "serial " + mark);
        EXPECT_EQ(maker, "maker " + mark);
    }

    void expectAllEmpty() const { EXPECT_EQ(serial + maker + product + version, ""); }

    std::string serial = "left over", maker = "left over", product = "left over",
                version = "left over";
};

TEST_F(SerialNumberInformationTest, GivesTheFirstSystem) {
    writeMachine(2, 7);
    ASSERT_TRUE(SerialNumberInformation().getSystem(serial, maker, product, version));
    expect("system");
    EXPECT_EQ(product, "product system");
    EXPECT_EQ(version, "version system");
}

TEST_F(SerialNumberInformationTest, GivesEachBaseBoardAndNoMore) {
    writeMachine(2, 7);
    const SerialNumberInformation information;
    for (int i = 0; i < 2; ++i) {
        const std::string mark = "board " + std::to_string(i);
        ASSERT_TRUE(information.getBaseBoard(i, serial, maker, product, version));
        expect(mark);
        EXPECT_EQ(product, "product " + mark);
        EXPECT_EQ(version, "version " + mark);
    }
    EXPECT_FALSE(information.getBaseBoard(2, serial, maker, product, version));
    expectAllEmpty();
}

TEST_F(SerialNumberInformationTest, GivesEachEnclosureAndNoMore) {
    writeMachine(2, 7);
    const SerialNumberInformation information;
    for (int i = 0; i < 2; ++i) {
        const std::string mark = "enclosure " + std::to_string(i);
        ASSERT_TRUE(information.getSystemEnclosure(i, serial, maker, version));
        expect(mark);
        EXPECT_EQ(version, "version " + mark);
    }
    EXPECT_FALSE(information.getSystemEnclosure(2, serial, maker, version));
    EXPECT_EQ(serial + maker + version, "");
}

TEST_F(SerialNumberInformationTest, GivesEachMemoryDeviceAndNoMore) {
    writeMachine(2, 7);
    const SerialNumberInformation information;
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(information.getMemory(i, serial, maker));
        expect("memory " + std::to_string(i));
    }
    EXPECT_FALSE(information.getMemory(2, serial, maker));
    EXPECT_EQ(serial + maker, "");
}

TEST_F(SerialNumberInformationTest, GivesNoMemoryBelowVersion2Point3) {
    const struct {
        unsigned char major, minor;
        bool answers;
    } versions[] = {{0, 0, false}, {1, 9, false}, {2, 0, false}, {2, 2, false},
                    {2, 3, true},  {2, 8, true},  {3, 0, true},  {3, 2, true}};
    for (const auto& smbios : versions) {
        writeMachine(smbios.major, smbios.minor);
        const SerialNumberInformation information;
        for (int i = 0; i < 2; ++i) {
            serial = maker = "left over";
            EXPECT_EQ(information.getMemory(i, serial, maker), smbios.answers)
                << int(smbios.major) << "." << int(smbios.minor);
            EXPECT_EQ(serial.empty(), !smbios.answers);
            EXPECT_EQ(maker.empty(), !smbios.answers);
        }
    }
}

TEST_F(SerialNumberInformationTest, LeavesATextEmptyThatTheStructureDoesNotHave) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    firmware.add(1, 8).text(4, "maker").byte(7, 0).byte(5, 9);
    write(firmware.addEnd());
    EXPECT_TRUE(SerialNumberInformation().getSystem(serial, maker, product, version));
    EXPECT_EQ(serial, "");
    EXPECT_EQ(maker, "maker");
    EXPECT_EQ(product, "");
    EXPECT_EQ(version, "");
}

TEST_F(SerialNumberInformationTest, LeavesATextEmptyWhoseFieldLiesBeyondTheStructure) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    firmware.add(17, 0x18).text(0x17, "maker").byte(0x14, 1);
    write(firmware.addEnd());
    EXPECT_TRUE(SerialNumberInformation().getMemory(0, serial, maker));
    EXPECT_EQ(serial, "");
    EXPECT_EQ(maker, "maker");
}

TEST_F(SerialNumberInformationTest, PassesTextsOnAsTheyAre) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    firmware.add(1, 8).text(7, " \x01\t S-1\xFF ").text(4, " ");
    write(firmware.addEnd());
    EXPECT_TRUE(SerialNumberInformation().getSystem(serial, maker, product, version));
    EXPECT_EQ(serial, " \x01\t S-1\xFF ");
    EXPECT_EQ(maker, " ");
}

TEST_F(SerialNumberInformationTest, FindsNothingAtANegativeIndex) {
    writeMachine(2, 7);
    const SerialNumberInformation information;
    for (const int index : {-1, INT_MIN}) {
        EXPECT_FALSE(information.getBaseBoard(index, serial, maker, product, version));
        expectAllEmpty();
        EXPECT_FALSE(information.getSystemEnclosure(index, serial, maker, version));
        EXPECT_FALSE(information.getMemory(index, serial, maker));
    }
}

TEST_F(SerialNumberInformationTest, FindsNothingOnAMachineWithoutFirmware) {
    const SerialNumberInformation information;
    EXPECT_FALSE(information.getSystem(serial, maker, product, version));
    expectAllEmpty();
    EXPECT_FALSE(information.getBaseBoard(0, serial, maker, product, version));
    EXPECT_FALSE(information.getSystemEnclosure(0, serial, maker, version));
    EXPECT_FALSE(information.getMemory(0, serial, maker));
}

TEST_F(SerialNumberInformationTest, ReportsNoBattery) {
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    firmware.add(22, 0x1A).text(4, "place").text(5, "maker").text(7, "serial");
    write(firmware.addEnd());
    const SerialNumberInformation information;
    for (const int index : {-1, 0, 1}) {
        serial = maker = product = "left over";
        EXPECT_FALSE(information.getPortableBattery(index, serial, maker, product));
        EXPECT_EQ(serial + maker + product, "");
    }
}

TEST_F(SerialNumberInformationTest, KeepsItsSnapshot) {
    writeMachine(2, 7);
    const SerialNumberInformation information;
    write(SmBiosBuilder(EntryPoint::Version3, 3, 0).addEnd());
    EXPECT_TRUE(information.getBaseBoard(1, serial, maker, product, version));
    expect("board 1");
    EXPECT_FALSE(SerialNumberInformation().getBaseBoard(0, serial, maker, product, version));
}

}  // namespace
}  // namespace QZ
