// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Attempts.h"

#include <gtest/gtest.h>

#include "ManualClock.h"

namespace QZ {
namespace {

using std::chrono::milliseconds;

// Waits as long as it is told, and tries; how long that was.
std::int64_t tryWhenAllowed(Attempts& attempts, ManualClock& clock) {
    const milliseconds wait = attempts.begin("192.0.2.7", "anna");
    if (wait.count() > 0) {
        clock.sleepMilliseconds(unsigned(wait.count()));
        EXPECT_EQ(0, attempts.begin("192.0.2.7", "anna").count());
    }
    return wait.count();
}

TEST(Attempts, WaitTwiceAsLongEachTimeAndNotForever) {
    ManualClock clock;
    Attempts attempts;
    std::vector<std::int64_t> waits(11);
    for (std::int64_t& wait : waits) {
        wait = tryWhenAllowed(attempts, clock);
    }
    EXPECT_EQ(
        (std::vector<std::int64_t>{0, 0, 0, 1000, 2000, 4000, 8000, 16000, 32000, 60000, 60000}),
        waits);
    EXPECT_EQ(11U, attempts.count("192.0.2.7", "anna"));
}

TEST(Attempts, ThatComeTooEarlyAreNone) {
    ManualClock clock;
    Attempts attempts;
    for (int i = 0; i < 3; ++i) {
        tryWhenAllowed(attempts, clock);
    }
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(1000, attempts.begin("192.0.2.7", "anna").count());
    }
    EXPECT_EQ(3U, attempts.count("192.0.2.7", "anna"));
}

TEST(Attempts, AreCountedByAddressAndUser) {
    ManualClock clock;
    Attempts attempts;
    for (int i = 0; i < 3; ++i) {
        tryWhenAllowed(attempts, clock);
    }
    EXPECT_EQ(0, attempts.begin("192.0.2.8", "anna").count());
    EXPECT_EQ(0, attempts.begin("192.0.2.7", "bob").count());
}

TEST(Attempts, AreForgottenAfterTheRightPassword) {
    ManualClock clock;
    Attempts attempts;
    for (int i = 0; i < 4; ++i) {
        tryWhenAllowed(attempts, clock);
    }
    attempts.succeed("192.0.2.7", "anna");
    EXPECT_EQ(0, tryWhenAllowed(attempts, clock));
    EXPECT_EQ(1U, attempts.count("192.0.2.7", "anna"));
}

TEST(Attempts, AreForgottenAfterAWhile) {
    ManualClock clock;
    Attempts attempts;
    for (int i = 0; i < 8; ++i) {
        tryWhenAllowed(attempts, clock);
    }
    clock.sleepMilliseconds(15 * 60'000);
    EXPECT_EQ(0, tryWhenAllowed(attempts, clock));
    EXPECT_EQ(1U, attempts.count("192.0.2.7", "anna"));
}

TEST(Attempts, ThatFoundOutNothingDoNotCount) {
    ManualClock clock;
    Attempts attempts;
    for (int i = 0; i < 3; ++i) {
        tryWhenAllowed(attempts, clock);
    }
    attempts.takeBack("192.0.2.7", "anna");
    EXPECT_EQ(0, tryWhenAllowed(attempts, clock));
    for (int i = 0; i < 3; ++i) {
        attempts.takeBack("192.0.2.7", "anna");
    }
    EXPECT_EQ(0U, attempts.size());
}

TEST(Attempts, TakeNoMoreRoomThanTheyMay) {
    ManualClock clock;
    Attempts::Limits limits;
    limits.entries = 10;
    Attempts attempts(limits);
    for (int i = 0; i < 4; ++i) {
        tryWhenAllowed(attempts, clock);
    }
    for (int i = 0; i < 100; ++i) {
        (void)attempts.begin("192.0.2.7", "user" + std::to_string(i));
    }
    EXPECT_EQ(10U, attempts.size());
    // Who waits longest is not pushed out.
    EXPECT_EQ(2000, attempts.begin("192.0.2.7", "anna").count());
}

}  // namespace
}  // namespace QZ
