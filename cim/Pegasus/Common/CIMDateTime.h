// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// A point in time with its offset from UTC, or an interval, in the 25 characters of DSP0004
// (section 5.2.4, datetime type):
//
//   yyyymmddhhmmss.mmmmmmsutc    point in time, s is "+" or "-", utc minutes
//   ddddddddhhmmss.mmmmmm:000    interval
//
// Asterisks may stand for what is not known: for whole fields from the right, and for the last
// digits of the microseconds. Such a value is a range: in comparisons it equals whatever it
// overlaps, and counts as its first microsecond where a number is asked for. Where the hour is not
// known, the offset is not applied.
//
// Text of another form throws InvalidDateTimeFormatException; a field that does not exist (month
// 13, 31 April) and what leaves the years 0 to 9999, DateTimeOutOfRangeException; a point in time
// where an interval is asked for, or the other way round, TypeMismatchException. What throws leaves
// the value as it was.
class PEGASUS_COMMON_LINKAGE CIMDateTime {
public:
    // An interval of zero.
    CIMDateTime() noexcept = default;
    CIMDateTime(const String& str);
    // Microseconds of an interval, or since the start of the year 0 in UTC.
    CIMDateTime(Uint64 usec, Boolean isInterval);

    String toString() const;
    void set(const String& str);
    // Back to an interval of zero.
    void clear() { *this = CIMDateTime(); }

    // The machine's local time, with its offset.
    static CIMDateTime getCurrentDateTime();
    // Microseconds from start to finish. Both are of one kind, or InvalidDateTimeFormatException.
    static Sint64 getDifference(CIMDateTime startTime, CIMDateTime finishTime);

    Boolean isInterval() const { return _kind == Interval; }
    // For a point in time since the start of the year 0 in UTC.
    Uint64 toMicroSeconds() const;

    // Points in time are equal where they are the same instant, whatever their offsets.
    Boolean equal(const CIMDateTime& x) const;
    Boolean operator<(const CIMDateTime& x) const;
    Boolean operator<=(const CIMDateTime& x) const;
    Boolean operator>(const CIMDateTime& x) const;
    Boolean operator>=(const CIMDateTime& x) const;
    Boolean operator!=(const CIMDateTime& x) const;

    // A point in time takes an interval; two points in time differ by an interval.
    CIMDateTime operator+(const CIMDateTime& x) const;
    CIMDateTime& operator+=(const CIMDateTime& x);
    CIMDateTime operator-(const CIMDateTime& x) const;
    CIMDateTime& operator-=(const CIMDateTime& x);
    // Intervals only. Division by zero throws Exception.
    CIMDateTime operator*(Uint64 factor) const;
    CIMDateTime& operator*=(Uint64 factor);
    CIMDateTime operator/(Uint64 divisor) const;
    CIMDateTime& operator/=(Uint64 divisor);
    Uint64 operator/(const CIMDateTime& divisor) const;

private:
    enum Kind : Uint8 { Interval, PointInTime };

    Uint64 _span() const;
    Sint64 _first() const;
    int _compare(const CIMDateTime& x) const;
    void _move(Uint64 usec);
    void _requireInterval() const;

    // As written: the offset is not applied, asterisks count as the lowest value.
    Uint64 _usec = 0;
    // Minutes east of UTC.
    Sint16 _offset = 0;
    // How many of the 20 digits before the offset are asterisks, counted from the right.
    Uint8 _wildcards = 0;
    Kind _kind = Interval;
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMDateTime& x, const CIMDateTime& y);

extern template class PEGASUS_COMMON_LINKAGE Array<CIMDateTime>;

}  // namespace Pegasus
