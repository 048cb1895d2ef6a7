// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Schema.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "MofParser.h"

namespace QZ {

namespace {

std::vector<std::string> _mofFiles(const std::string& folder) {
    std::vector<std::string> files;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() == ".mof") {
            files.push_back(entry->path().string());
        }
    }
    if (error) {
        throwSystemError("Cannot read the schema folder", folder, error.value());
    }
    if (files.empty()) {
        throw Error("Cannot read the schema folder " + folder + ": it holds no .mof file");
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

Schema Schema::load(const std::string& folder) {
    Schema schema;
    for (const std::string& file : _mofFiles(folder)) {
        const MofDocument document = parseMofFile(file);
        schema.classes.add(document);
        schema.registration.add(document);
    }
    return schema;
}

}  // namespace QZ
