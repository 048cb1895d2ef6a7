// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/Exception.h>

#include <ctime>

#include "CimCalendar.h"
#include "CimDateTimeText.h"

namespace Pegasus {

using QZ::CimDay;
using QZ::CimEndOfIntervals;
using QZ::CimEndOfTime;
using QZ::CimHour;
using QZ::CimMinute;
using QZ::CimSecond;

CIMDateTime::CIMDateTime(const String& str) {
    set(str);
}

CIMDateTime::CIMDateTime(Uint64 usec, Boolean isInterval)
    : _usec(usec), _kind(isInterval ? Interval : PointInTime) {
    if (usec >= (isInterval ? CimEndOfIntervals : CimEndOfTime))
        throw DateTimeOutOfRangeException("too many microseconds");
}

String CIMDateTime::toString() const {
    return QZ::formatCimDateTime({isInterval(), _usec, _offset, _wildcards});
}

void CIMDateTime::set(const String& str) {
    const QZ::CimDateTimeText value = QZ::parseCimDateTime(str);
    _usec = value.usec;
    _offset = value.offset;
    _wildcards = value.wildcards;
    _kind = value.isInterval ? Interval : PointInTime;
}

CIMDateTime CIMDateTime::getCurrentDateTime() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm local{};
    localtime_r(&now.tv_sec, &local);
    if (local.tm_year < -1900 || local.tm_year > 9999 - 1900)
        throw DateTimeOutOfRangeException("the machine's clock");
    const QZ::CalendarDay day{static_cast<Uint32>(local.tm_year + 1900),
                              static_cast<Uint32>(local.tm_mon + 1),
                              static_cast<Uint32>(local.tm_mday)};
    // A leap second would not be a CIM datetime.
    const int second = local.tm_sec > 59 ? 59 : local.tm_sec;
    CIMDateTime result;
    result._kind = PointInTime;
    result._offset = static_cast<Sint16>(local.tm_gmtoff / 60);
    result._usec = QZ::dayNumber(day) * CimDay + static_cast<Uint64>(local.tm_hour) * CimHour +
                   static_cast<Uint64>(local.tm_min) * CimMinute +
                   static_cast<Uint64>(second) * CimSecond +
                   static_cast<Uint64>(now.tv_nsec) / 1000;
    return result;
}

Sint64 CIMDateTime::getDifference(CIMDateTime startTime, CIMDateTime finishTime) {
    if (startTime._kind != finishTime._kind)
        throw InvalidDateTimeFormatException();
    return finishTime._first() - startTime._first();
}

Uint64 CIMDateTime::toMicroSeconds() const {
    const Sint64 usec = _first();
    if (usec < 0)
        throw DateTimeOutOfRangeException("before the year 0 in UTC");
    return static_cast<Uint64>(usec);
}

// How many microseconds the asterisks leave open.
Uint64 CIMDateTime::_span() const {
    static constexpr Uint64 ofDigits[] = {1, 10, 100, 1000, 10000, 100000, CimSecond};
    switch (_wildcards) {
        case 8:
            return CimMinute;
        case 10:
            return CimHour;
        case 12:
            return CimDay;
        case 20:
            return isInterval() ? CimEndOfIntervals : CimEndOfTime;
        default:
            break;
    }
    if (_wildcards < 8)
        return ofDigits[_wildcards];
    const QZ::CalendarDay day = QZ::dayFromNumber(static_cast<Uint32>(_usec / CimDay));
    return (_wildcards == 14 ? QZ::daysInMonth(day.year, day.month) : QZ::daysInYear(day.year)) *
           CimDay;
}

// In UTC; negative for the first hours of the year 0 east of Greenwich.
Sint64 CIMDateTime::_first() const {
    const auto usec = static_cast<Sint64>(_usec);
    return _wildcards >= 12 ? usec : usec - _offset * static_cast<Sint64>(CimMinute);
}

// Below or above 0 where this lies wholly before or after x, 0 where they overlap.
int CIMDateTime::_compare(const CIMDateTime& x) const {
    if (_kind != x._kind)
        throw TypeMismatchException("a point in time and an interval do not compare");
    const Sint64 last = _first() + static_cast<Sint64>(_span()) - 1;
    const Sint64 xLast = x._first() + static_cast<Sint64>(x._span()) - 1;
    return last < x._first() ? -1 : _first() > xLast;
}

Boolean CIMDateTime::equal(const CIMDateTime& x) const {
    return _compare(x) == 0;
}
Boolean CIMDateTime::operator<(const CIMDateTime& x) const {
    return _compare(x) < 0;
}
Boolean CIMDateTime::operator<=(const CIMDateTime& x) const {
    return _compare(x) <= 0;
}
Boolean CIMDateTime::operator>(const CIMDateTime& x) const {
    return _compare(x) > 0;
}
Boolean CIMDateTime::operator>=(const CIMDateTime& x) const {
    return _compare(x) >= 0;
}
Boolean CIMDateTime::operator!=(const CIMDateTime& x) const {
    return _compare(x) != 0;
}
Boolean operator==(const CIMDateTime& x, const CIMDateTime& y) {
    return x.equal(y);
}

template class Array<CIMDateTime>;

}  // namespace Pegasus
