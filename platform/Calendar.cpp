// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Calendar.h"

namespace QZ {

namespace {

bool isLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysInMonth(int year, int month) {
    if (month == 2)
        return isLeapYear(year) ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

}  // namespace

bool dateExists(int year, int month, int day) {
    return year >= 1 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
           day <= daysInMonth(year, month);
}

std::int64_t daysFromDate(int year, int month, int day) {
    // Days before 1 January 1970, counted from 1 January of year 1.
    constexpr std::int64_t DaysToEpoch = 719162;
    const int past = year - 1;
    std::int64_t days = past * std::int64_t{365} + past / 4 - past / 100 + past / 400;
    for (int earlier = 1; earlier < month; ++earlier)
        days += daysInMonth(year, earlier);
    return days + day - 1 - DaysToEpoch;
}

}  // namespace QZ
