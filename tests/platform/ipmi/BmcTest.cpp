// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Bmc.h"

#include <gtest/gtest.h>

#include <thread>

#include "Clock.h"
#include "ManualClock.h"
#include "SteppedClock.h"
#include "TestBmc.h"
#include "TestMachine.h"

namespace QZ {
namespace {

class ABmc : public testing::Test {
protected:
    void wait(unsigned milliseconds) { clock.sleepMilliseconds(milliseconds); }

    ManualClock clock;
    TestBmc simulated;
    Bmc bmc;
};

TEST_F(ABmc, TellsWhatItIsAsked) {
    simulated.reply("06 01", "00 20 01 02 45 02 8f 00 00 00 34 12")
        .reply("00 01", "00 01 00 00")
        .reply("00 07", "00 f4 00")
        .reply("00 0f", "00 3c 02 00 00 00")
        .reply("06 25", "00 04 01 00 00 64 00 32 00")
        .reply("06 37", "00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10")
        .reply("06 08", "00 11 12 13 14 15 16 17 18 19 1a 1b 1c 1d 1e 1f 20")
        .reply("0a 40", "00 51 01 00 00 10 00 00 00 00 00 00 00 00 02");
    EXPECT_EQ(bmc.getDeviceId()->minorFirmware, 45);
    EXPECT_TRUE(bmc.getChassisStatus()->isOn);
    EXPECT_EQ(bmc.getRestartCause(), 4);
    EXPECT_EQ(bmc.getPowerOnMinutes(), 120U);
    EXPECT_EQ(bmc.getWatchdog()->initialTenths, 100U);
    EXPECT_EQ(bmc.getSystemGuid()->front(), 1);
    EXPECT_EQ(bmc.getDeviceGuid()->front(), 0x11);
    EXPECT_EQ(bmc.getSelInfo()->entries, 1U);
}

TEST_F(ABmc, TellsNothingOfWhatItDoesNotKnow) {
    simulated.reply("00 07", "00").reply("06 37", "00 01 02").reply("06 25", "00 04");
    EXPECT_FALSE(bmc.getDeviceId() || bmc.getChassisStatus() || bmc.getRestartCause());
    EXPECT_FALSE(bmc.getPowerOnMinutes() || bmc.getWatchdog() || bmc.getSystemGuid());
    EXPECT_TRUE(bmc.getFrus().empty() && bmc.getSdr().fruLocators.empty());
    EXPECT_TRUE(bmc.getSelEntries().entries.empty());
}

TEST_F(ABmc, IsBelievedForTwoSeconds) {
    simulated.reply("00 01", "00 01 00 00");
    EXPECT_TRUE(bmc.getChassisStatus()->isOn);
    simulated.reply("00 01", "00 00 00 00");
    wait(1999);
    EXPECT_TRUE(bmc.getChassisStatus()->isOn);
    EXPECT_EQ(simulated.asked().size(), 1U);
    EXPECT_EQ(simulated.connections(), 1U);
    wait(1);
    EXPECT_FALSE(bmc.getChassisStatus()->isOn);
}

TEST_F(ABmc, IsAbsentForFiveSecondsAfterItHung) {
    simulated.reply("00 01", "00 01 00 00");
    simulated.hang();
    EXPECT_FALSE(bmc.getChassisStatus());
    EXPECT_EQ(clock.sleptMilliseconds(), 5000);
    simulated.wake();
    EXPECT_FALSE(bmc.getChassisStatus());
    EXPECT_TRUE(bmc.getFrus().empty());
    wait(4999);
    EXPECT_FALSE(bmc.getChassisStatus());
    EXPECT_EQ(simulated.asked().size(), 1U);
    wait(1);
    EXPECT_TRUE(bmc.getChassisStatus());
}

TEST_F(ABmc, IsAskedAgainAtOnceWhereThereWasNone) {
    simulated.vanish();
    EXPECT_FALSE(bmc.getChassisStatus());
    EXPECT_EQ(clock.sleptMilliseconds(), 0);
}

TEST_F(ABmc, IsForgottenWithItsMachine) {
    simulated.reply("00 01", "00 01 00 00");
    EXPECT_TRUE(bmc.getChassisStatus()->isOn);
    {
        TestBmc other;
        other.reply("00 01", "00 00 00 00");
        EXPECT_FALSE(bmc.getChassisStatus()->isOn);
    }
    EXPECT_TRUE(bmc.getChassisStatus()->isOn);
    const TestMachine machine;
    simulated.reply("00 01", "00 00 00 00");
    EXPECT_FALSE(bmc.getChassisStatus()->isOn);
}

TEST_F(ABmc, GivesItsEventsInTheirOrder) {
    for (const char id : {'\1', '\2', '\5'}) {
        simulated.event({id, '\0', '\2', 0, 0, 0, 0, 0x20, 0, 4, 0x1D, 0, 0x6F, 1, 2, 3});
    }
    const BmcSelEntries all = bmc.getSelEntries();
    ASSERT_EQ(all.entries.size(), 3U);
    EXPECT_EQ(all.entries[2].recordId, 5);
    EXPECT_EQ(all.next, 0xFFFF);
    EXPECT_EQ(bmc.getSelEntries(2).entries.size(), 2U);
}

TEST_F(ABmc, GoesOnWithEventsWhereTheDeadlineCameBetween) {
    for (char id = 1; id <= 20; ++id) {
        simulated.event({id, '\0', '\2', 0, 0, 0, 0, 0x20, 0, 4, 0x1D, 0, 0x6F, 1, 2, 3});
    }
    simulated.takeMilliseconds(500);
    const BmcSelEntries first = bmc.getSelEntries();
    EXPECT_EQ(first.entries.size(), 10U);
    EXPECT_EQ(first.next, 11);
    EXPECT_EQ(bmc.getSelEntries(first.next).entries.size(), 10U);
}

TEST_F(ABmc, MayNameAnEventTwice) {
    simulated.reply("0a 43 00 00 00 00 00 ff",
                    "00 00 00 01 00 02 00 00 00 00 20 00 04 1d 00 6f 01 02 03");
    EXPECT_EQ(bmc.getSelEntries().entries.size(), 1U);
}

TEST(BmcOfAMachine, HangsForAllThreadsTogetherOnce) {
    const TestMachine machine;
    machine.folder().write("dev/ipmi0.replies", "00 01 = 00 01 00 00\n06 01 = none\n");
    SteppedClock clock;
    const std::int64_t start = clock.milliseconds();
    Bmc bmc;
    EXPECT_TRUE(bmc.getChassisStatus());
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&bmc] { EXPECT_FALSE(bmc.getDeviceId()); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(clock.milliseconds() - start, 5000);
}

}  // namespace
}  // namespace QZ
