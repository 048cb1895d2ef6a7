// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "EventJournal.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <sstream>
#include <utility>

#include "Error.h"
#include "FileContent.h"
#include "FileReplacement.h"
#include "LogItem.h"
#include "Product.h"
#include "Text.h"

namespace QZ {

namespace {

// Far beyond what the sources of this module fill.
constexpr std::size_t _maximumFile = 65536;
constexpr std::size_t _maximumLine = 255;

// "KEY STATE". False for anything else, which is left out of the journal.
bool _parseLine(const std::string& line, std::pair<std::string, int>& entry) {
    const std::size_t blank = line.find(' ');
    if (line.size() > _maximumLine || blank == 0 || blank == std::string::npos)
        return false;
    const char* const end = line.data() + line.size();
    const auto [stop, error] = std::from_chars(line.data() + blank + 1, end, entry.second);
    entry.first = line.substr(0, blank);
    return error == std::errc() && stop == end;
}

std::string _key(int type, int node, int index) {
    std::array<char, 64> key{};
    (void)std::snprintf(key.data(), key.size(), "typ%d|nod%d|ind%d", type, node, index);
    return key.data();
}

}  // namespace

bool EventJournal::checkForRedundantEvent(int type, int node, int index, int state) {
    const std::string path = make_string(Product::getDataDirectory() + L"assetidprv.evt");
    if (!_isLoaded) {
        _load(path);
        _isLoaded = true;
    }
    int& recorded = _states[_key(type, node, index)];
    if (recorded == state)
        return true;
    recorded = state;
    _save(path);
    return false;
}

void EventJournal::_load(const std::string& path) {
    std::istringstream lines(readWholeFile(path, _maximumFile).text);
    std::pair<std::string, int> entry;
    for (std::string line; std::getline(lines, line);) {
        if (_parseLine(line, entry))
            _states.insert(entry);
    }
}

void EventJournal::_save(const std::string& path) const {
    std::string text;
    for (const auto& [key, state] : _states)
        text += key + ' ' + std::to_string(state) + '\n';
    try {
        replaceFile(path, text);
    } catch (const Error& failure) {
        logItem("EventJournal", failure.what());
    }
}

}  // namespace QZ
