// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace QZ {

// True for a day of the Gregorian calendar, carried back before its introduction, in the years 1
// to 9999.
bool dateExists(int year, int month, int day);

// Days from 1970-01-01 to an existing date; negative before it.
std::int64_t daysFromDate(int year, int month, int day);

}  // namespace QZ
