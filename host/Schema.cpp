// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Schema.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "MofParser.h"

namespace QZ {

namespace {

// In the order of their names.
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
    std::sort(files.begin(), files.end());
    return files;
}

bool _isThere(const std::string& folder) {
    std::error_code error;
    return std::filesystem::exists(folder, error) || error;
}

}  // namespace

Schema Schema::load(const std::string& folder) {
    Schema schema;
    const std::vector<std::string> files = _mofFiles(folder);
    if (files.empty()) {
        throw Error("Cannot read the schema folder " + folder + ": it holds no .mof file");
    }
    for (const std::string& file : files) {
        const MofDocument document = parseMofFile(file);
        schema.classes.add(document);
        schema.registration.add(document);
    }
    const std::string interop = (std::filesystem::path(folder) / "interop").string();
    if (_isThere(interop)) {
        for (const std::string& file : _mofFiles(interop)) {
            schema.interop.add(parseMofFile(file));
        }
    }
    return schema;
}

const ClassRepository* Schema::find(const std::string& nameSpace) const {
    if (sameName(nameSpace, MODEL_NAMESPACE)) {
        return &classes;
    }
    return sameName(nameSpace, INTEROP_NAMESPACE) ? &interop : nullptr;
}

}  // namespace QZ
