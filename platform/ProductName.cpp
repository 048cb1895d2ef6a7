// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ProductName.h"

#include <string_view>

namespace QZ {

namespace {

constexpr std::string_view Blanks = " \t\r\n\f\v";

std::string_view trimLeft(std::string_view text) {
    const std::size_t first = text.find_first_not_of(Blanks);
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view trimRight(std::string_view text) {
    return text.substr(0, text.find_last_not_of(Blanks) + 1);
}

std::string_view trim(std::string_view text) {
    return trimLeft(trimRight(text));
}

// Finds the last brackets without others between them.
bool findGroup(std::string_view name, std::size_t& open, std::size_t& close) {
    for (close = name.rfind(']'); close != std::string_view::npos && close != 0;
         close = name.rfind(']', close - 1)) {
        open = name.find_last_of("[]", close - 1);
        if (open != std::string_view::npos && name[open] == '[')
            return true;
    }
    return false;
}

}  // namespace

ProductName::ProductName(const std::string& name) {
    const std::string_view text = name;
    std::size_t open = 0;
    std::size_t close = 0;
    if (!findGroup(text, open, close)) {
        _unarchitected = trim(text);
        return;
    }
    _architected = trim(text.substr(open + 1, close - open - 1));
    std::string_view before = text.substr(0, open);
    std::string_view after = text.substr(close + 1);
    if (!before.empty() && before.back() == '-')
        before.remove_suffix(1);
    if (!after.empty() && after.front() == '-')
        after.remove_prefix(1);
    // The group leaves one gap behind, not two.
    if (trimRight(before).size() != before.size())
        after = trimLeft(after);
    _unarchitected = trim(std::string(before).append(after));
}

}  // namespace QZ
