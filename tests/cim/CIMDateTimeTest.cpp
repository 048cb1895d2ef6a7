// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

using namespace Pegasus;

namespace {

CIMDateTime _at(const char* text) {
    return CIMDateTime(String(text));
}

const Uint64 _day = 86400000000ULL;

}  // namespace

TEST(CIMDateTime, StartsAsAnEmptyInterval) {
    const CIMDateTime none;
    EXPECT_TRUE(none.isInterval());
    EXPECT_EQ(none.toString(), "00000000000000.000000:000");
    EXPECT_EQ(none.toMicroSeconds(), 0U);
}

TEST(CIMDateTime, KeepsItsText) {
    for (const char* text :
         {"20270131000000.000000+060", "20200229235959.999999-720", "00000101000000.000000+000",
          "99991231235959.999999+999", "99999999235959.999999:000", "00000001020304.000005:000"})
        EXPECT_EQ(_at(text).toString(), text);
    // There is one zero offset.
    EXPECT_EQ(_at("20200101000000.000000-000").toString(), "20200101000000.000000+000");
}

TEST(CIMDateTime, KeepsAsterisks) {
    for (const char* text :
         {"20200101000000.00000*+000", "20200101000000.0*****-060", "20200101000000.******+060",
          "202001010000**.******+000", "2020010100****.******+000", "20200101******.******+000",
          "202001********.******+000", "2020**********.******+000", "**************.******+060",
          "00000001010101.0*****:000", "000000010101**.******:000", "00000001******.******:000",
          "**************.******:000"})
        EXPECT_EQ(_at(text).toString(), text);
}

TEST(CIMDateTime, RefusesAsterisksElsewhere) {
    for (const char* text :
         {"20200101000000.0*0000+000", "2020010100000*.******+000", "20200101**0000.000000+000",
          "2020**31000000.000000+000", "****0101000000.000000+000", "202*0101000000.000000+000",
          "202*0*********.******+000", "********010101.000000:000", "0000000*******.******:000",
          "000000********.******:000", "000000010*****.******:000", "20200101000000.000000+***",
          "**************.******:***"})
        EXPECT_THROW(_at(text), InvalidDateTimeFormatException) << text;
}

TEST(CIMDateTime, RefusesOtherText) {
    for (const char* text :
         {"", "2027-01-31", "20200101000000.000000+00", "20200101000000.000000+0000",
          "20200101000000,000000+000", "20200101000000.000000 000", "2020010100000 .000000+000",
          "+0200101000000.000000+000", " 0200101000000.000000+000", "20200101000000.000000+-60",
          "20200101000000.000000+ 60", "00000001010101.000000:001", "2020010100000a.000000+000",
          "2\xc3\xa4 00101000000.000000+000"})
        EXPECT_THROW(_at(text), InvalidDateTimeFormatException) << text;
}

TEST(CIMDateTime, RefusesDaysAndTimesThatDoNotExist) {
    for (const char* text :
         {"20201301000000.000000+000", "20200001000000.000000+000", "20200230000000.000000+000",
          "20190229000000.000000+000", "19000229000000.000000+000", "20200431000000.000000+000",
          "20200100000000.000000+000", "20200131240000.000000+000", "20200131236000.000000+000",
          "20200131235960.000000+000", "00000001240000.000000:000", "00000001236000.000000:000",
          "00000001235960.000000:000"})
        EXPECT_THROW(_at(text), DateTimeOutOfRangeException) << text;
    EXPECT_NO_THROW(_at("20000229000000.000000+000"));
    EXPECT_NO_THROW(_at("00000229000000.000000+000"));
    EXPECT_NO_THROW(_at("20200229000000.000000+000"));
}

TEST(CIMDateTime, SaysWhatIsOutOfRange) {
    try {
        _at("20201301000000.000000+000");
        FAIL() << "nothing was thrown";
    } catch (const DateTimeOutOfRangeException& e) {
        EXPECT_EQ(e.getMessage(), "datetime out of range: month 13");
    }
}

TEST(CIMDateTime, SetReplacesTheValueOrLeavesIt) {
    CIMDateTime date;
    date.set("20270131000000.000000+060");
    EXPECT_FALSE(date.isInterval());
    EXPECT_THROW(date.set("soon"), InvalidDateTimeFormatException);
    EXPECT_EQ(date.toString(), "20270131000000.000000+060");
    date.clear();
    EXPECT_EQ(date.toString(), "00000000000000.000000:000");
}

TEST(CIMDateTime, IsMadeOfMicroseconds) {
    EXPECT_EQ(CIMDateTime(0, false).toString(), "00000101000000.000000+000");
    EXPECT_EQ(CIMDateTime(_day + 1, true).toString(), "00000001000000.000001:000");
    EXPECT_EQ(CIMDateTime(315569519999999999ULL, false).toString(), "99991231235959.999999+000");
    EXPECT_THROW(CIMDateTime(315569520000000000ULL, false), DateTimeOutOfRangeException);
    EXPECT_EQ(CIMDateTime(8639999999999999999ULL, true).toString(), "99999999235959.999999:000");
    EXPECT_THROW(CIMDateTime(8640000000000000000ULL, true), DateTimeOutOfRangeException);
}

TEST(CIMDateTime, CountsMicrosecondsInUtc) {
    EXPECT_EQ(_at("19700101000000.000000+000").toMicroSeconds(), 719528 * _day);
    EXPECT_EQ(_at("19700101010000.000000+060").toMicroSeconds(), 719528 * _day);
    EXPECT_EQ(_at("19691231230000.000000-060").toMicroSeconds(), 719528 * _day);
    EXPECT_EQ(_at("00000101000000.000000-001").toMicroSeconds(), 60000000U);
    EXPECT_THROW(_at("00000101000000.000000+060").toMicroSeconds(), DateTimeOutOfRangeException);
    EXPECT_EQ(_at("00000002000000.******:000").toMicroSeconds(), 2 * _day);
}

TEST(CIMDateTime, AppliesNoOffsetWhereTheHourIsUnknown) {
    EXPECT_EQ(_at("19700101******.******+060").toMicroSeconds(), 719528 * _day);
    EXPECT_EQ(_at("1970010101****.******+060").toMicroSeconds(), 719528 * _day);
}

TEST(CIMDateTime, EveryDayHasItsText) {
    // The start of each day up to the year 9999 gives back its number.
    for (Uint64 number = 0; number < 3652425; number += 13) {
        const CIMDateTime day(number * _day, false);
        ASSERT_EQ(_at(day.toString().getCString()).toMicroSeconds(), number * _day) << number;
    }
}

TEST(CIMDateTime, CurrentIsLocalTimeWithItsOffset) {
    setenv("TZ", "XXX-5:30", 1);
    tzset();
    const CIMDateTime now = CIMDateTime::getCurrentDateTime();
    const auto clock = static_cast<Uint64>(std::time(nullptr)) * 1000000 + 719528 * _day;
    unsetenv("TZ");
    tzset();
    EXPECT_FALSE(now.isInterval());
    EXPECT_EQ(now.toString().subString(21), "+330");
    EXPECT_NEAR(static_cast<double>(now.toMicroSeconds()), static_cast<double>(clock), 10e6);
}
