// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "CsvText.h"
#include "Error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<QZ::CsvRecord> records;
    try {
        records = QZ::parseCsv({reinterpret_cast<const char*>(data), size});
    } catch (const QZ::Error&) {
        return 0;
    }
    // Behind a line with a comma, that nothing in a record passes for a mark or another separator.
    const std::string first = QZ::csvLine({"", ""});
    for (const QZ::CsvRecord& record : records) {
        const auto again = QZ::parseCsv(first + QZ::csvLine(record.fields));
        if (again.size() != 2 || again[1].fields != record.fields)
            std::abort();
    }
    return 0;
}
