// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SysFolder.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "FileContent.h"

namespace QZ {

namespace fs = std::filesystem;

namespace {

// The kernel's own limit for an attribute of text is a page; vital product data has 32 KiB.
constexpr std::size_t LargestAttribute = std::size_t{64} << 10;

}  // namespace

std::string pathIn(const std::string& folder, const std::string& name) {
    return folder + '/' + name;
}

std::string readBytes(const std::string& folder, const std::string& name) {
    return readWholeFile(pathIn(folder, name), LargestAttribute).text;
}

std::string readAttribute(const std::string& folder, const std::string& name) {
    constexpr std::string_view around(" \t\n\r\0", 5);
    const std::string text = readBytes(folder, name);
    const std::size_t first = text.find_first_not_of(around);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(around) - first + 1);
}

std::optional<unsigned> readNumber(const std::string& folder, const std::string& name, int base) {
    std::string text = readAttribute(folder, name);
    if (text.compare(0, 2, "0x") == 0)
        text.erase(0, 2);
    unsigned number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

bool hasEntry(const std::string& folder, const std::string& name) {
    std::error_code error;
    return fs::exists(pathIn(folder, name), error);
}

std::vector<std::string> entriesOf(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        names.push_back(entry->path().filename().string());
    std::sort(names.begin(), names.end(), [](const std::string& one, const std::string& other) {
        return strverscmp(one.c_str(), other.c_str()) < 0;
    });
    return names;
}

}  // namespace QZ
