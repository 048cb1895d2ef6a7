// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/cBusComm.h"

#include <dlfcn.h>

#include <string>

#include "LibraryBinding.h"
#include "LogItem.h"

namespace {

const char* const operation = "cBusComm::openInterfaceLink";

void* _open(char* fileName, bool relative) {
    const std::string kind = relative ? "relative" : "non relative";
    QZ::logItem(operation, "using " + kind + " address for library [" +
                               (fileName == nullptr ? "(null)" : fileName) + "]");
    return relative ? openLinuxLib(fileName) : dlopen(fileName, RTLD_LAZY);
}

}  // namespace

int cBusComm::openInterfaceLink(char* fileName, interfaceStruct* table, int count, bool relative) {
    _connected = 0;
    QZ::_printMessage("\nabout to open the library %s", fileName);
    _handle = _open(fileName, relative);
    if (_handle == nullptr) {
        QZ::_printMessage("\nthe library %s could not be opened", fileName);
        return 0;
    }
    QZ::_printMessage("\nthe library %s was opened", fileName);
    const QZ::_LibraryBinding binding{operation, fileName, _handle};
    binding.reportOpened();
    if (!binding.bindTable(table, count)) {
        closeInterfaceLink();
        return 0;
    }
    _connected = 1;
    return 1;
}

void cBusComm::closeInterfaceLink() {
    if (_handle != nullptr) {
        dlclose(_handle);
        _handle = nullptr;
    }
    _connected = 0;
}
