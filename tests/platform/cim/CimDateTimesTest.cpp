// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimDateTimes.h"

#include <gtest/gtest.h>

#include "CimText.h"
#include "ScopedEnvironment.h"

namespace QZ {
namespace {

std::string _sent(const DateTime& date) {
    return make_string(make_CIMDateTime(date).toString());
}

DateTime _received(const char* text) {
    return make_DateTime(Pegasus::CIMDateTime(Pegasus::String(text)));
}

TEST(CimDateTimes, SendsAPointInTime) {
    EXPECT_EQ(_sent(DateTime::fromParts(2027, 1, 31, 23, 59, 58, 250, 60)),
              "20270131235958.250000+060");
    EXPECT_EQ(_sent(DateTime::fromParts(999, 1, 1, 0, 0, 0, 0, -720)), "09990101000000.000000-720");
}

TEST(CimDateTimes, SendsTheUnsetDateAsAnInterval) {
    EXPECT_TRUE(make_CIMDateTime(DateTime()).isInterval());
}

TEST(CimDateTimes, SendsADayAsItsFirstMomentHere) {
    const ScopedEnvironment zone("TZ", "EST5EDT,M3.2.0,M11.1.0");
    EXPECT_EQ(_sent(DateTime::fromDay(2027, 1, 31)), "20270131000000.000000-300");
    EXPECT_EQ(_sent(DateTime::fromDay(2027, 7, 31)), "20270731000000.000000-240");
}

TEST(CimDateTimes, ReceivesAPointInTimeToTheMillisecond) {
    EXPECT_EQ(_received("20270131235958.250000+060"),
              DateTime::fromParts(2027, 1, 31, 23, 59, 58, 250, 60));
    EXPECT_EQ(_received("20270131235958.250999-060"),
              DateTime::fromParts(2027, 1, 31, 23, 59, 58, 250, -60));
}

TEST(CimDateTimes, DoesNotTakeMicrosecondsForMilliseconds) {
    EXPECT_EQ(_received("20270131000000.000500+000"),
              DateTime::fromParts(2027, 1, 31, 0, 0, 0, 0, 0));
    EXPECT_EQ(_received("20270131000000.001500+000"),
              DateTime::fromParts(2027, 1, 31, 0, 0, 0, 1, 0));
}

TEST(CimDateTimes, ReceivesAnIntervalAsTheUnsetDate) {
    EXPECT_FALSE(_received("00000000000000.000000:000").isSet());
    EXPECT_FALSE(_received("00000005120000.000000:000").isSet());
}

TEST(CimDateTimes, ReceivesADayWhoseTimeIsLeftOpen) {
    EXPECT_EQ(_received("20270131******.******+060"), DateTime::fromDay(2027, 1, 31));
}

TEST(CimDateTimes, ReceivesADayLeftOpenAsTheUnsetDate) {
    EXPECT_FALSE(_received("202701********.******+060").isSet());
    EXPECT_FALSE(_received("**************.******+060").isSet());
}

TEST(CimDateTimes, GivesBackEveryDate) {
    const DateTime dates[] = {DateTime::fromParts(1, 1, 1, 0, 0, 0, 0, 0),
                              DateTime::fromParts(9999, 12, 31, 23, 59, 59, 999, 840),
                              DateTime::fromParts(2024, 2, 29, 12, 0, 0, 1, -1)};
    for (const DateTime& date : dates) {
        EXPECT_EQ(make_DateTime(make_CIMDateTime(date)), date) << date.toString();
    }
}

}  // namespace
}  // namespace QZ
