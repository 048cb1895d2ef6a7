// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "System.h"

#include <unistd.h>

#include <array>

#include "FileContent.h"
#include "MachinePaths.h"
#include "Text.h"

namespace QZ {

namespace {

constexpr std::size_t LongestHostNameFile = 4096;

std::string configuredName() {
    const std::string text = readWholeFile(MachinePaths::hostName(), LongestHostNameFile).text;
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return {};
    const std::size_t last = text.find_last_not_of(" \t\r", text.find('\n', first) - 1);
    return text.substr(first, last - first + 1);
}

std::string ownName() {
    std::array<char, 256> name{};
    if (::gethostname(name.data(), name.size() - 1) != 0)
        return {};
    return name.data();
}

}  // namespace

std::wstring System::getName() {
    return make_wstring(MachinePaths::isOtherMachine() ? configuredName() : ownName());
}

}  // namespace QZ
