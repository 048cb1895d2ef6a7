// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "GuestProbe.h"

#include <cstdio>

#include "DynamicLibrary.h"
#include "MachinePaths.h"

namespace QZ {

std::string ReadGuestUuid() {
    char path[64] = {};
    (void)std::snprintf(path, sizeof path, MachinePaths::libraryFormat(), "libtavxenprobe.so");
    const DynamicLibrary library(path);
    if (!library.isLoaded()) {
        return {};
    }
    const auto isGuest = reinterpret_cast<int (*)()>(library.getSymbol("running_in_xen_domU"));
    const auto readUuid = reinterpret_cast<int (*)(char*)>(library.getSymbol("domU_get_uuid"));
    if (isGuest == nullptr || readUuid == nullptr || isGuest() == 0) {
        return {};
    }
    char text[64] = {};
    if (readUuid(text) != 0) {
        return {};
    }
    text[sizeof text - 1] = '\0';
    return text;
}

}  // namespace QZ
