// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>

namespace QZ {

// The Gregorian calendar, carried back to the year 0, which is a leap year.
struct CalendarDay {
    Pegasus::Uint32 year;
    Pegasus::Uint32 month;
    Pegasus::Uint32 day;
};

Pegasus::Uint32 daysInYear(Pegasus::Uint32 year);
// month is 1 to 12.
Pegasus::Uint32 daysInMonth(Pegasus::Uint32 year, Pegasus::Uint32 month);

// Days since 1 January of the year 0, for years up to 9999. The day must exist.
Pegasus::Uint32 dayNumber(const CalendarDay& day);
CalendarDay dayFromNumber(Pegasus::Uint32 number);

}  // namespace QZ
