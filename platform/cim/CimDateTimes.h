// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMDateTime.h>

#include "DateTime.h"

namespace QZ {

// The point in time of a date; a date without a time of day is its 00:00:00 with the machine's
// offset on that day. The unset date is the interval of zero length, which no record's instance
// carries.
Pegasus::CIMDateTime make_CIMDateTime(const DateTime& date);

// The date of a point in time, to the millisecond. Unset for an interval, and for a day that the
// calendar does not have or that is left open by asterisks. A time of day that is all asterisks
// makes a date without one.
DateTime make_DateTime(const Pegasus::CIMDateTime& date);

}  // namespace QZ
