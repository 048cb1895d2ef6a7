// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

using namespace Pegasus;

namespace {

CIMDateTime _at(const char* text) {
    return CIMDateTime(String(text));
}

// The same instant.
const CIMDateTime _newYear = _at("20200101000000.000000+060");
const CIMDateTime _newYearInUtc = _at("20191231230000.000000+000");

const CIMDateTime _oneDay = _at("00000001000000.000000:000");
const CIMDateTime _halfDay = _at("00000000120000.000000:000");

}  // namespace

TEST(CIMDateTimeOrder, IsThatOfInstants) {
    EXPECT_TRUE(_newYear == _newYearInUtc);
    EXPECT_FALSE(_newYear != _newYearInUtc);
    EXPECT_TRUE(_newYear <= _newYearInUtc);
    EXPECT_TRUE(_newYear >= _newYearInUtc);
    EXPECT_FALSE(_newYear < _newYearInUtc);
    EXPECT_TRUE(_at("20200101000000.000000+120") < _newYear);
    EXPECT_TRUE(_oneDay > _halfDay);
}

TEST(CIMDateTimeOrder, KnowsNoneBetweenInstantAndInterval) {
    EXPECT_THROW(_newYear.equal(_oneDay), TypeMismatchException);
    EXPECT_THROW((void)(_newYear == _oneDay), TypeMismatchException);
    EXPECT_THROW((void)(_newYear != _oneDay), TypeMismatchException);
    EXPECT_THROW((void)(_oneDay < _newYear), TypeMismatchException);
    EXPECT_THROW(CIMDateTime::getDifference(_oneDay, _newYear), InvalidDateTimeFormatException);
}

TEST(CIMDateTimeOrder, TakesAsterisksAsARange) {
    const CIMDateTime day = _at("20200101******.******+000");
    const CIMDateTime noon = _at("20200101120000.000000+000");
    EXPECT_TRUE(day == noon);
    EXPECT_TRUE(day <= noon);
    EXPECT_TRUE(day >= noon);
    EXPECT_FALSE(day < noon);
    EXPECT_TRUE(day == _at("20200101235959.999999+000"));
    EXPECT_TRUE(day < _at("20200102000000.000000+000"));
    EXPECT_TRUE(day > _at("20191231235959.999999+000"));
    EXPECT_TRUE(day == _at("2020**********.******+000"));
    EXPECT_TRUE(_at("202002********.******+000") < _at("20200301000000.000000+000"));
    EXPECT_TRUE(_at("202002********.******+000") == _at("20200229235959.999999+000"));
    EXPECT_TRUE(_at("2020**********.******+000") < _at("20210101000000.000000+000"));
    EXPECT_TRUE(_at("20200101000000.12****+000") == _at("20200101000000.129999+000"));
    EXPECT_TRUE(_at("20200101000000.12****+000") < _at("20200101000000.130000+000"));
    EXPECT_TRUE(_at("202001010000**.******+000") < _at("20200101000100.000000+000"));
    EXPECT_TRUE(_at("2020010100****.******+000") < _at("20200101010000.000000+000"));
    EXPECT_TRUE(_at("**************.******+000") == noon);
    EXPECT_TRUE(_at("**************.******:000") == _oneDay);
    EXPECT_TRUE(_at("00000001******.******:000") == _at("00000001120000.000000:000"));
}

TEST(CIMDateTimeDifference, CountsMicroseconds) {
    EXPECT_EQ(CIMDateTime::getDifference(_newYear, _newYearInUtc), 0);
    EXPECT_EQ(CIMDateTime::getDifference(_oneDay, _halfDay), -43200000000LL);
    EXPECT_EQ(CIMDateTime::getDifference(_at("20200101000000.000000+000"),
                                         _at("20210101000000.000000+000")),
              366 * 86400000000LL);
}

TEST(CIMDateTimeArithmetic, MovesInstantsByIntervals) {
    EXPECT_EQ((_newYear + _oneDay).toString(), "20200102000000.000000+060");
    EXPECT_EQ((_newYear - _halfDay).toString(), "20191231120000.000000+060");
    CIMDateTime moved = _newYear;
    moved += _oneDay;
    moved -= _halfDay;
    EXPECT_EQ(moved.toString(), "20200101120000.000000+060");
}

TEST(CIMDateTimeArithmetic, SubtractsInstants) {
    EXPECT_EQ((_newYear - _newYearInUtc).toString(), "00000000000000.000000:000");
    EXPECT_EQ((_newYear - _at("20191230000000.000000+000")).toString(),
              "00000001230000.000000:000");
    EXPECT_THROW(_at("20191230000000.000000+000") - _newYear, DateTimeOutOfRangeException);
}

TEST(CIMDateTimeArithmetic, AddsAndScalesIntervals) {
    EXPECT_EQ((_oneDay + _halfDay).toString(), "00000001120000.000000:000");
    EXPECT_EQ((_oneDay - _halfDay).toString(), "00000000120000.000000:000");
    EXPECT_EQ((_oneDay * 3).toString(), "00000003000000.000000:000");
    EXPECT_EQ((_oneDay / 2).toString(), "00000000120000.000000:000");
    EXPECT_EQ(_oneDay / _halfDay, 2U);
    EXPECT_EQ((_oneDay * 0).toString(), "00000000000000.000000:000");
    CIMDateTime scaled = _oneDay;
    scaled *= 4;
    scaled /= 8;
    EXPECT_TRUE(scaled == _halfDay);
}

TEST(CIMDateTimeArithmetic, RefusesWhatMakesNoSense) {
    EXPECT_THROW(_oneDay + _newYear, TypeMismatchException);
    EXPECT_THROW(_oneDay - _newYear, TypeMismatchException);
    EXPECT_THROW(_newYear + _newYear, TypeMismatchException);
    EXPECT_THROW(_newYear * 2, TypeMismatchException);
    EXPECT_THROW(_newYear / 2, TypeMismatchException);
    EXPECT_THROW(_oneDay / _newYear, TypeMismatchException);
    EXPECT_THROW(_newYear / _oneDay, TypeMismatchException);
    EXPECT_THROW(_oneDay / 0, Exception);
    EXPECT_THROW(_oneDay / CIMDateTime(), Exception);
}

TEST(CIMDateTimeArithmetic, StaysInRange) {
    EXPECT_THROW(_at("99991231000000.000000+000") + _oneDay, DateTimeOutOfRangeException);
    EXPECT_THROW(_at("00000101000000.000000+000") - _oneDay, DateTimeOutOfRangeException);
    EXPECT_THROW(_halfDay - _oneDay, DateTimeOutOfRangeException);
    const CIMDateTime longest = _at("99999999000000.000000:000");
    EXPECT_THROW(longest + _oneDay, DateTimeOutOfRangeException);
    EXPECT_THROW(longest * 2, DateTimeOutOfRangeException);
    EXPECT_THROW(longest * 18446744073709551615ULL, DateTimeOutOfRangeException);
}

TEST(CIMDateTimeArithmetic, KeepsAsterisks) {
    const CIMDateTime day = _at("20200101******.******+060");
    EXPECT_EQ((day + _oneDay).toString(), "20200102******.******+060");
    EXPECT_EQ((day + _halfDay).toString(), "20200101******.******+060");
    // Half a day twice is still not a day: it was not known to begin with.
    EXPECT_EQ((day + _halfDay + _halfDay).toString(), "20200101******.******+060");
    EXPECT_EQ((_at("202001********.******+000") + _oneDay * 40).toString(),
              "202002********.******+000");
    EXPECT_EQ((_at("2020**********.******+000") + _oneDay).toString(), "2020**********.******+000");
    EXPECT_EQ((_at("**************.******+000") + _oneDay).toString(), "**************.******+000");
    EXPECT_EQ((_at("00000001******.******:000") * 2).toString(), "00000002******.******:000");
    EXPECT_EQ((_newYear + _at("00000001******.******:000")).toString(),
              "20200102000000.000000+060");
}
