// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LineScan.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <vector>

namespace QZ {
namespace {

std::vector<std::string> _lines(const std::string& text) {
    std::vector<std::string> lines;
    std::string line;
    for (std::size_t offset = 0; takeLine(text, offset, line);) {
        lines.push_back(line);
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(TakeLine, TakesEachLineWithoutItsEnd) {
    EXPECT_EQ(_lines("a\n\nb\n"), (Lines{"a", "", "b"}));
    EXPECT_EQ(_lines("a\nb"), (Lines{"a", "b"}));
    EXPECT_EQ(_lines("\n"), (Lines{""}));
    EXPECT_EQ(_lines(""), (Lines{}));
    EXPECT_EQ(_lines("a\r\n"), (Lines{"a\r"}));
}

TEST(TakeLine, EndsALineAtANul) {
    EXPECT_EQ(_lines(std::string("a\0b\nc\n", 6)), (Lines{"a", "c"}));
}

TEST(ScanValue, TakesTheRestOfTheLine) {
    std::string value;
    EXPECT_TRUE(scanValue("vendor_id\t: Example Corp ", "vendor_id : ", value));
    EXPECT_EQ(value, "Example Corp ");
}

TEST(ScanValue, MatchesABlankWithAnyWhiteSpaceAndWithNone) {
    for (const char* line : {"key:value", "key :value", "key: value", "key \t\v\f\r : \t value"}) {
        std::string value;
        EXPECT_TRUE(scanValue(line, "key : ", value)) << line;
        EXPECT_EQ(value, "value") << line;
    }
    for (const char* line : {"Key v", "\tKey v", "  \t Key\tv", "Keyv"}) {
        std::string value;
        EXPECT_TRUE(scanValue(line, "\tKey ", value)) << line;
        EXPECT_EQ(value, "v") << line;
    }
}

TEST(ScanValue, LeavesTheValueAloneWhereTheLineIsAnother) {
    for (const char* line : {"", "ke", "key", "key:", "key : \t ", "Key: v", "xkey: v", "key v"}) {
        std::string value = "as it was";
        EXPECT_FALSE(scanValue(line, "key : ", value)) << line;
        EXPECT_EQ(value, "as it was") << line;
    }
}

// What scanf finds is the promise.
TEST(ScanValue, FindsWhatScanfFinds) {
    const char* const lines[] = {"Identifier \"x\"",  "\tIdentifier\t\"x\" ", "Identifiers x",
                                 "Identifier",        "Identifier   ",        " Identifierx",
                                 "IdentifieR x",      "\v\f Identifier y\r",  "",
                                 "Identifier \xFFz.", "Ident ifier x"};
    for (const char* line : lines) {
        char expected[64] = "none";
        std::string value = "none";
        const int found = std::sscanf(line, "\tIdentifier %63[^\n]", expected);
        EXPECT_EQ(scanValue(line, "\tIdentifier ", value), found == 1) << line;
        EXPECT_EQ(value, expected) << line;
    }
}

}  // namespace
}  // namespace QZ
