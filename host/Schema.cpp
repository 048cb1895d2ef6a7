// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Schema.h"

#include <strings.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
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

// Those of a folder inside it, which may be missing.
std::vector<std::string> _mofFilesIfAny(const std::string& folder, const char* inner) {
    const std::string path = (std::filesystem::path(folder) / inner).string();
    std::error_code error;
    const bool isMissing = !std::filesystem::exists(path, error) && !error;
    return isMissing ? std::vector<std::string>() : _mofFiles(path);
}

// Whether a text names a class of the registration. Its underscore is quicker to find than a name
// whose case does not matter.
bool _namesRegistration(const std::string& text) {
    constexpr std::string_view name = "PG_Provider";
    constexpr std::size_t underscore = name.find('_');
    for (std::size_t at = text.find('_', underscore); at != std::string::npos;
         at = text.find('_', at + 1)) {
        if (strncasecmp(text.c_str() + at - underscore, name.data(), name.size()) == 0) {
            return true;
        }
    }
    return false;
}

// As _mofFiles, at least one.
std::vector<std::string> _modelFiles(const std::string& folder) {
    std::vector<std::string> files = _mofFiles(folder);
    if (files.empty()) {
        throw Error("Cannot read the schema folder " + folder + ": it holds no .mof file");
    }
    return files;
}

}  // namespace

Schema Schema::load(const std::string& folder) {
    Schema schema;
    for (const std::string& file : _modelFiles(folder)) {
        const MofDocument document = parseMofFile(file);
        schema.classes.add(document);
        schema.registration.add(document);
    }
    for (const std::string& file : _mofFilesIfAny(folder, "interop")) {
        schema.interop.add(parseMofFile(file));
    }
    for (const std::string& file : _mofFilesIfAny(folder, "subscriptions")) {
        const MofDocument document = parseMofFile(file);
        schema.classes.add(document);
        schema.interop.add(document);
    }
    return schema;
}

Registration Schema::loadRegistration(const std::string& folder) {
    Registration registration;
    for (const std::string& file : _modelFiles(folder)) {
        const std::string text = readMofFile(file);
        if (_namesRegistration(text)) {
            registration.add(parseMof(text, file));
        }
    }
    return registration;
}

const ClassRepository* Schema::find(const std::string& nameSpace) const {
    if (sameName(nameSpace, MODEL_NAMESPACE)) {
        return &classes;
    }
    return sameName(nameSpace, INTEROP_NAMESPACE) ? &interop : nullptr;
}

}  // namespace QZ
