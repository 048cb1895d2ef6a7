// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "WrongPasswords.h"

#include <gtest/gtest.h>

#include "ManualClock.h"

namespace QZ {
namespace {

std::string name(int number) {
    return "user" + std::to_string(number);
}

TEST(WrongPasswords, SlowAnAddressThatTriesManyNames) {
    ManualClock clock;
    WrongPasswords wrong;
    for (int i = 0; i < 30; ++i) {
        EXPECT_EQ(0, wrong.begin("192.0.2.7", name(i)).count()) << i;
    }
    EXPECT_EQ(1000, wrong.begin("192.0.2.7", "anna").count());
    EXPECT_EQ(0U, wrong.count("192.0.2.7", "anna")) << "it was not looked at";
    EXPECT_EQ(0, wrong.begin("192.0.2.8", "anna").count());
    clock.sleepMilliseconds(1000);
    EXPECT_EQ(0, wrong.begin("192.0.2.7", "anna").count());
    EXPECT_EQ(2000, wrong.begin("192.0.2.7", "bob").count());
}

TEST(WrongPasswords, SlowAllAddressesOfAHost) {
    ManualClock clock;
    WrongPasswords wrong;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(0, wrong.begin("2001:db8::" + std::to_string(i), "anna").count());
    }
    EXPECT_EQ(1000, wrong.begin("2001:db8::a", "anna").count());
    EXPECT_EQ(3U, wrong.count("2001:db8::b", "anna"));
    EXPECT_EQ(0, wrong.begin("2001:db8:0:1::a", "anna").count());
    wrong.takeBack("2001:db8::c", "anna");
    EXPECT_EQ(2U, wrong.count("2001:db8::d", "anna"));
    wrong.succeed("2001:db8::e", "anna");
    EXPECT_EQ(0U, wrong.count("2001:db8::f", "anna"));
}

TEST(WrongPasswords, KeepNoAddressOutForLong) {
    ManualClock clock;
    WrongPasswords wrong;
    std::int64_t longest = 0;
    for (int i = 0; i < 100; ++i) {
        const auto wait = wrong.begin("192.0.2.7", name(i)).count();
        longest = std::max<std::int64_t>(longest, wait);
        clock.sleepMilliseconds(unsigned(wait));
    }
    EXPECT_EQ(10'000, longest);
}

TEST(WrongPasswords, AreStillThoseOfAUser) {
    ManualClock clock;
    WrongPasswords wrong;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(0, wrong.begin("192.0.2.7", "anna").count());
    }
    EXPECT_EQ(1000, wrong.begin("192.0.2.7", "anna").count());
    EXPECT_EQ(3U, wrong.count("192.0.2.7", "anna"));
}

TEST(WrongPasswords, AreNotThoseThatWereRightOrUnknown) {
    ManualClock clock;
    WrongPasswords wrong;
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(0, wrong.begin("192.0.2.7", name(i)).count()) << i;
        i % 2 == 0 ? wrong.succeed("192.0.2.7", name(i)) : wrong.takeBack("192.0.2.7", name(i));
    }
}

}  // namespace
}  // namespace QZ
