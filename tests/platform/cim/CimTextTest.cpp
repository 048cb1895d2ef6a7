// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "Text.h"

namespace QZ {
namespace {

std::vector<unsigned> _units(const Pegasus::String& text) {
    std::vector<unsigned> units;
    for (Pegasus::Uint32 i = 0; i < text.size(); ++i) {
        units.push_back(static_cast<Pegasus::Uint16>(text[i]));
    }
    return units;
}

std::vector<unsigned> _sent(const std::string& text) {
    return _units(make_String(text));
}

using Units = std::vector<unsigned>;

TEST(CimText, SendsUtf8AsItIs) {
    EXPECT_EQ(_sent("a\xC3\xA9\xE2\x82\xAC"), (Units{'a', 0xE9, 0x20AC}));
    EXPECT_EQ(_sent("\xF0\x9F\x92\xBB"), (Units{0xD83D, 0xDCBB}));
    EXPECT_EQ(_sent(""), Units{});
}

TEST(CimText, TakesInvalidUtf8AsLatin1) {
    EXPECT_EQ(_sent("M\xFCller\xFF"), (Units{'M', 0xFC, 'l', 'l', 'e', 'r', 0xFF}));
    EXPECT_EQ(_sent("\xC0\x80"), (Units{0xC0, 0x80}));            // overlong
    EXPECT_EQ(_sent("\xED\xA0\x80"), (Units{0xED, 0xA0, 0x80}));  // a surrogate
    EXPECT_EQ(_sent("\xE2\x82"), (Units{0xE2, 0x82}));            // cut short
}

TEST(CimText, ReplacesWhatXmlForbids) {
    EXPECT_EQ(_sent(std::string("\0\x01\x1F", 3)), (Units{0xFFFD, 0xFFFD, 0xFFFD}));
    EXPECT_EQ(_sent("\t\n\r"), (Units{'\t', '\n', '\r'}));
    EXPECT_EQ(_sent("\xEF\xBF\xBE\xEF\xBF\xBF"), (Units{0xFFFD, 0xFFFD}));
}

TEST(CimText, SendsWideTextAsTheNarrowTextThatItCameFrom) {
    const std::string text = "a\xC3\xA9\xFF\xF0\x9F\x92\xBB";
    EXPECT_EQ(_units(make_String(make_wstring(text))), _sent(text));
}

TEST(CimText, ReceivesEveryCharacter) {
    const std::string text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xBB\n<&\"";
    EXPECT_EQ(make_string(make_String(text)), text);
}

TEST(CimText, ReceivesACharacterWhereverItStands) {
    for (const std::string character : {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x92\xBB", "\x7F"}) {
        for (std::size_t length = 0; length < 20; ++length) {
            for (std::size_t place = 0; place <= length; ++place) {
                std::string text(length, 'a');
                text.insert(place, character);
                EXPECT_EQ(make_string(make_String(text)), text);
            }
        }
    }
}

TEST(CimText, WritesBehindWhatIsThere) {
    std::string text = "a: ";
    append_string(text, make_String(std::string("b\xC3\xA9")));
    append_string(text, "");
    EXPECT_EQ("a: b\xC3\xA9", text);
}

TEST(CimText, ReplacesALoneSurrogate) {
    const Pegasus::Char16 units[] = {Pegasus::Char16('a'), Pegasus::Char16(0xD83D),
                                     Pegasus::Char16('b'), Pegasus::Char16(0xDCBB),
                                     Pegasus::Char16(0xD83D)};
    EXPECT_EQ(make_string(Pegasus::String(units, 5)),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(CimText, TrimsBlanksAndNothingElse) {
    EXPECT_EQ(make_string(ltrim("  a b  ")), "a b  ");
    EXPECT_EQ(make_string(rtrim("  a b  ")), "  a b");
    EXPECT_EQ(make_string(rtrim(ltrim(" \ta\n "))), "\ta\n");
    for (const char* const blank : {"", " ", "   "}) {
        EXPECT_EQ(make_string(ltrim(blank)), "");
        EXPECT_EQ(make_string(rtrim(blank)), "");
    }
}

}  // namespace
}  // namespace QZ
