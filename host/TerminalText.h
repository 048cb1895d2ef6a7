// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace QZ {

// UTF-8 text that can do no harm to a terminal: control characters and those that change the
// direction of writing are shown as \n, \x1B or \u202E.
std::string visibleText(const std::string& text);
// The same, behind what is there.
void appendVisibleText(std::string& line, const std::string& text);

// How many columns visible text takes, one for each character.
std::size_t textWidth(const std::string& text);

}  // namespace QZ
