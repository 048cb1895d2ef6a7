// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SerialNumberInstances.h"

#include "BuildPaths.h"
#include "DeviceParts.h"
#include "FirmwareParts.h"
#include "ProviderTest.h"

using namespace Pegasus;

namespace {

constexpr const char* _class = "TAVIRA_SerialNumberInformation";
const std::string _prefix = "TAVIRA|CorvanaAgent|SerialNumberInformation ";

class SerialNumbers : public ProviderTest {
protected:
    void writeSystem(const std::string& serial) const {
        SmBiosBuilder firmware(SmBiosBuilder::EntryPoint::Version3, 3, 0);
        addSystem(firmware, {"Corp", "Server", "04", serial}, std::string(16, '\x11'));
        firmware.addEnd().writeBelow(machine.folder().path());
    }

    // The serial number of the system as a client gets it.
    std::string delivered(const std::string& serial) {
        writeSystem(serial);
        const auto parts = enumerate(_class);
        return parts.empty() ? "no parts" : valueText(parts[0], "SerialNumber");
    }
};

TEST_F(SerialNumbers, DescribeEachPartInTheOrderOfTheList) {
    writeSystem("S-0");
    writeScsiDisk(machine.folder().path(), 'b', "Disks", "Disk 1", "D-0");
    const auto parts = enumerate(_class);
    ASSERT_EQ(parts.size(), 2U);
    const std::pair<const char*, const char*> expected[] = {
        {"Identifier", "TAVIRA|CorvanaAgent|SerialNumberInformation System"},
        {"Manufacturer", "Corp"},
        {"Model", "Server"},
        {"SerialNumber", "S-0"},
        {"Version", "04"},
        {"Name", "System"},
        {"Tag", "System"}};
    ASSERT_EQ(parts[0].getPropertyCount(), std::size(expected));
    Uint32 index = 0;
    for (const auto& [name, value] : expected) {
        EXPECT_TRUE(parts[0].getProperty(index).getName().equal(CIMName(name))) << name;
        EXPECT_EQ(parts[0].getProperty(index++).getType(), CIMTYPE_STRING) << name;
        EXPECT_EQ(valueText(parts[0], name), value);
    }
    EXPECT_EQ(valueText(parts[1], "Identifier"), _prefix + "SCSIDevice0");
    EXPECT_EQ(valueText(parts[1], "SerialNumber"), "D-0");
    EXPECT_EQ(valueText(parts[1], "Version"), "");
}

TEST_F(SerialNumbers, StillNameASystemWhoseTextsAreEmpty) {
    const auto parts = enumerate(_class);
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(parts[0].getPropertyCount(), 7U);
    EXPECT_EQ(valueText(parts[0], "SerialNumber"), "");
    EXPECT_EQ(valueText(parts[0], "Name"), "System");
}

TEST_F(SerialNumbers, AreKeyedByTheirIdentifier) {
    EXPECT_EQ(names("tavira_serialnumberinformation"),
              (std::vector<std::string>{
                  "//server.example/root/tavqz:tavira_serialnumberinformation.Identifier=\"" +
                  _prefix + "System\""}));
}

TEST_F(SerialNumbers, AreGotOneByOne) {
    writeScsiDisk(machine.folder().path(), 'a', "Disks", "Disk 1", "D-0");
    writeScsiDisk(machine.folder().path(), 'b', "Disks", "Disk 1", "D-1");
    const auto parts = get(_class + (".Identifier=\"" + _prefix) + "SCSIDevice1\"");
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(valueText(parts[0], "SerialNumber"), "D-1");
    EXPECT_TRUE(get(_class + (".Identifier=\"" + _prefix) + "SCSIDevice2\"").empty());
}

TEST_F(SerialNumbers, AreReadAfreshForEachRequest) {
    EXPECT_EQ(delivered("S-0"), "S-0");
    EXPECT_EQ(delivered("S-1"), "S-1");
}

// Texts of a machine are anybody's; a client gets characters that XML may carry.
TEST_F(SerialNumbers, ArriveAsTextFitForXml) {
    EXPECT_EQ(delivered("<&\"'>]]>"), "<&\"'>]]>");
    EXPECT_EQ(delivered("a\x01\t\r\n\x1F z"), "a z");
    EXPECT_EQ(delivered("\xFF"), "\xC3\xBF");
    EXPECT_EQ(delivered("\xC3\xA9\xC3("), "\xC3\xA9\xC3\x83(");
    EXPECT_EQ(delivered("\xEF\xBF\xBF"), "\xEF\xBF\xBD");
    EXPECT_EQ(delivered("\x7F"), "\x7F");
    EXPECT_EQ(delivered(std::string(256, '9')), std::string(256, '9'));
}

TEST_F(SerialNumbers, AnswerOnEveryTestMachine) {
    const std::pair<const char*, std::size_t> machines[] = {{"rack-server", 16},
                                                            {"old-server", 9},
                                                            {"damaged-firmware", 8},
                                                            {"hostile-texts", 9},
                                                            {"bare", 2}};
    for (const auto& [name, count] : machines) {
        const ScopedEnvironment root("TAVQZ_HOST_ROOT",
                                     std::string(TAVQZ_SOURCE_DIR "/tests/machines/") + name);
        EXPECT_EQ(enumerate(_class).size(), count) << name;
        EXPECT_EQ(names(_class).size(), count) << name;
    }
}

TEST(DeliverParts, DeliversNothingOfAnEmptyList) {
    Instances handler;
    QZ::deliverParts({}, CIMObjectPath(_class), handler);
    EXPECT_TRUE(handler.all.empty());
}

TEST(DeliverParts, DeliversTwoPartsOfOneNameInTheirOrder) {
    QZ::PartInfo first("", "", "S-1", "Same", "");
    QZ::PartInfo second("", "", "S-2", "Same", "");
    Instances handler;
    QZ::deliverParts({&first, &second}, CIMObjectPath(_class), handler);
    ASSERT_EQ(handler.all.size(), 2U);
    EXPECT_EQ(valueText(handler.all[0], "Identifier"), valueText(handler.all[1], "Identifier"));
    EXPECT_EQ(valueText(handler.all[0], "SerialNumber"), "S-1");
    EXPECT_EQ(valueText(handler.all[1], "SerialNumber"), "S-2");
}

}  // namespace
