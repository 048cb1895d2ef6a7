// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimDateTimes.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include "CimText.h"

namespace QZ {

Pegasus::CIMDateTime make_CIMDateTime(const DateTime& date) {
    if (!date.isSet()) {
        return Pegasus::CIMDateTime();
    }
    const int offset = date.hasTime()
                           ? date.getOffset()
                           : DateTime::localOffset(date.getYear(), date.getMonth(), date.getDay());
    // DSP0004, 5.2.4: yyyymmddhhmmss.mmmmmmsutc
    std::array<char, 64> text{};
    (void)std::snprintf(text.data(), text.size(), "%04d%02d%02d%02d%02d%02d.%03d000%c%03d",
                        date.getYear(), date.getMonth(), date.getDay(), date.getHour(),
                        date.getMinute(), date.getSecond(), date.getMillisecond(),
                        offset < 0 ? '-' : '+', std::abs(offset));
    return Pegasus::CIMDateTime(Pegasus::String(text.data()));
}

DateTime make_DateTime(const Pegasus::CIMDateTime& date) {
    if (date.isInterval()) {
        return DateTime();
    }
    constexpr std::size_t fraction = 15;
    constexpr std::size_t digitsOfMilliseconds = 3;
    std::string text = make_string(date.toString());
    // Whole milliseconds: DateTime takes a fraction below 1000 for a count of milliseconds.
    for (std::size_t i = fraction + digitsOfMilliseconds; i < fraction + 6; ++i) {
        if (i < text.size() && text[i] != '*') {
            text[i] = '0';
        }
    }
    return DateTime(text, DateTime::CalendarDate | DateTime::TimeOfDay);
}

}  // namespace QZ
