// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TerminalText.h"

#include <gtest/gtest.h>

using namespace QZ;

TEST(TerminalText, ShowsControlCharacters) {
    EXPECT_EQ(visibleText("a\n\t\r\x1B\x7F"), "a\\n\\t\\r\\x1B\\x7F");
    EXPECT_EQ(visibleText(std::string("\0", 1)), "\\x00");
    EXPECT_EQ(visibleText("\xC2\x9B"), "\\x9B") << "C1: an escape sequence in one character";
}

// The characters are here to be made visible.
// NOLINTBEGIN(misc-misleading-bidirectional)
TEST(TerminalText, ShowsWhatTurnsTextAround) {
    EXPECT_EQ(visibleText("\xE2\x80\xAE"), "\\u202E");
    EXPECT_EQ(visibleText("\xE2\x81\xA6"), "\\u2066");
    EXPECT_EQ(visibleText("\xE2\x80\xA8"), "\\u2028");
}
// NOLINTEND(misc-misleading-bidirectional)

TEST(TerminalText, KeepsTextAndShowsBrokenBytes) {
    EXPECT_EQ(visibleText("Gr\xC3\xB6\xC3\x9F"
                          "e \xE2\x82\xAC"),
              "Gr\xC3\xB6\xC3\x9F"
              "e \xE2\x82\xAC");
    EXPECT_EQ(visibleText("\xFFx\xC3"), "\\xFFx\\xC3");
}

TEST(TerminalText, CountsCharacters) {
    EXPECT_EQ(textWidth("Gr\xC3\xB6\xC3\x9F"
                        "e"),
              5U);
}
