// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/Exception.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Text that can be read is written back the same, but for a negative zero offset, and arithmetic on
// what it says stays in range.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Pegasus;
    try {
        const String text(reinterpret_cast<const char*>(data), static_cast<Uint32>(size));
        const CIMDateTime date(text);
        const String written = date.toString();
        if (written != text && written.subString(0, 21) + "-000" != text)
            std::abort();
        if (CIMDateTime(written) != date || date < date || CIMDateTime::getDifference(date, date))
            std::abort();
        const CIMDateTime later = date + CIMDateTime(Uint64(size) * 12345678901ULL, true);
        if (later < date || CIMDateTime(later.toString()) != later)
            std::abort();
    } catch (const Exception&) {
        // No UTF-8, no datetime, or one at the end of time.
    }
    return 0;
}
