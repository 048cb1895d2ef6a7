// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DateTimeText.h"

#include <gtest/gtest.h>

using namespace QZ;

namespace {

// The parts as one comparable text, "unset" for the unset date.
std::string partsOf(const std::string& text) {
    const DateTimeParts parts = parseDateTime(text);
    if (parts.year == 0)
        return "unset";
    std::string result = std::to_string(parts.year) + ' ' + std::to_string(parts.month) + ' ' +
                         std::to_string(parts.day);
    if (parts.hasTime)
        for (const int part :
             {parts.hour, parts.minute, parts.second, parts.millisecond, parts.offset})
            result += ' ' + std::to_string(part);
    return result;
}

}  // namespace

TEST(DateTimeText, ReadsIsoDatesAndTimes) {
    EXPECT_EQ("2027 1 31", partsOf("2027-01-31"));
    EXPECT_EQ("2027 1 31 0 0 0 0 60", partsOf("2027-01-31T00:00:00+01:00"));
    EXPECT_EQ("2027 1 31 8 30 59 250 -570", partsOf("2027-01-31T08:30:59.250-09:30"));
    EXPECT_EQ("2027 1 31 23 59 59 0 0", partsOf("2027-01-31T23:59:59Z"));
    EXPECT_EQ("1 1 1", partsOf("0001-01-01"));
    EXPECT_EQ("9999 12 31", partsOf("9999-12-31"));
}

TEST(DateTimeText, ReadsCimDatetimes) {
    EXPECT_EQ("2027 1 31 8 30 59 123 60", partsOf("20270131083059.123456+060"));
    EXPECT_EQ("2027 1 31 8 30 59 0 -300", partsOf("20270131083059.000000-300"));
}

TEST(DateTimeText, ReadsTheFlatInterfacesOwnOutput) {
    EXPECT_EQ("2027 1 31 8 30 59 0 -60", partsOf("20270131083059.000000+-060"));
    EXPECT_EQ("2027 1 31 8 30 59 0 -600", partsOf("20270131083059.000000+-600"));
    EXPECT_EQ("2027 1 31 8 30 59 12 60", partsOf("20270131083059.000012+060"));
}

TEST(DateTimeText, TakesSixDigitsBelowAThousandAsMilliseconds) {
    EXPECT_EQ("2027 1 31 0 0 0 999 0", partsOf("20270131000000.000999+000"));
    EXPECT_EQ("2027 1 31 0 0 0 1 0", partsOf("20270131000000.001000+000"));
    EXPECT_EQ("2027 1 31 0 0 0 999 0", partsOf("20270131000000.999999+000"));
}

TEST(DateTimeText, TakesAsterisksForTheTimeAsADateWithout) {
    EXPECT_EQ("2027 1 31", partsOf("20270131******.******+060"));
    EXPECT_EQ("2027 1 31", partsOf("20270131******.******-000"));
    EXPECT_EQ("2027 1 31", partsOf("20270131******.******+***"));
}

TEST(DateTimeText, TakesAsterisksForTheTimesEndAsZero) {
    EXPECT_EQ("2027 1 31 8 0 0 0 60", partsOf("2027013108****.******+060"));
    EXPECT_EQ("2027 1 31 8 30 0 0 60", partsOf("202701310830**.******+060"));
    EXPECT_EQ("2027 1 31 8 30 59 0 60", partsOf("20270131083059.******+060"));
    EXPECT_EQ("2027 1 31 8 30 59 250 60", partsOf("20270131083059.25****+060"));
    EXPECT_EQ("2027 1 31 8 30 59 0 60", partsOf("20270131083059.00025*+060"));
}

TEST(DateTimeText, RefusesAsterisksElsewhere) {
    for (const char* text :
         {"****0131083059.000000+060", "2027**31083059.000000+060", "202701**083059.000000+060",
          "202701********.******+060", "**************.******+***", "20270131**3059.000000+060",
          "2027013108**59.000000+060", "20270131083059.2***50+060", "20270131083059.000000+***",
          "2027-01-**", "202*0131083059.000000+060"})
        EXPECT_EQ("unset", partsOf(text)) << text;
}

TEST(DateTimeText, RefusesIntervals) {
    EXPECT_EQ("unset", partsOf("00000000000000.000000:000"));
    EXPECT_EQ("unset", partsOf("20270131083059.000000:000"));
}

TEST(DateTimeText, RefusesDatesAndTimesThatDoNotExist) {
    for (const char* text :
         {"2027-02-29", "2027-13-01", "2027-00-10", "2027-01-00", "0000-01-01",
          "2027-01-31T24:00:00Z", "2027-01-31T23:60:00Z", "2027-01-31T23:59:60Z",
          "00000101000000.000000+000", "20270230000000.000000+000", "20270131240000.000000+000",
          "20270131000060.000000+000", "00000000000000.000000+000"})
        EXPECT_EQ("unset", partsOf(text)) << text;
}

TEST(DateTimeText, BoundsOffsets) {
    EXPECT_EQ("2027 1 31 0 0 0 0 840", partsOf("2027-01-31T00:00:00+14:00"));
    EXPECT_EQ("2027 1 31 0 0 0 0 -840", partsOf("20270131000000.000000-840"));
    for (const char* text :
         {"2027-01-31T00:00:00+14:01", "2027-01-31T00:00:00-15:00", "2027-01-31T00:00:00+01:60",
          "20270131000000.000000+841", "20270131000000.000000+-999"})
        EXPECT_EQ("unset", partsOf(text)) << text;
}

TEST(DateTimeText, RefusesAnythingElse) {
    for (const char* text : {"",
                             " ",
                             "2027",
                             "2027-1-31",
                             "2027-01-31 ",
                             " 2027-01-31",
                             "31.01.2027",
                             "2027/01/31",
                             "2027-01-31T",
                             "2027-01-31T08:30:59",
                             "2027-01-31T08:30Z",
                             "2027-01-31 08:30:59Z",
                             "2027-01-31T08:30:59.Z",
                             "2027-01-31T08:30:59.25Z",
                             "2027-01-31T08:30:59.2500Z",
                             "2027-01-31T08:30:59Z1",
                             "2027-01-31t08:30:59z",
                             "2027-01-31T08:30:59+0100",
                             "2027-01-31T08:30:59+-01:00",
                             "+027-01-31",
                             "20270131",
                             "20270131083059",
                             "20270131083059.000000",
                             "20270131083059.000000+",
                             "20270131083059.000000+06",
                             "20270131083059.000000+0600",
                             "20270131083059.000000060",
                             "20270131083059,000000+060",
                             "20270131083059.000000-+060",
                             "2027013108305a.000000+060",
                             "not a date"})
        EXPECT_EQ("unset", partsOf(text)) << text;
    EXPECT_EQ("unset", partsOf(std::string("2027-01-31\0", 11)));
}

TEST(DateTimeText, HasNoTextForTheUnsetDate) {
    EXPECT_EQ("", composeDateTime(DateTimeParts()));
}

TEST(DateTimeText, GivesBackWhatItReadAsIso) {
    for (const char* text :
         {"2027-01-31", "0007-12-01", "2027-01-31T00:00:00+01:00", "2027-01-31T08:05:09.007-09:30",
          "2027-01-31T08:05:09-00:30", "2027-01-31T23:59:59+00:00"})
        EXPECT_EQ(text, composeDateTime(parseDateTime(text)));
}
