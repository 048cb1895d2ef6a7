// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DateTime.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>

#include "RepeatableRandom.h"
#include "ScopedEnvironment.h"

using namespace QZ;

namespace {

constexpr unsigned Both = DateTime::CalendarDate | DateTime::TimeOfDay;
constexpr std::int64_t Moment = 1801374600;  // 2027-01-31T05:50:00Z

// Rules of zones, written out so that no zone database is needed.
constexpr const char* Berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* NewYork = "EST5EDT,M3.2.0,M11.1.0";
constexpr const char* Kathmandu = "<+0545>-5:45";
// The clocks jump over midnight, and strike it twice.
constexpr const char* SaoPaulo = "<-03>3<-02>,M10.3.0/0,M2.3.0/0";
constexpr const char* Havana = "CST5CDT,M3.2.0/0,M11.1.0/1";

std::string inZone(const char* zone, std::int64_t seconds, unsigned format) {
    const ScopedEnvironment environment("TZ", zone);
    return DateTime(seconds, format).toString();
}

int localOffsetIn(const char* zone, int year, int month, int day) {
    const ScopedEnvironment environment("TZ", zone);
    return DateTime::localOffset(year, month, day);
}

}  // namespace

TEST(DateTime, IsUnsetByDefault) {
    const DateTime unset;
    EXPECT_FALSE(unset.isSet());
    EXPECT_FALSE(unset.hasTime());
    EXPECT_EQ(0, unset.getYear());
    EXPECT_EQ(0, unset.toSeconds());
    EXPECT_EQ("", unset.toString());
    EXPECT_EQ(unset, DateTime("", Both));
    EXPECT_EQ(unset, DateTime("nonsense", Both));
}

TEST(DateTime, KeepsTheLocalDayOfAMoment) {
    EXPECT_EQ("2027-01-31", inZone("UTC0", Moment, DateTime::CalendarDate));
    EXPECT_EQ("2027-01-31", inZone("XXX-14", Moment, DateTime::CalendarDate));
    EXPECT_EQ("2027-01-30", inZone("XXX8", Moment, DateTime::CalendarDate));
}

TEST(DateTime, KeepsTheLocalTimeOfAMomentWithItsOffset) {
    EXPECT_EQ("2027-01-31T05:50:00+00:00", inZone("UTC0", Moment, Both));
    EXPECT_EQ("2027-01-31T06:50:00+01:00", inZone(Berlin, Moment, Both));
    EXPECT_EQ("2027-01-31T00:50:00-05:00", inZone(NewYork, Moment, Both));
    EXPECT_EQ("2027-01-31T11:35:00+05:45", inZone(Kathmandu, Moment, Both));
}

TEST(DateTime, FollowsTheChangeOfTheClocks) {
    const std::int64_t change = DateTime("2027-03-28T01:00:00Z", Both).toSeconds();
    EXPECT_EQ("2027-03-28T01:59:59+01:00", inZone(Berlin, change - 1, Both));
    EXPECT_EQ("2027-03-28T03:00:00+02:00", inZone(Berlin, change, Both));
}

TEST(DateTime, KeepsWhatTheFormatSays) {
    EXPECT_EQ("2027-01-31", DateTime("2027-01-31T08:30:00.250+01:00", 1).toString());
    EXPECT_EQ("2027-01-31T08:30:00.250+01:00",
              DateTime("2027-01-31T08:30:00.250+01:00", 3).toString());
    EXPECT_EQ("2027-01-31", DateTime("2027-01-31", 3).toString());
    EXPECT_FALSE(DateTime("2027-01-31T08:30:00Z", 2).isSet());
    EXPECT_FALSE(DateTime(Moment, 2).isSet());
    EXPECT_FALSE(DateTime(Moment, 0).isSet());
}

TEST(DateTime, HasParts) {
    const DateTime date("2027-01-31T08:30:59.250-09:30", Both);
    EXPECT_TRUE(date.isSet());
    EXPECT_TRUE(date.hasTime());
    EXPECT_EQ(2027, date.getYear());
    EXPECT_EQ(1, date.getMonth());
    EXPECT_EQ(31, date.getDay());
    EXPECT_EQ(8, date.getHour());
    EXPECT_EQ(30, date.getMinute());
    EXPECT_EQ(59, date.getSecond());
    EXPECT_EQ(250, date.getMillisecond());
    EXPECT_EQ(-570, date.getOffset());
    EXPECT_EQ(date, DateTime::fromParts(2027, 1, 31, 8, 30, 59, 250, -570));
}

TEST(DateTime, IsMadeFromPartsThatExist) {
    EXPECT_EQ("2027-01-31", DateTime::fromDay(2027, 1, 31).toString());
    EXPECT_FALSE(DateTime::fromDay(2027, 2, 31).isSet());
    EXPECT_FALSE(DateTime::fromDay(0, 1, 1).isSet());
    EXPECT_FALSE(DateTime::fromParts(2027, 1, 31, 24, 0, 0, 0, 0).isSet());
    EXPECT_FALSE(DateTime::fromParts(2027, 1, 31, 0, -1, 0, 0, 0).isSet());
    EXPECT_FALSE(DateTime::fromParts(2027, 1, 31, 0, 0, 60, 0, 0).isSet());
    EXPECT_FALSE(DateTime::fromParts(2027, 1, 31, 0, 0, 0, 1000, 0).isSet());
    EXPECT_FALSE(DateTime::fromParts(2027, 1, 31, 0, 0, 0, 0, 841).isSet());
}

TEST(DateTime, CountsSecondsBeyond32Bits) {
    EXPECT_EQ(2147483648, DateTime("2038-01-19T03:14:08Z", Both).toSeconds());
    EXPECT_EQ(253402300799, DateTime("9999-12-31T23:59:59Z", Both).toSeconds());
    EXPECT_EQ(-62135596800, DateTime("0001-01-01T00:00:00Z", Both).toSeconds());
    EXPECT_EQ(Moment, DateTime("2027-01-31T06:50:00.999+01:00", Both).toSeconds());
    EXPECT_EQ("9999-12-31T23:59:59+00:00", inZone("UTC0", 253402300799, Both));
}

TEST(DateTime, IsUnsetBeyondItsYears) {
    EXPECT_EQ("", inZone("UTC0", 253402300800, Both));
    EXPECT_EQ("", inZone("UTC0", -62135596801, Both));
    EXPECT_EQ("", inZone("UTC0", std::numeric_limits<std::int64_t>::max(), Both));
    EXPECT_EQ("", inZone("UTC0", std::numeric_limits<std::int64_t>::min(), 1));
}

TEST(DateTime, CountsADateFromItsLocalMidnight) {
    const ScopedEnvironment zone("TZ", Berlin);
    EXPECT_EQ(DateTime("2027-01-31T00:00:00+01:00", Both).toSeconds(),
              DateTime("2027-01-31", Both).toSeconds());
    EXPECT_EQ(DateTime("2027-07-31T00:00:00+02:00", Both).toSeconds(),
              DateTime("2027-07-31", Both).toSeconds());
}

TEST(DateTime, KnowsTheZonesOffsetOnADay) {
    EXPECT_EQ(60, localOffsetIn(Berlin, 2027, 3, 28));
    EXPECT_EQ(120, localOffsetIn(Berlin, 2027, 3, 29));
    EXPECT_EQ(-300, localOffsetIn(NewYork, 2027, 1, 31));
    EXPECT_EQ(-240, localOffsetIn(NewYork, 2027, 7, 31));
    EXPECT_EQ(345, localOffsetIn(Kathmandu, 2027, 1, 31));
    EXPECT_EQ(0, localOffsetIn("UTC0", 2027, 1, 31));
}

TEST(DateTime, StartsADayWithItsFirstMoment) {
    // 2027-10-17 starts at 01:00-02:00, which is 00:00 by the offset before.
    EXPECT_EQ(-180, localOffsetIn(SaoPaulo, 2027, 10, 17));
    EXPECT_EQ(-120, localOffsetIn(SaoPaulo, 2027, 10, 18));
    // 2027-11-07 has 00:00 at -04:00, and an hour later again at -05:00.
    EXPECT_EQ(-240, localOffsetIn(Havana, 2027, 11, 7));
    EXPECT_EQ(-300, localOffsetIn(Havana, 2027, 11, 8));
}

TEST(DateTime, LeavesOutOffsetsThatNoZoneHas) {
    EXPECT_EQ("2027-01-31T05:50:00+00:00", inZone("XXX-20", Moment, Both));
    EXPECT_EQ(0, localOffsetIn("XXX-20", 2027, 1, 31));
}

TEST(DateTime, ComparesMomentsAcrossOffsets) {
    const DateTime early("2027-01-31T00:30:00+02:00", Both);
    const DateTime late("2027-01-30T23:00:00+00:00", Both);
    EXPECT_TRUE(early <= late);
    EXPECT_FALSE(late <= early);
    const DateTime same("2027-01-31T01:00:00+02:00", Both);
    EXPECT_TRUE(late <= same);
    EXPECT_TRUE(same <= late);
    EXPECT_NE(late, same);
}

TEST(DateTime, ComparesMomentsBeyond32Bits) {
    const DateTime early("2037-12-31T00:00:00Z", Both);
    const DateTime late("2107-01-01T00:00:00Z", Both);
    EXPECT_TRUE(early <= late);
    EXPECT_FALSE(late <= early);
}

TEST(DateTime, ComparesDaysAsWrittenWithoutATimeOnEitherSide) {
    const DateTime day("2027-01-31", Both);
    const DateTime farWest("2027-01-31T23:59:59-12:00", Both);
    const DateTime farEast("2027-01-31T00:00:00+14:00", Both);
    for (const DateTime& moment : {farWest, farEast}) {
        EXPECT_TRUE(day <= moment);
        EXPECT_TRUE(moment <= day);
    }
    EXPECT_TRUE(DateTime("2027-01-30", Both) <= farEast);
    EXPECT_FALSE(DateTime("2027-02-01", Both) <= farWest);
    EXPECT_FALSE(farEast <= DateTime("2026-12-31", Both));
}

TEST(DateTime, PutsTheUnsetDateBeforeAll) {
    EXPECT_TRUE(DateTime() <= DateTime("0001-01-01", Both));
    EXPECT_FALSE(DateTime("0001-01-01", Both) <= DateTime());
    EXPECT_TRUE(DateTime() <= DateTime());
}

TEST(DateTime, DiffersInAnyPart) {
    const DateTime date = DateTime::fromParts(2027, 1, 31, 0, 0, 0, 0, 0);
    EXPECT_NE(date, DateTime::fromDay(2027, 1, 31));
    EXPECT_NE(date, DateTime::fromParts(2027, 1, 30, 0, 0, 0, 0, 0));
    EXPECT_NE(date, DateTime::fromParts(2027, 1, 31, 0, 0, 0, 1, 0));
    EXPECT_NE(date, DateTime::fromParts(2027, 1, 31, 0, 0, 0, 0, 1));
    EXPECT_EQ(date, DateTime("2027-01-31T00:00:00Z", Both));
}

TEST(DateTime, GivesBackEveryMomentThroughItsText) {
    std::mt19937 random = repeatableRandom(20270131);
    std::uniform_int_distribution<std::int64_t> moments(-62135510400, 253402214399);
    for (const char* name : {"UTC0", Berlin, NewYork, Kathmandu, SaoPaulo, Havana}) {
        const ScopedEnvironment zone("TZ", name);
        for (int round = 0; round < 500; ++round) {
            const std::int64_t moment = moments(random);
            const DateTime date(moment, Both);
            ASSERT_EQ(moment, date.toSeconds()) << name;
            ASSERT_EQ(date, DateTime(date.toString(), Both)) << name << ' ' << moment;
        }
    }
}
