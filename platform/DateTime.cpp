// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DateTime.h"

#include <ctime>
#include <tuple>

namespace QZ {

namespace {

constexpr std::int64_t SecondsPerDay = 86400;
constexpr std::int64_t SecondsPerMinute = 60;

// On 32-bit machines the C library has to be asked for it (cmake/Tavqz.cmake).
static_assert(sizeof(time_t) == sizeof(std::int64_t));

// The machine's zone at a moment, in whole minutes east of UTC; UTC itself where the C library
// knows no better or the zone is further away than any real one.
int localOffsetAt(std::int64_t seconds) {
    const auto time = static_cast<time_t>(seconds);
    std::tm local{};
    if (localtime_r(&time, &local) == nullptr)
        return 0;
    const auto offset = static_cast<int>(local.tm_gmtoff / 60);
    return offset >= -MaximumOffset && offset <= MaximumOffset ? offset : 0;
}

// The offset is counted in whole minutes, so the parts are computed from it, not taken from the C
// library: zones of the 19th century differ from UTC by odd seconds.
DateTimeParts partsAt(std::int64_t seconds) {
    DateTimeParts parts;
    parts.offset = localOffsetAt(seconds);
    const auto shifted = static_cast<time_t>(seconds + parts.offset * SecondsPerMinute);
    std::tm local{};
    if (gmtime_r(&shifted, &local) == nullptr || local.tm_year > 9999 - 1900)
        return {};
    parts.year = local.tm_year + 1900;
    parts.month = local.tm_mon + 1;
    parts.day = local.tm_mday;
    parts.hour = local.tm_hour;
    parts.minute = local.tm_min;
    parts.second = local.tm_sec;
    parts.hasTime = true;
    return parts;
}

auto dayOf(const DateTime& date) {
    return std::make_tuple(date.getYear(), date.getMonth(), date.getDay());
}

auto timeOf(const DateTime& date) {
    return std::make_tuple(date.hasTime(), date.getHour(), date.getMinute(), date.getSecond(),
                           date.getMillisecond(), date.getOffset());
}

}  // namespace

DateTime::DateTime(const DateTimeParts& parts, unsigned format) {
    if ((format & CalendarDate) == 0 || !partsExist(parts))
        return;
    if ((format & TimeOfDay) != 0 && parts.hasTime) {
        _parts = parts;
        return;
    }
    _parts.year = parts.year;
    _parts.month = parts.month;
    _parts.day = parts.day;
}

DateTime::DateTime(std::int64_t seconds, unsigned format) : DateTime(partsAt(seconds), format) {}

DateTime::DateTime(const std::string& text, unsigned format)
    : DateTime(parseDateTime(text), format) {}

DateTime::DateTime(const char* text, unsigned format) : DateTime(parseDateTime(text), format) {}

DateTime DateTime::fromParts(int year, int month, int day, int hour, int minute, int second,
                             int millisecond, int offsetMinutes) {
    return DateTime(
        DateTimeParts{year, month, day, hour, minute, second, millisecond, offsetMinutes, true},
        CalendarDate | TimeOfDay);
}

DateTime DateTime::fromDay(int year, int month, int day) {
    return DateTime(DateTimeParts{year, month, day, 0, 0, 0, 0, 0, false}, CalendarDate);
}

std::int64_t DateTime::toSeconds() const {
    if (!isSet())
        return 0;
    const std::int64_t days = daysFromDate(_parts.year, _parts.month, _parts.day);
    const int seconds = (_parts.hour * 60 + _parts.minute) * 60 + _parts.second;
    const int offset =
        hasTime() ? _parts.offset : localOffset(_parts.year, _parts.month, _parts.day);
    return days * SecondsPerDay + seconds - offset * SecondsPerMinute;
}

std::string DateTime::toString() const {
    return composeDateTime(_parts);
}

int DateTime::localOffset(int year, int month, int day) {
    // mktime's answer at a change of the clocks depends on what it was asked before, so the offsets
    // a day before and after are tried instead.
    const std::int64_t midnight = daysFromDate(year, month, day) * SecondsPerDay;
    const int before = localOffsetAt(midnight - SecondsPerDay);
    if (localOffsetAt(midnight - before * SecondsPerMinute) == before)
        return before;
    const int after = localOffsetAt(midnight + SecondsPerDay);
    return localOffsetAt(midnight - after * SecondsPerMinute) == after ? after : before;
}

bool operator<=(const DateTime& left, const DateTime& right) {
    if (left.hasTime() && right.hasTime())
        return left.toSeconds() <= right.toSeconds();
    return dayOf(left) <= dayOf(right);
}

bool operator==(const DateTime& left, const DateTime& right) {
    return dayOf(left) == dayOf(right) && timeOf(left) == timeOf(right);
}

bool operator!=(const DateTime& left, const DateTime& right) {
    return !(left == right);
}

}  // namespace QZ
