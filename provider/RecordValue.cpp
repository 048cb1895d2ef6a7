// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RecordValue.h"

#include "CimDateTimes.h"
#include "CimText.h"

namespace QZ {

using namespace Pegasus;

CIMValue toCimValue(const std::string& text) {
    return CIMValue(make_String(text));
}

CIMValue toCimValue(const std::wstring& text) {
    return CIMValue(make_String(text));
}

CIMValue toCimValue(const String& text) {
    return CIMValue(text);
}

CIMValue toCimValue(unsigned char number) {
    return CIMValue(Uint8(number));
}

CIMValue toCimValue(Uint16 number) {
    return CIMValue(number);
}

CIMValue toCimValue(unsigned int number) {
    return CIMValue(Uint32(number));
}

CIMValue toCimValue(Uint64 number) {
    return CIMValue(number);
}

CIMValue toCimValue(const DateTime& date) {
    return CIMValue(make_CIMDateTime(date));
}

bool isUnsetDate(const CIMValue& value) {
    if (value.getType() != CIMTYPE_DATETIME) {
        return false;
    }
    CIMDateTime date;
    value.get(date);
    return date.isInterval();
}

// Getting a null value checks its type and leaves the variable as it was.

bool fromCimValue(const CIMValue& value, std::string& text) {
    String received;
    value.get(received);
    text = make_string(received);
    return true;
}

bool fromCimValue(const CIMValue& value, unsigned char& number) {
    Uint8 received = 0;
    value.get(received);
    number = received;
    return true;
}

bool fromCimValue(const CIMValue& value, unsigned int& number) {
    Uint32 received = 0;
    value.get(received);
    number = received;
    return true;
}

bool fromCimValue(const CIMValue& value, DateTime& date) {
    CIMDateTime received;
    value.get(received);
    date = make_DateTime(received);
    return !received.isInterval();
}

}  // namespace QZ
