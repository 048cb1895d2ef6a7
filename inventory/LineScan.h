// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

#include "FileContent.h"

namespace QZ {

// What there is to read of a file of lines: those that are whole within its first `limit` bytes,
// for half a line says something else.
FileContent readLines(const std::string& path, std::size_t limit);

// Takes the line that starts at `offset` of a text, without its line end, and moves `offset`
// behind it. False at the end of the text.
bool takeLine(const std::string& text, std::size_t& offset, std::string& line);

// Scans a line as scanf does with the format followed by "%[^\n]": a blank in the format stands
// for any run of white space, also for none, every other character for itself, and the value is
// the rest of the line. False, with the value as it was, where the line is another or nothing is
// left of it.
bool scanValue(const std::string& line, const char* format, std::string& value);

}  // namespace QZ
