// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/Exception.h>

#include "CimCalendar.h"
#include "CimDateTimeText.h"

namespace Pegasus {

void CIMDateTime::_requireInterval() const {
    if (!isInterval())
        throw TypeMismatchException("an interval is needed, not a point in time");
}

// To another value of the same kind; what the asterisks hide stays hidden.
void CIMDateTime::_move(Uint64 usec) {
    _usec = usec;
    if (_wildcards == 14 || _wildcards == 16) {
        QZ::CalendarDay day = QZ::dayFromNumber(static_cast<Uint32>(usec / QZ::CimDay));
        day.day = 1;
        if (_wildcards == 16)
            day.month = 1;
        _usec = QZ::dayNumber(day) * QZ::CimDay;
    } else {
        _usec -= _usec % _span();
    }
}

CIMDateTime& CIMDateTime::operator+=(const CIMDateTime& x) {
    x._requireInterval();
    const Uint64 end = isInterval() ? QZ::CimEndOfIntervals : QZ::CimEndOfTime;
    if (x._usec >= end - _usec)
        throw DateTimeOutOfRangeException("the sum");
    _move(_usec + x._usec);
    return *this;
}

CIMDateTime& CIMDateTime::operator-=(const CIMDateTime& x) {
    if (!isInterval() && !x.isInterval()) {
        const Sint64 difference = _first() - x._first();
        if (difference < 0)
            throw DateTimeOutOfRangeException("a negative difference");
        return *this = CIMDateTime(static_cast<Uint64>(difference), true);
    }
    x._requireInterval();
    if (x._usec > _usec)
        throw DateTimeOutOfRangeException("a negative difference");
    _move(_usec - x._usec);
    return *this;
}

CIMDateTime& CIMDateTime::operator*=(Uint64 factor) {
    _requireInterval();
    if (factor != 0 && _usec > (QZ::CimEndOfIntervals - 1) / factor)
        throw DateTimeOutOfRangeException("the product");
    _move(_usec * factor);
    return *this;
}

CIMDateTime& CIMDateTime::operator/=(Uint64 divisor) {
    _requireInterval();
    if (divisor == 0)
        throw Exception("a CIM datetime divided by zero");
    _move(_usec / divisor);
    return *this;
}

Uint64 CIMDateTime::operator/(const CIMDateTime& divisor) const {
    _requireInterval();
    divisor._requireInterval();
    if (divisor._usec == 0)
        throw Exception("a CIM datetime divided by zero");
    return _usec / divisor._usec;
}

CIMDateTime CIMDateTime::operator+(const CIMDateTime& x) const {
    return CIMDateTime(*this) += x;
}
CIMDateTime CIMDateTime::operator-(const CIMDateTime& x) const {
    return CIMDateTime(*this) -= x;
}
CIMDateTime CIMDateTime::operator*(Uint64 factor) const {
    return CIMDateTime(*this) *= factor;
}
CIMDateTime CIMDateTime::operator/(Uint64 divisor) const {
    return CIMDateTime(*this) /= divisor;
}

}  // namespace Pegasus
