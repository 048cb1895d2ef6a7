// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace QZ {

// Narrow text is UTF-8 whatever the locale. A byte that belongs to no valid UTF-8 sequence becomes
// a code point from U+DC80 to U+DCFF and that code point becomes the byte again, so that any bytes
// survive the way there and back. Zero characters are characters like any other.
std::wstring make_wstring(const std::string& text);

// The reverse of make_wstring. What no UTF-8 can express (other surrogates, values beyond U+10FFFF)
// becomes U+FFFD.
std::string make_string(const std::wstring& text);

// Takes the code point that starts at `at` and moves `at` behind it. False, with `at` where it was,
// at `end` and where no valid sequence starts: overlong forms, surrogates and values beyond
// U+10FFFF are invalid.
bool decodeUtf8(const char*& at, const char* end, std::uint32_t& codePoint);

// The end of the printable ASCII that starts at `at`: 0x20 to 0x7E, the same in every encoding, as
// nearly all text.
const char* plainEnd(const char* at, const char* end);

// Appends the UTF-8 form of a valid code point.
void appendUtf8(std::string& text, std::uint32_t codePoint);

// Whether two names differ by no more than the case of ASCII letters, as those of CIM and HTTP may.
bool sameName(std::string_view left, std::string_view right);

// Orders names: equivalent are those that are the same.
bool lessName(std::string_view left, std::string_view right);

}  // namespace QZ
