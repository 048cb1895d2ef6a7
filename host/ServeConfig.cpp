// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServeConfig.h"

#include <filesystem>
#include <sstream>

#include "CommandLine.h"
#include "FileContent.h"
#include "ServeKeys.h"

namespace QZ {

namespace {

constexpr std::size_t LONGEST_FILE = std::size_t(1) << 20;
constexpr const char* BLANKS = " \t\r";

std::string _trimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(BLANKS);
    return begin == std::string::npos
               ? std::string()
               : text.substr(begin, text.find_last_not_of(BLANKS) + 1 - begin);
}

void _takeLine(const std::string& line, const std::string& folder, ServeValues& values) {
    const std::size_t equals = line.find('=');
    const std::string name = _trimmed(line.substr(0, equals));
    const ServeKey* const key = findServeKey(name);
    if (!key) {
        throw UsageError("there is no key \"" + name + "\"");
    }
    if (equals == std::string::npos) {
        throw UsageError(name + " = VALUE is expected");
    }
    if (!key->isList && values.find(name) != values.end()) {
        throw UsageError(name + " has a value already");
    }
    try {
        values[name].push_back(checkedServeValue(*key, _trimmed(line.substr(equals + 1)), folder));
    } catch (const UsageError& error) {
        throw UsageError(name + ": " + error.what());
    }
}

}  // namespace

ServeValues parseServeConfig(const std::string& text, const std::string& file) {
    const std::string folder = std::filesystem::path(file).parent_path().string();
    ServeValues values;
    std::istringstream lines(text);
    std::string line;
    for (std::size_t number = 1; std::getline(lines, line); ++number) {
        line = _trimmed(line);
        if (line.empty() || line[0] == '#') {
            continue;
        }
        try {
            _takeLine(line, folder, values);
        } catch (const UsageError& error) {
            throw UsageError(file + ", line " + std::to_string(number) + ": " + error.what());
        }
    }
    return values;
}

ServeValues readServeValues(const ServeArguments& arguments) {
    ServeValues values = arguments.values;
    if (!arguments.configFile.empty()) {
        const FileContent content = readWholeFile(arguments.configFile, LONGEST_FILE);
        if (content.state == FileContent::Missing || content.state == FileContent::Unreadable) {
            throwSystemError("Cannot read the configuration file", arguments.configFile,
                             content.error);
        }
        if (content.state != FileContent::Read) {
            throw Error("Cannot read the configuration file " + arguments.configFile +
                        ": it is no short text file");
        }
        // Those that are there already stay.
        values.merge(parseServeConfig(content.text, arguments.configFile));
    }
    return values;
}

}  // namespace QZ
