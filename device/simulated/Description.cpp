// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Description.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "FileContent.h"
#include "MachinePaths.h"

namespace {

const std::size_t _largestFile = 1 << 20;

std::string _trimmed(const std::string& text) {
    const char* blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string::npos
               ? ""
               : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string _prefixOf(int spIndex) {
    return "sp" + std::to_string(spIndex) + ".";
}

}  // namespace

Description Description::parse(const std::string& text) {
    Description result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos && _trimmed(line)[0] != '#') {
            result._values[_trimmed(line.substr(0, equals))] = _trimmed(line.substr(equals + 1));
        }
    }
    return result;
}

Description Description::load() {
    char path[128];
    (void)std::snprintf(path, sizeof path, QZ::MachinePaths::libraryFormat(),
                        "service-processor.txt");
    return parse(QZ::readWholeFile(path, _largestFile).text);
}

std::optional<std::string> Description::find(int spIndex, const std::string& key) const {
    for (const std::string& name : {_prefixOf(spIndex) + key, key}) {
        const auto found = _values.find(name);
        if (found != _values.end()) {
            return found->second;
        }
    }
    return std::nullopt;
}

std::string Description::text(int spIndex, const std::string& key) const {
    return find(spIndex, key).value_or("");
}

long long Description::number(int spIndex, const std::string& key, long long missing) const {
    const std::optional<std::string> value = find(spIndex, key);
    return value ? std::strtoll(value->c_str(), nullptr, 10) : missing;
}

std::map<std::string, std::string> Description::below(int spIndex,
                                                      const std::string& prefix) const {
    std::map<std::string, std::string> result;
    for (const std::string& start : {prefix, _prefixOf(spIndex) + prefix}) {
        for (auto at = _values.lower_bound(start);
             at != _values.end() && at->first.compare(0, start.size(), start) == 0; ++at) {
            result[at->first.substr(start.size())] = at->second;
        }
    }
    return result;
}
