// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace QZ {

// How a key or a value of a property file is written so that it stays on one line and survives an
// editor. Written as escapes are the backslash (\\), line feed, carriage return and tab (\n, \r,
// \t), a leading or trailing blank (\s), and as a byte in two hexadecimal digits (\x1B) every other
// control character, what is not valid UTF-8, and in keys "=" and a leading "#" or byte order mark.
std::string escapeKey(std::string_view key);
std::string escapeValue(std::string_view value);

// The text of what is written, any bytes. An escape that is none of the above reads as it stands.
std::string unescape(std::string_view written);

// True when unescape(written) is this text; cheaper.
bool readsAs(std::string_view written, std::string_view text);

}  // namespace QZ
