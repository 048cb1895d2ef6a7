// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SmBios.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>

#include "ScopedEnvironment.h"
#include "SmBiosBuilder.h"
#include "SmBiosDecoder.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

using EntryPoint = SmBiosBuilder::EntryPoint;
using State = SmBios::State;
using testing::HasSubstr;

constexpr const char* tableFile = "sys/firmware/dmi/tables/DMI";
constexpr const char* entryPointFile = "sys/firmware/dmi/tables/smbios_entry_point";
constexpr std::uintmax_t mebibyte = 1048576;

class SmBiosOfAMachine : public testing::Test {
protected:
    void writeSerial(const std::string& serial) const {
        SmBiosBuilder firmware(EntryPoint::Version3, 3, 1);
        firmware.add(1, 8).text(7, serial);
        firmware.addEnd().writeBelow(root.path());
    }

    TemporaryFolder root;
    ScopedEnvironment environment{"TAVQZ_HOST_ROOT", root.path()};
};

TEST_F(SmBiosOfAMachine, HoldsItsTablesAndVersion) {
    writeSerial("S-1");
    const SmBios smBios;
    EXPECT_EQ(smBios.state(), State::Ok);
    EXPECT_EQ(smBios.reason(), "");
    EXPECT_EQ(smBios.getMajorVersion(), 3U);
    EXPECT_EQ(smBios.getMinorVersion(), 1U);
    ASSERT_EQ(smBios.getTables().size(), 2U);
    EXPECT_STREQ(smBios.getTables()[0].getString(1), "S-1");
}

TEST_F(SmBiosOfAMachine, IsReadAfreshByEachObject) {
    writeSerial("S-1");
    const SmBios before;
    writeSerial("S-2");
    EXPECT_STREQ(before.getTables()[0].getString(1), "S-1");
    EXPECT_STREQ(SmBios().getTables()[0].getString(1), "S-2");
}

TEST_F(SmBiosOfAMachine, FailsWithoutTheTable) {
    const SmBios smBios;
    EXPECT_EQ(smBios.state(), State::Failed);
    EXPECT_THAT(smBios.reason(), HasSubstr(root.file(tableFile)));
    EXPECT_THAT(smBios.reason(), HasSubstr("No such file"));
    EXPECT_TRUE(smBios.getTables().empty());
    EXPECT_EQ(smBios.getMajorVersion(), 0U);
}

TEST_F(SmBiosOfAMachine, IsDamagedWithoutTheEntryPoint) {
    writeSerial("S-1");
    std::filesystem::remove(root.file(entryPointFile));
    const SmBios smBios;
    EXPECT_EQ(smBios.state(), State::Damaged);
    EXPECT_THAT(smBios.reason(), HasSubstr(root.file(entryPointFile)));
    EXPECT_EQ(smBios.getTables().size(), 2U);
    EXPECT_EQ(smBios.getMajorVersion(), 0U);
}

TEST_F(SmBiosOfAMachine, FailsOnATableThatIsNoFile) {
    std::filesystem::create_directories(root.file(tableFile));
    const SmBios smBios;
    EXPECT_EQ(smBios.state(), State::Failed);
    EXPECT_THAT(smBios.reason(), HasSubstr("not a regular file"));
}

TEST_F(SmBiosOfAMachine, FailsOnATableLargerThanAnyFirmware) {
    writeSerial("S-1");
    std::filesystem::resize_file(root.file(tableFile), mebibyte);
    EXPECT_EQ(SmBios().state(), State::Ok);
    std::filesystem::resize_file(root.file(tableFile), mebibyte + 1);
    const SmBios smBios;
    EXPECT_EQ(smBios.state(), State::Failed);
    EXPECT_THAT(smBios.reason(), HasSubstr("larger than 1048576 bytes"));
}

SmBios::Table _table(const SmBiosStructure& structure) {
    return decodeSmBios({}, structure.build()).tables.at(0);
}

TEST(SmBiosTable, GivesTypeLengthAndHandle) {
    const SmBios::Table table = _table(SmBiosStructure(17, 0x28, 0xFEDC));
    EXPECT_EQ(table.getType(), 17);
    EXPECT_EQ(table.getLength(), 0x28);
    EXPECT_EQ(table.getHandle(), 0xFEDC);
}

TEST(SmBiosTable, GivesZeroBeyondTheFormattedArea) {
    const SmBios::Table table = _table(SmBiosStructure(1, 8, 0).byte(7, 0xFF).text(6, "text"));
    EXPECT_EQ(table.getByte(7), 0xFF);
    EXPECT_EQ(table.getByte(8), 0);
    EXPECT_EQ(table.getByte(255), 0);
    EXPECT_EQ(table.getByte(static_cast<std::size_t>(-1)), 0);
}

TEST(SmBiosTable, HasNoTextForAnIndexThatPointsNowhere) {
    const SmBios::Table table = _table(SmBiosStructure(1, 8, 0).text(4, "one").text(5, "two"));
    EXPECT_EQ(table.getString(0), nullptr);
    EXPECT_STREQ(table.getString(1), "one");
    EXPECT_STREQ(table.getString(2), "two");
    EXPECT_EQ(table.getString(3), nullptr);
    EXPECT_EQ(table.getString(255), nullptr);
    EXPECT_EQ(_table(SmBiosStructure(1, 8, 0)).getString(1), nullptr);
}

TEST(SmBiosTable, KeepsEveryByteOfAText) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    EXPECT_EQ(_table(SmBiosStructure(1, 8, 0).text(4, bytes)).getString(1), bytes);
}

TEST(SmBiosTable, SharesItsBytesWithItsCopiesAndOutlivesTheOthers) {
    auto original = std::make_unique<SmBios::Table>(_table(SmBiosStructure(1, 8, 0).text(4, "x")));
    const SmBios::Table copy = *original;
    const char* text = original->getString(1);
    EXPECT_EQ(copy.getString(1), text);
    original.reset();
    EXPECT_STREQ(text, "x");
}

TEST(SmBiosTable, IsEmptyByDefault) {
    const SmBios::Table table;
    EXPECT_EQ(table.getType(), 0);
    EXPECT_EQ(table.getLength(), 0);
    EXPECT_EQ(table.getHandle(), 0);
    EXPECT_EQ(table.getByte(0), 0);
    EXPECT_EQ(table.getString(1), nullptr);
}

}  // namespace
}  // namespace QZ
