// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MofLexer.h"

#include <gmock/gmock.h>

using namespace QZ;

namespace {

MofToken _only(const std::string& text) {
    MofLexer lexer(text, "f.mof");
    MofToken token = lexer.next();
    EXPECT_EQ(lexer.next().kind, MofToken::End) << text;
    return token;
}

std::string _refusal(const std::string& text) {
    try {
        MofLexer lexer(text, "f.mof");
        while (lexer.next().kind != MofToken::End) {
        }
    } catch (const MofError& error) {
        return error.what();
    }
    return "accepted";
}

}  // namespace

TEST(MofLexer, ReadsIntegersInEveryBase) {
    EXPECT_EQ(_only("42").number, 42U);
    EXPECT_EQ(_only("0").number, 0U);
    EXPECT_EQ(_only("0x1F").number, 31U);
    EXPECT_EQ(_only("0Xff").number, 255U);
    EXPECT_EQ(_only("017").number, 15U);
    EXPECT_EQ(_only("101b").number, 5U);
    EXPECT_EQ(_only("18446744073709551615").number, UINT64_MAX);
}

TEST(MofLexer, RefusesNumbersThatAreNone) {
    EXPECT_EQ(_refusal("18446744073709551616"), "f.mof:1:1: a number of at most 64 bits expected");
    EXPECT_EQ(_refusal("08"), "f.mof:1:1: a number of base 8 expected");
    EXPECT_EQ(_refusal("12b"), "f.mof:1:1: a number of base 2 expected");
    EXPECT_EQ(_refusal("12z"), "f.mof:1:1: a number of base 10 expected");
    EXPECT_EQ(_refusal("1."), "f.mof:1:1: a number expected, found \"1.\"");
    EXPECT_NE(_refusal("1.5e"), "accepted");
    EXPECT_NE(_refusal("1.2.3"), "accepted");
}

TEST(MofLexer, ReadsReals) {
    for (const char* text : {"1.5", ".5", "1.5e10", "2.0E-3", "1.0e+300"}) {
        const MofToken token = _only(text);
        EXPECT_EQ(token.kind, MofToken::Real) << text;
        EXPECT_EQ(token.text, text);
    }
}

TEST(MofLexer, JoinsAdjacentStrings) {
    EXPECT_EQ(_only("\"one \" /* between */ \"two\"\n// and\n\" three\"").text, "one two three");
}

TEST(MofLexer, UnderstandsEscapes) {
    EXPECT_EQ(_only(R"("\"\\\'\n\t\r\b\f")").text, "\"\\'\n\t\r\b\f");
    EXPECT_EQ(_only(R"("\x41\x20AC\xD83D\xDE00!")").text, "A\xE2\x82\xAC\xF0\x9F\x98\x80!");
}

TEST(MofLexer, RefusesTextThatIsNone) {
    EXPECT_EQ(_refusal("\"open"), "f.mof:1:1: a string without end");
    EXPECT_EQ(_refusal("\"two\nlines\""), "f.mof:1:1: a string without end");
    EXPECT_EQ(_refusal("\"\\q\""), "f.mof:1:2: an escape that MOF does not know");
    EXPECT_EQ(_refusal("\"\\xg\""), "f.mof:1:4: one to four hexadecimal digits expected");
    EXPECT_EQ(_refusal("\"\\xD83D!\""), "f.mof:1:2: half of a surrogate pair");
    EXPECT_EQ(_refusal("\"\xC3\""), "f.mof:1:2: text that is not UTF-8");
    EXPECT_EQ(_refusal("\"\\"), "f.mof:1:2: an escape that MOF does not know");
}

TEST(MofLexer, ReadsCharacters) {
    EXPECT_EQ(_only("'A'").number, 0x41U);
    EXPECT_EQ(_only("'\\xD800'").number, 0xD800U);
    EXPECT_EQ(_only("'\\''").number, unsigned('\''));
    EXPECT_NE(_refusal("''"), "accepted");
    EXPECT_NE(_refusal("'ab'"), "accepted");
    EXPECT_NE(_refusal("'"), "accepted");
    EXPECT_NE(_refusal("'\xF0\x9F\x98\x80'"), "accepted");
}

TEST(MofLexer, CountsLinesAndColumns) {
    MofLexer lexer("\xEF\xBB\xBF// comment\n  /* two\n lines */ word", "f.mof");
    const MofToken token = lexer.next();
    EXPECT_EQ(token.text, "word");
    EXPECT_EQ(token.position.line, 3U);
    EXPECT_EQ(token.position.column, 11U);
}

TEST(MofLexer, RefusesWhatIsNoToken) {
    EXPECT_EQ(_refusal("/* open"), "f.mof:1:1: a comment without end");
    EXPECT_EQ(_refusal("a @"), "f.mof:1:3: a character that MOF does not know");
    EXPECT_EQ(_refusal("#include"), "f.mof:1:1: #pragma expected");
    EXPECT_EQ(_refusal(std::string("a\0b", 3)), "f.mof:1:2: a character that MOF does not know");
}
