// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Description.h"

#include <sstream>

#include "DescriptionKeys.h"
#include "FieldText.h"
#include "PropertyEscape.h"

namespace {

// Characters of a text that a sentence shows.
constexpr std::size_t _mostShown = 60;

std::string _trimmed(const std::string& text) {
    const char* blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string::npos
               ? ""
               : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string _quoted(const std::string& text) {
    return "\"" + QZ::escapeValue(text.substr(0, _mostShown)) +
           (text.size() > _mostShown ? "..." : "") + "\"";
}

std::string _prefixOf(int spIndex) {
    return "sp" + std::to_string(spIndex) + ".";
}

// Why the line cannot stand; empty where it can.
std::string _reason(const std::string& key, const std::string& value) {
    if (const char* wrongKey = whyWrongKey(key)) {
        return _quoted(key) + " " + wrongKey;
    }
    const std::string wrongValue = whyWrongValue(key, value);
    return wrongValue.empty() ? "" : key + " is " + _quoted(value) + ", but " + wrongValue;
}

}  // namespace

Description::Parsed Description::parse(const std::string& text) {
    Parsed result;
    std::istringstream lines(text);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const std::string content = _trimmed(line);
        if (content.empty() || content[0] == '#') {
            continue;
        }
        const std::size_t equals = content.find('=');
        std::string reason = _quoted(content) + " is neither a comment nor \"key = value\"";
        if (equals != std::string::npos) {
            const std::string key = _trimmed(content.substr(0, equals));
            const std::string value = QZ::unescape(_trimmed(content.substr(equals + 1)));
            reason = _reason(key, value);
            if (reason.empty() && !result.description._values.emplace(key, value).second) {
                reason = key + " was said before";
            }
        }
        if (!reason.empty()) {
            result.mistakes.push_back("line " + std::to_string(number).append(": ").append(reason));
        }
    }
    return result;
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
    long long value = missing;
    readNumber(text(spIndex, key), value);
    return value;
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
