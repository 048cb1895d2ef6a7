// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Clock.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <ctime>

#include "ManualClock.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

using namespace QZ;

TEST(Clock, TellsTheMachinesTime) {
    const std::time_t before = std::time(nullptr);
    const std::int64_t now = Clock::current().seconds();
    // time() may be served from a coarser clock than clock_gettime().
    EXPECT_GE(now, before);
    EXPECT_LE(now, std::time(nullptr) + 1);
}

TEST(Clock, SleepsAtLeastAsLongAsAsked) {
    const std::int64_t before = Clock::current().milliseconds();
    Clock::current().sleepMilliseconds(20);
    EXPECT_GE(Clock::current().milliseconds() - before, 19);
}

TEST(Clock, PutsADeadlineAhead) {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const timespec end = Clock::machineDeadline(1999);
    const std::int64_t ahead = (std::int64_t{end.tv_sec} - now.tv_sec) * 1000 +
                               (std::int64_t{end.tv_nsec} - now.tv_nsec) / 1000000;
    EXPECT_GE(ahead, 1999);
    EXPECT_LT(ahead, 1999 + 1000);
    EXPECT_LT(end.tv_nsec, 1000000000L);
}

TEST(Clock, IsNotSetForAnotherMachine) {
    const TemporaryFolder folder;
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", folder.path());
    EXPECT_EQ(EPERM, Clock::current().setSeconds(Clock::current().seconds()));
}

TEST(ClockReplacement, TakesTheMachinesPlaceUntilItsEnd) {
    Clock* const machine = &Clock::current();
    {
        ManualClock outer(1000);
        EXPECT_EQ(&outer, &Clock::current());
        {
            ManualClock inner(2000);
            EXPECT_EQ(2000, Clock::current().seconds());
        }
        EXPECT_EQ(&outer, &Clock::current());
        Clock::current().sleepMilliseconds(3600000);
        EXPECT_EQ(4600, Clock::current().seconds());
    }
    EXPECT_EQ(machine, &Clock::current());
}
