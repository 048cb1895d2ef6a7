// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace QZ {

// A record of a CSV file.
struct CsvRecord {
    std::size_t line;  // on which it begins, from 1
    std::vector<std::string> fields;
};

// The line of RFC 4180 that these fields make.
std::string csvLine(const std::vector<std::string>& fields);

// The records of a file as RFC 4180 and spreadsheets write it: lines may end in a line feed alone,
// a byte order mark is skipped, and where the first line has semicolons and no commas these
// separate the fields. Empty lines are no records. Throws Error, with the line, for a quote that
// stands where none may, or is missing.
std::vector<CsvRecord> parseCsv(const std::string& text);

}  // namespace QZ
