// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimCalendar.h"

namespace QZ {

using Pegasus::Uint32;

namespace {

constexpr bool _isLeapYear(Uint32 year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// Days of the years 0 to year - 1.
constexpr Uint32 _daysBeforeYear(Uint32 year) {
    return year * 365 + (year + 3) / 4 - (year + 99) / 100 + (year + 399) / 400;
}

}  // namespace

Uint32 daysInYear(Uint32 year) {
    return _isLeapYear(year) ? 366 : 365;
}

Uint32 daysInMonth(Uint32 year, Uint32 month) {
    static constexpr Uint32 days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && _isLeapYear(year) ? 29 : days[month - 1];
}

Uint32 dayNumber(const CalendarDay& day) {
    Uint32 number = _daysBeforeYear(day.year) + day.day - 1;
    for (Uint32 month = 1; month < day.month; ++month)
        number += daysInMonth(day.year, month);
    return number;
}

CalendarDay dayFromNumber(Uint32 number) {
    // By the average year, which misses by one at most.
    auto year = static_cast<Uint32>(Pegasus::Uint64(number) * 400 / 146097);
    if (_daysBeforeYear(year) > number)
        --year;
    else if (_daysBeforeYear(year + 1) <= number)
        ++year;
    Uint32 rest = number - _daysBeforeYear(year);
    Uint32 month = 1;
    for (; rest >= daysInMonth(year, month); ++month)
        rest -= daysInMonth(year, month);
    return {year, month, rest + 1};
}

}  // namespace QZ
