// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "EventJournal.h"

#include <array>
#include <cstdio>

#include "Error.h"
#include "LogItem.h"
#include "Product.h"
#include "Text.h"

namespace QZ {

namespace {

std::string _key(int type, int node, int index) {
    std::array<char, 64> key{};
    (void)std::snprintf(key.data(), key.size(), "typ%d|nod%d|ind%d", type, node, index);
    return key.data();
}

}  // namespace

bool EventJournal::checkForRedundantEvent(int type, int node, int index, int state) {
    const std::string path = make_string(Product::getDataDirectory() + L"assetidprv.evt");
    if (!_isLoaded) {
        _states = readJournal(path);
        _isLoaded = true;
    }
    int& recorded = _states[_key(type, node, index)];
    if (recorded == state)
        return true;
    recorded = state;
    _save(path);
    return false;
}

void EventJournal::_save(const std::string& path) const {
    try {
        writeJournal(path, _states);
    } catch (const Error& failure) {
        logItem("EventJournal", failure.what());
    }
}

}  // namespace QZ
