// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace QZ {

// What a message's text takes: a letter for each value in the order in which they are passed, 's'
// for "%ls" and 'd' for "%d". A text may name values by their position ("%2$ls"), in any order and
// more than once, but then all of them. Nothing where the text is no format of this kind: another
// conversion, a gap in the positions, a value taken both as text and as number.
std::optional<std::string> messageInsertions(const std::wstring& text);

}  // namespace QZ
