// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Bmc.h"
#include "ManualClock.h"
#include "SdrBuilder.h"
#include "TestBmc.h"

namespace QZ {
namespace {

class ARepository : public testing::Test {
protected:
    // Units 0 to count - 1, each in the record of the next number.
    void fill(unsigned count) {
        std::vector<std::string> records;
        for (unsigned id = 0; id < count; ++id) {
            records.push_back(fruLocatorRecord(fruLocator(id + 1, id, 10, "A unit of its own")));
        }
        simulated.records(records);
    }

    // False where a locator is missing, out of order or has lost its name.
    bool hasUnits(unsigned count) {
        const SdrContents contents = bmc.getSdr();
        if (contents.fruLocators.size() != count || contents.isDamaged)
            return false;
        for (unsigned id = 0; id < count; ++id) {
            const FruLocator& locator = contents.fruLocators[id];
            if (locator.fruId != id || locator.name != "A unit of its own")
                return false;
        }
        return true;
    }

    ManualClock clock;
    TestBmc simulated;
    Bmc bmc;
};

TEST_F(ARepository, IsReadRecordByRecord) {
    fill(20);
    EXPECT_TRUE(hasUnits(20));
    EXPECT_EQ(simulated.asked().size(), 22U) << "what it holds, a reservation, each record";
}

TEST_F(ARepository, MayBeEmpty) {
    EXPECT_TRUE(hasUnits(0));
}

TEST_F(ARepository, IsReadInPiecesWhereWholeRecordsAreRefused) {
    for (const unsigned longest : {32U, 16U, 10U, 8U}) {
        TestBmc small;
        Bmc fresh;
        small.records({fruLocatorRecord(fruLocator(1, 0, 10, "A unit of its own"))});
        small.allowReads(longest);
        const SdrContents contents = fresh.getSdr();
        ASSERT_EQ(contents.fruLocators.size(), 1U) << longest;
        EXPECT_EQ(contents.fruLocators[0].name, "A unit of its own");
    }
}

TEST_F(ARepository, IsReadOnAfterALostReservation) {
    fill(10);
    unsigned lost = 0;
    simulated.trouble([&lost](const IpmiRequest& request, IpmiReply& reply) {
        reply = {IpmiReservationCancelled, {}};
        return request.command == 0x23 && request.data[2] == 5 && lost++ < 2;
    });
    EXPECT_TRUE(hasUnits(10));
    EXPECT_EQ(simulated.countAsked("0a 22"), 3U);
}

TEST_F(ARepository, IsGivenUpWhenReservationsAreLostAllTheTime) {
    fill(10);
    simulated.trouble([](const IpmiRequest& request, IpmiReply& reply) {
        reply = {IpmiReservationCancelled, {}};
        return request.command == 0x23 && request.data[2] == 5;
    });
    EXPECT_TRUE(hasUnits(4));
    EXPECT_EQ(simulated.countAsked("0a 22"), 5U);
}

TEST_F(ARepository, MayKnowNoReservations) {
    fill(3);
    simulated.reply("0a 22", "c1");
    EXPECT_TRUE(hasUnits(3));
}

TEST_F(ARepository, IsNotReadAgainWhileNothingChanges) {
    fill(10);
    EXPECT_TRUE(hasUnits(10));
    simulated.forgetAsked();
    EXPECT_TRUE(hasUnits(10));
    EXPECT_EQ(simulated.asked().size(), 0U);
    clock.sleepMilliseconds(2000);
    EXPECT_TRUE(hasUnits(10));
    EXPECT_EQ(simulated.asked(), (std::vector<std::string>{"0a 20"}));
}

TEST_F(ARepository, IsReadAgainWhenItChanged) {
    fill(10);
    EXPECT_TRUE(hasUnits(10));
    fill(4);
    simulated.touchRecords(2000);
    clock.sleepMilliseconds(2000);
    EXPECT_TRUE(hasUnits(4));
}

TEST_F(ARepository, IsReadAgainWhereItsControllerHasNoClock) {
    simulated.touchRecords(0);
    fill(10);
    EXPECT_TRUE(hasUnits(10));
    simulated.forgetAsked();
    clock.sleepMilliseconds(2000);
    EXPECT_TRUE(hasUnits(10));
    EXPECT_GT(simulated.asked().size(), 10U);
}

TEST_F(ARepository, OfASlowControllerIsReadOverSeveralCalls) {
    fill(25);
    simulated.takeMilliseconds(500);
    EXPECT_TRUE(hasUnits(8));
    EXPECT_TRUE(hasUnits(16));
    EXPECT_TRUE(hasUnits(24));
    EXPECT_TRUE(hasUnits(25));
}

TEST_F(ARepository, MayLeadRoundInCircles) {
    simulated.reply("0a 20", "00 51 01 00 00 00 01 00 00 00 00 00 00 00 02")
        .reply("0a 22", "00 01 00")
        .reply("0a 23 01 00 00 00 00 ff", "00 00 00 01 00 51 c0 01 00");
    EXPECT_TRUE(hasUnits(0));
    EXPECT_EQ(simulated.countAsked("0a 23"), 1U);
}

TEST_F(ARepository, MayReplyWithoutARecord) {
    simulated.reply("0a 20", "00 51 01 00 00 00 01 00 00 00 00 00 00 00 02")
        .reply("0a 22", "00 01 00")
        .reply("0a 23 01 00 00 00 00 ff", "00 ff ff")
        .reply("0a 23 01 00 00 00 00 05", "00 ff ff");
    EXPECT_TRUE(hasUnits(0));
}

}  // namespace
}  // namespace QZ
