// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <string>

#include "DateTime.h"

namespace QZ {

// Carries out one operation on a record made for it, which is then saved and let go. What fails is
// swallowed, since those who call cannot catch; what was done before that stays.
template <class Record, class Operation>
void withRecord(Operation operation) noexcept {
    try {
        Record record;
        operation(record);
    } catch (const std::exception&) {
        // Those who call are told nothing.
    }
}

// "20270131000000.000012+060", all zeros when unset: the milliseconds fill the six digits as they
// are, and the plus sign stands before a negative offset too. Readers expect both.
std::string flatDate(const DateTime& date);

// Copies the text and a NUL behind it.
void copyText(char* to, const std::string& text) noexcept;

}  // namespace QZ
