// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Output.h"

namespace QZ {

std::unique_ptr<Output> makeOutput(const std::string& format) {
    if (format == "json") {
        return std::make_unique<JsonOutput>();
    }
    if (format == "csv") {
        return std::make_unique<CsvOutput>();
    }
    if (format == "mof") {
        return std::make_unique<MofOutput>();
    }
    return std::make_unique<TableOutput>();
}

}  // namespace QZ
