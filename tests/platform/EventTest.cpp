// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Event.h"

#include <gtest/gtest.h>

#include <thread>

#include "Clock.h"
#include "ManualClock.h"

using namespace QZ;

TEST(Event, EndsAWaitThatHasBegun) {
    Event event;
    std::thread setter([&event] { event.set(); });
    EXPECT_TRUE(event.wait(600000));
    setter.join();
}

TEST(Event, StaysSet) {
    Event event;
    EXPECT_FALSE(event.isSet());
    event.set();
    EXPECT_TRUE(event.isSet());
    EXPECT_TRUE(event.wait(0));
    EXPECT_TRUE(event.wait(600000));
}

TEST(Event, GivesUpWhenTheTimeIsOver) {
    Event event;
    const std::int64_t before = Clock::current().milliseconds();
    EXPECT_FALSE(event.wait(20));
    EXPECT_GE(Clock::current().milliseconds() - before, 20);
}

TEST(Event, WaitsByTheClockThatReplacesTheMachines) {
    ManualClock clock(1000);
    Event event;
    EXPECT_FALSE(event.wait(3600000));
    EXPECT_EQ(4600, clock.seconds());
}
