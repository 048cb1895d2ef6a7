// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FoundTable.h"

#include <memory>
#include <type_traits>
#include <vector>

#include "InventoryMachine.h"
#include "TableTypes.h"

namespace QZ {
namespace {

using EntryPoint = SmBiosBuilder::EntryPoint;

class FoundTableTest : public InventoryMachine {
protected:
    // Memory devices 0x1100, 0x1101 and 0x1102, with a board of the middle one's handle between.
    void writeMemory() const {
        SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
        firmware.add(17, 0x1B, 0x1100).text(0x18, "M-0");
        firmware.add(2, 8, 0x1101).text(7, "B-0");
        firmware.add(17, 0x1B, 0x1101).text(0x18, "M-1");
        firmware.add(17, 0x1B, 0x1102).text(0x18, "M-2");
        write(firmware.addEnd());
    }
};

TEST_F(FoundTableTest, FindsTheFirstOfItsType) {
    writeMemory();
    SmBios::Table table;
    ASSERT_TRUE(FoundTable(table, 17));
    EXPECT_EQ(table.getType(), 17);
    EXPECT_EQ(table.getLength(), 0x1B);
    EXPECT_EQ(table.getHandle(), 0x1100);
    EXPECT_STREQ(table.getString(table.getByte(0x18)), "M-0");
}

TEST_F(FoundTableTest, WalksThroughAllOfAType) {
    writeMemory();
    std::vector<std::string> serials;
    SmBios::Table table;
    for (bool found = FoundTable(table, 17); found;
         found = FoundNextTable(table, 17, table.getHandle())) {
        serials.emplace_back(table.getString(1));
    }
    EXPECT_EQ(serials, (std::vector<std::string>{"M-0", "M-1", "M-2"}));
}

TEST_F(FoundTableTest, StartsWithTheFirstAtHandleFFFF) {
    writeMemory();
    SmBios::Table table;
    ASSERT_TRUE(FoundNextTable(table, 17, 0xFFFF));
    EXPECT_EQ(table.getHandle(), 0x1100);
}

TEST_F(FoundTableTest, FindsNothingAfterTheLastOfAType) {
    writeMemory();
    SmBios::Table table;
    EXPECT_FALSE(FoundNextTable(table, 17, 0x1102));
    EXPECT_FALSE(FoundNextTable(table, 2, 0x1101));
}

TEST_F(FoundTableTest, LeavesTheOutputAloneWhenItFindsNothing) {
    writeMemory();
    SmBios::Table table;
    ASSERT_TRUE(FoundTable(table, 2));
    EXPECT_FALSE(FoundTable(table, 99));
    EXPECT_FALSE(FoundNextTable(table, 17, 0x9999));
    EXPECT_FALSE(FoundNextTable(table, 17, 0x1102));
    EXPECT_STREQ(table.getString(1), "B-0");
}

TEST_F(FoundTableTest, PassesOverTheHandleOfAnotherType) {
    writeMemory();
    SmBios::Table table;
    EXPECT_FALSE(FoundNextTable(table, 2, 0x1100));
}

TEST_F(FoundTableTest, FindsNothingOnAMachineWithoutFirmware) {
    SmBios::Table table;
    EXPECT_FALSE(FoundTable(table, 1));
    EXPECT_FALSE(FoundNextTable(table, 1, 0));
}

TEST_F(FoundTableTest, ReadsTheMachineAfresh) {
    writeMemory();
    SmBios::Table table;
    ASSERT_TRUE(FoundTable(table, 17));
    SmBiosBuilder firmware(EntryPoint::Version3, 3, 0);
    firmware.add(1, 8, 7);
    write(firmware.addEnd());
    EXPECT_FALSE(FoundTable(table, 17));
    EXPECT_TRUE(FoundTable(table, 1));
}

template <typename View>
class TableView : public testing::Test {};

using Views = testing::Types<TableType1, TableType2, TableType3, TableType17>;
TYPED_TEST_SUITE(TableView, Views);

TYPED_TEST(TableView, IsATableAndNothingElse) {
    static_assert(std::is_base_of_v<SmBios::Table, TypeParam>);
    static_assert(std::has_virtual_destructor_v<TypeParam>);
    static_assert(sizeof(TypeParam) == sizeof(SmBios::Table));
    const std::string bytes = SmBiosStructure(1, 8, 3).text(7, "text").build();
    const SmBios::Table table(std::make_shared<const std::string>(bytes), 0, bytes.size() - 1);
    const TypeParam view(table);
    EXPECT_EQ(view.getHandle(), 3);
    EXPECT_EQ(view.getString(view.getByte(7)), table.getString(1));
}

}  // namespace
}  // namespace QZ
