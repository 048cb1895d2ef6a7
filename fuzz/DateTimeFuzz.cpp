// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "DateTime.h"

// What is read from any text must be read again from its own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr unsigned Both = QZ::DateTime::CalendarDate | QZ::DateTime::TimeOfDay;
    const QZ::DateTime date(std::string(reinterpret_cast<const char*>(data), size), Both);
    const QZ::DateTime again(date.toString(), Both);
    if (date.isSet() != !date.toString().empty() || again != date || !(again <= date))
        std::abort();
    return 0;
}
