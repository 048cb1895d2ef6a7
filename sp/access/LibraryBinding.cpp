// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LibraryBinding.h"

#include <dlfcn.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "LogItem.h"
#include "MachinePaths.h"

namespace {

const std::size_t longestName = 120;

const char* _nameText(const char* name) {
    return name == nullptr ? "(null)" : name;
}

}  // namespace

void* openLinuxLib(char* name) {
    if (name == nullptr || std::strlen(name) > longestName) {
        return nullptr;
    }
    char path[128];
    (void)std::snprintf(path, sizeof path, QZ::MachinePaths::libraryFormat(), name);
    QZ::_printMessage("about to load library [%s]\n", path);
    return dlopen(path, RTLD_LAZY);
}

namespace QZ {

void _printMessage(const char* format, const char* name) {
    (void)std::printf(format, _nameText(name));
    (void)std::fflush(stdout);
}

bool _LibraryBinding::bind(interfaceStruct* table, int count) const {
    if (handle == nullptr) {
        logItem(operation, std::string("the library ") + _nameText(name) + " was not opened");
        return false;
    }
    reportOpened();
    return bindTable(table, count);
}

void _LibraryBinding::reportOpened() const {
    logItem("openLibraryLink", std::string("the library ") + _nameText(name) + " was opened");
}

bool _LibraryBinding::bindTable(interfaceStruct* table, int count) const {
    for (interfaceStruct* row = table; row < table + count; ++row) {
        const std::string symbol(row->name, strnlen(row->name, sizeof row->name));
        if (symbol.empty()) {
            continue;
        }
        row->funcPtr = dlsym(handle, symbol.c_str());
        const std::string subject =
            "Function [" + symbol + "] for library [" + _nameText(name) + "] load ";
        if (row->funcPtr == nullptr) {
            logItem(operation, subject + "failed");
            return false;
        }
        const auto value = reinterpret_cast<std::intptr_t>(row->funcPtr);
        logItem(operation, subject + "succeeded and pointer [" + std::to_string(value) + "]");
    }
    return true;
}

}  // namespace QZ
