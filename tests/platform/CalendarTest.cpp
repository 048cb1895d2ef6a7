// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Calendar.h"

#include <gtest/gtest.h>

#include <ctime>

using namespace QZ;

TEST(Calendar, KnowsTheMonthsLengths) {
    const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month) {
        EXPECT_TRUE(dateExists(2027, month, days[month - 1])) << month;
        EXPECT_FALSE(dateExists(2027, month, days[month - 1] + 1)) << month;
        EXPECT_FALSE(dateExists(2027, month, 0)) << month;
    }
}

TEST(Calendar, KnowsLeapYears) {
    EXPECT_TRUE(dateExists(2024, 2, 29));
    EXPECT_TRUE(dateExists(2000, 2, 29));
    EXPECT_FALSE(dateExists(1900, 2, 29));
    EXPECT_FALSE(dateExists(2027, 2, 29));
    EXPECT_FALSE(dateExists(2024, 2, 30));
}

TEST(Calendar, HasNoYearZeroAndNoMonthThirteen) {
    EXPECT_FALSE(dateExists(0, 1, 1));
    EXPECT_FALSE(dateExists(-1, 1, 1));
    EXPECT_FALSE(dateExists(10000, 1, 1));
    EXPECT_FALSE(dateExists(2027, 0, 1));
    EXPECT_FALSE(dateExists(2027, 13, 1));
    EXPECT_FALSE(dateExists(2027, -1, -1));
}

TEST(Calendar, CountsDaysAsTheCLibraryDoes) {
    EXPECT_EQ(0, daysFromDate(1970, 1, 1));
    std::int64_t expected = daysFromDate(1, 1, 1);
    for (int year = 1; year <= 9999; ++year)
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; dateExists(year, month, day); ++day)
                ASSERT_EQ(expected++, daysFromDate(year, month, day));
    for (const int year : {1, 1582, 1900, 1970, 2000, 2038, 2100, 9999}) {
        std::tm date{};
        date.tm_year = year - 1900;
        date.tm_mon = 11;
        date.tm_mday = 31;
        EXPECT_EQ(timegm(&date), daysFromDate(year, 12, 31) * 86400) << year;
    }
}
