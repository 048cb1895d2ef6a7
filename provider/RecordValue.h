// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>

#include <string>
#include <type_traits>

#include "DateTime.h"

namespace QZ {

// A record's values as CIM values, and back.

Pegasus::CIMValue toCimValue(const std::string& text);
Pegasus::CIMValue toCimValue(const std::wstring& text);
Pegasus::CIMValue toCimValue(const Pegasus::String& text);
Pegasus::CIMValue toCimValue(unsigned char number);
Pegasus::CIMValue toCimValue(Pegasus::Uint16 number);
Pegasus::CIMValue toCimValue(unsigned int number);
Pegasus::CIMValue toCimValue(Pegasus::Uint64 number);
Pegasus::CIMValue toCimValue(const DateTime& date);

// Null is empty text, 0, or an interval. Each throws the CIM library's type mismatch where the
// value is of another type. False: the value is an interval, and the date is the unset one.

bool fromCimValue(const Pegasus::CIMValue& value, std::string& text);
bool fromCimValue(const Pegasus::CIMValue& value, unsigned char& number);
bool fromCimValue(const Pegasus::CIMValue& value, unsigned int& number);
bool fromCimValue(const Pegasus::CIMValue& value, DateTime& date);

// The unset date, which has no place in an instance.
bool isUnsetDate(const Pegasus::CIMValue& value);

template <class Value>
constexpr Pegasus::CIMType cimTypeOf() {
    if constexpr (std::is_same_v<Value, unsigned char>) {
        return Pegasus::CIMTYPE_UINT8;
    } else if constexpr (std::is_same_v<Value, Pegasus::Uint16>) {
        return Pegasus::CIMTYPE_UINT16;
    } else if constexpr (std::is_same_v<Value, Pegasus::Uint64>) {
        return Pegasus::CIMTYPE_UINT64;
    } else if constexpr (std::is_same_v<Value, unsigned int>) {
        return Pegasus::CIMTYPE_UINT32;
    } else if constexpr (std::is_same_v<Value, DateTime>) {
        return Pegasus::CIMTYPE_DATETIME;
    } else {
        return Pegasus::CIMTYPE_STRING;
    }
}

}  // namespace QZ
