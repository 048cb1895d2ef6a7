// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tavqz/AccessHelpers.h"

namespace {

TEST(HexText, ReadsBehindItsPrefix) {
    EXPECT_EQ(_httoi("0x1f", 4), 31);
    EXPECT_EQ(_httoi("0X1F", 4), 31);
}

TEST(HexText, StopsAtAComma) {
    EXPECT_EQ(_httoi("1F,2", 4), 31);
    EXPECT_EQ(_httoi(",1", 2), 0);
    EXPECT_EQ(_httoi("0x,1", 4), 0);
}

TEST(HexText, IsZeroForEmptyText) {
    EXPECT_EQ(_httoi("", 4), 0);
    EXPECT_EQ(_httoi("", 0), 0);
    EXPECT_EQ(_httoi("0x", 4), 0);
}

TEST(HexText, IsZeroWithoutALeadingDigit) {
    EXPECT_EQ(_httoi("G1", 2), 0);
    EXPECT_EQ(_httoi(" 1", 2), 0);
    EXPECT_EQ(_httoi("-1", 2), 0);
}

TEST(HexText, KeepsWhatStandsBeforeAnotherCharacter) {
    EXPECT_EQ(_httoi("1FG2", 4), 31);
    EXPECT_EQ(_httoi("12 3", 4), 0x12);
}

TEST(HexText, TakesNoMoreDigitsThanAskedFor) {
    EXPECT_EQ(_httoi("12345678", 3), 0x123);
    EXPECT_EQ(_httoi("7", 0), 0);
    EXPECT_EQ(_httoi("7", -1), 0);
}

TEST(HexText, DoesNotCountThePrefixAmongTheDigits) {
    EXPECT_EQ(_httoi("0X123456", 4), 0x1234);
    EXPECT_EQ(_httoi("0X12", 1), 1);
}

TEST(HexText, KnowsLowerCaseAmongTheFirstCharactersOnly) {
    EXPECT_EQ(_httoi("0xab", 4), 0xAB);
    EXPECT_EQ(_httoi("0xab", 3), 0xA);
    EXPECT_EQ(_httoi("0xab", 2), 0);
    EXPECT_EQ(_httoi("0x1f", 1), 0) << "the x is as it was written, and no digit";
}

TEST(HexText, KnowsEveryDigit) {
    EXPECT_EQ(_httoi("01234567", 8), 0x01234567);
    EXPECT_EQ(_httoi("89ABCDEF", 8), static_cast<std::int32_t>(0x89ABCDEF));
    EXPECT_EQ(_httoi("89abcdef", 8), static_cast<std::int32_t>(0x89ABCDEF));
    for (const char* near : {"/", ":", "@", "G", "`", "g"}) {
        EXPECT_EQ(_httoi((std::string("1") + near + "1").c_str(), 3), 1) << near;
    }
}

TEST(HexText, IsSigned) {
    EXPECT_EQ(_httoi("FFFFFFFF", 8), -1);
}

TEST(HexText, LosesTheDigitsThatOverflow) {
    EXPECT_EQ(_httoi("123456789", 9), 0x23456789);
    EXPECT_EQ(_httoi("7FFFFFFFFFFFFFFF", 16), -1);
}

}  // namespace
