// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiFru.h"

#include <gtest/gtest.h>

#include "FruBuilder.h"
#include "ManualClock.h"
#include "SdrBuilder.h"
#include "TestBmc.h"

namespace QZ {
namespace {

class IpmiFrus : public testing::Test {
protected:
    // What is made of a unit with these data and that name.
    std::vector<IpmiFru> make(const std::string& bytes, const std::string& name) {
        simulated.fru(1, bytes).records({fruLocatorRecord(fruLocator(1, 1, 10, name))});
        clock.sleepMilliseconds(5000);
        simulated.touchRecords(++_changes);
        return GetIpmiFruInstances();
    }

    ManualClock clock;
    TestBmc simulated;

private:
    unsigned _changes = 1;
};

const FruAreaBuilder _chassis = FruAreaBuilder::chassis(23).text("chassis part").text("chassis SN");

TEST_F(IpmiFrus, TellWhatTheirAreasSay) {
    const std::vector<IpmiFru> frus = make(namedFru().chassis(_chassis).build(), "Slot 1");
    ASSERT_EQ(frus.size(), 1U);
    EXPECT_EQ(frus[0].getNumber(), "product part number");
    EXPECT_EQ(frus[0].getIdentifyingNumber(), "product part number");
    EXPECT_EQ(frus[0].getVendor(), "product manufacturer");
    EXPECT_EQ(frus[0].getName(), "product name");
    EXPECT_EQ(frus[0].getDescription(), "Slot 1");
    EXPECT_EQ(frus[0].getEntityId(), 10);
}

TEST_F(IpmiFrus, TakeFromTheNextAreaWhatOneLacks) {
    const FruAreaBuilder board =
        FruAreaBuilder::board(25).text("Maker").text("Board").text("SN").text("  B-1 ");
    const FruAreaBuilder blank =
        FruAreaBuilder::product(25).text("   ").text("").text(std::string(4, ' '));
    const auto both = make(FruBuilder().board(board).product(blank).build(), "");
    ASSERT_EQ(both.size(), 1U);
    EXPECT_EQ(both[0].getNumber(), "  B-1 ") << "blanks are the unit's";
    EXPECT_EQ(both[0].getIdentifyingNumber(), "  B-1 ");
    EXPECT_EQ(both[0].getVendor(), "Maker");
    EXPECT_EQ(both[0].getName(), "Board");
    EXPECT_EQ(both[0].getDescription(), "Board");
}

TEST_F(IpmiFrus, HaveTheBoardsNumbersBeforeTheChassis) {
    const FruAreaBuilder board =
        FruAreaBuilder::board(25).text("Maker").text("Board").text("SN").text("B-1");
    const FruAreaBuilder product = FruAreaBuilder::product(25).text("Maker").text("PSU");
    const auto frus =
        make(FruBuilder().chassis(_chassis).board(board).product(product).build(), "");
    ASSERT_EQ(frus.size(), 1U);
    EXPECT_EQ(frus[0].getNumber(), "B-1");
    EXPECT_EQ(frus[0].getIdentifyingNumber(), "B-1");
    EXPECT_EQ(frus[0].getName(), "PSU");
}

TEST_F(IpmiFrus, HaveTheProductsNumberWithoutABoard) {
    const auto frus =
        make(FruBuilder()
                 .product(FruAreaBuilder::product(25).text("Maker").text("PSU").text("P-1"))
                 .build(),
             "PSU 1");
    ASSERT_EQ(frus.size(), 1U);
    EXPECT_EQ(frus[0].getNumber(), "P-1");
    EXPECT_EQ(frus[0].getIdentifyingNumber(), "P-1");
}

TEST_F(IpmiFrus, HaveTheirControllersNameWhereTheChassisIsAllThereIs) {
    const auto frus = make(FruBuilder().chassis(_chassis).build(), "Chassis");
    ASSERT_EQ(frus.size(), 1U);
    EXPECT_EQ(frus[0].getNumber(), "chassis part");
    EXPECT_EQ(frus[0].getVendor(), "");
    EXPECT_EQ(frus[0].getName(), "Chassis");
}

TEST_F(IpmiFrus, TellWhatDamagedAreasStillSay) {
    const auto frus =
        make(FruBuilder()
                 .product(FruAreaBuilder::product(25).text("Maker").text("PSU").spoilChecksum())
                 .spoilChecksum()
                 .build(),
             "PSU 1");
    ASSERT_EQ(frus.size(), 1U);
    EXPECT_EQ(frus[0].getVendor(), "Maker");
}

TEST_F(IpmiFrus, AreNoneWhereTheDataSayNothing) {
    EXPECT_TRUE(make(std::string(64, '\xFF'), "Empty").empty());
    EXPECT_TRUE(make("nonsense", "Nonsense").empty());
    EXPECT_TRUE(make(FruBuilder().build(), "No areas").empty());
    EXPECT_TRUE(make(FruBuilder().product(FruAreaBuilder::product(25)).build(), "").empty());
}

TEST_F(IpmiFrus, AreNoneWithoutAController) {
    simulated.vanish();
    EXPECT_TRUE(GetIpmiFruInstances().empty());
}

TEST_F(IpmiFrus, AreNoneWithinFiveSecondsWhereTheControllerHangs) {
    clock.sleepMilliseconds(10000);
    const std::int64_t before = clock.sleptMilliseconds();
    simulated.hang();
    EXPECT_TRUE(GetIpmiFruInstances().empty());
    EXPECT_TRUE(GetIpmiFruInstances().empty());
    EXPECT_EQ(clock.sleptMilliseconds() - before, 5000);
    clock.sleepMilliseconds(10000);
}

}  // namespace
}  // namespace QZ
