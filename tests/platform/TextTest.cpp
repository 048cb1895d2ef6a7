// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <random>

#include "RepeatableRandom.h"

using namespace QZ;

namespace {

bool decodes(const std::string& bytes, std::uint32_t expected) {
    const char* at = bytes.data();
    std::uint32_t codePoint = 0;
    return decodeUtf8(at, bytes.data() + bytes.size(), codePoint) && codePoint == expected &&
           at == bytes.data() + bytes.size();
}

bool refuses(const std::string& bytes) {
    const char* at = bytes.data();
    std::uint32_t codePoint = 0;
    return !decodeUtf8(at, bytes.data() + bytes.size(), codePoint) && at == bytes.data();
}

}  // namespace

TEST(Text, IsUtf8WhateverTheLocale) {
    const char* const old = std::setlocale(LC_ALL, "C");
    ASSERT_NE(nullptr, old);
    EXPECT_EQ(L"Gr\u00FC\u00DFe \u20AC \U0001F600",
              make_wstring("Gr\xC3\xBC\xC3\x9F"
                           "e \xE2\x82\xAC \xF0\x9F\x98\x80"));
    EXPECT_EQ(
        "Gr\xC3\xBC\xC3\x9F"
        "e",
        make_string(L"Gr\u00FC\u00DFe"));
}

TEST(Text, KeepsZeroCharacters) {
    const std::string text("a\0b\0", 4);
    EXPECT_EQ(std::wstring(L"a\0b\0", 4), make_wstring(text));
    EXPECT_EQ(text, make_string(make_wstring(text)));
}

TEST(Text, GivesBackEveryByteThatIsNotUtf8) {
    for (int byte = 0; byte < 256; ++byte) {
        for (const char* after : {"", "a", "\x80", "\xBF\xBF"}) {
            const std::string text = std::string(1, static_cast<char>(byte)) + after;
            EXPECT_EQ(text, make_string(make_wstring(text))) << byte;
        }
    }
}

TEST(Text, GivesBackRandomBytes) {
    std::mt19937 random = repeatableRandom(20270131);
    // Mostly bytes around the borders between the lengths of sequences.
    const std::string bytes(
        "\x00\x7F\x80\xBF\xC0\xC2\xDF\xE0\xA0\xED\x9F\xEF\xF0\x90\xF4\x8F\xF5\xFF"
        "a",
        19);
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 12, ' ');
        for (char& byte : text)
            byte = bytes[random() % bytes.size()];
        ASSERT_EQ(text, make_string(make_wstring(text)));
    }
}

TEST(Text, ReplacesWhatNoUtf8CanSay) {
    EXPECT_EQ("\xEF\xBF\xBD", make_string(std::wstring(1, static_cast<wchar_t>(0xD800))));
    EXPECT_EQ("\xEF\xBF\xBD", make_string(std::wstring(1, static_cast<wchar_t>(0xDC7F))));
    EXPECT_EQ("\xEF\xBF\xBD", make_string(std::wstring(1, static_cast<wchar_t>(0x110000))));
    EXPECT_EQ("\xEF\xBF\xBD", make_string(std::wstring(1, static_cast<wchar_t>(-1))));
}

TEST(Utf8, DecodesTheFirstAndLastOfEachLength) {
    EXPECT_TRUE(decodes(std::string(1, '\0'), 0));
    EXPECT_TRUE(decodes("\x7F", 0x7F));
    EXPECT_TRUE(decodes("\xC2\x80", 0x80));
    EXPECT_TRUE(decodes("\xDF\xBF", 0x7FF));
    EXPECT_TRUE(decodes("\xE0\xA0\x80", 0x800));
    EXPECT_TRUE(decodes("\xED\x9F\xBF", 0xD7FF));
    EXPECT_TRUE(decodes("\xEE\x80\x80", 0xE000));
    EXPECT_TRUE(decodes("\xEF\xBF\xBF", 0xFFFF));
    EXPECT_TRUE(decodes("\xF0\x90\x80\x80", 0x10000));
    EXPECT_TRUE(decodes("\xF4\x8F\xBF\xBF", 0x10FFFF));
}

TEST(Utf8, RefusesOverlongFormsSurrogatesAndWhatLiesBeyond) {
    for (const char* bytes :
         {"\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80",
          "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\x80", "\xFF", "\xC2",
          "\xC2\x61", "\xE2\x82", "\xF0\x9F\x98", ""})
        EXPECT_TRUE(refuses(bytes)) << testing::PrintToString(std::string(bytes));
}

TEST(Utf8, EncodesWhatItDecodes) {
    for (const std::uint32_t codePoint :
         {0x0U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xFFFDU, 0x10000U, 0x10FFFFU}) {
        std::string text;
        appendUtf8(text, codePoint);
        EXPECT_TRUE(decodes(text, codePoint)) << codePoint;
    }
}

TEST(Text, IsPlainUpToTheFirstByteThatIsNot) {
    const std::string plain = "The quick brown fox ~ 0123456789";
    for (std::size_t length = 0; length <= plain.size(); ++length) {
        const std::string text = plain.substr(0, length);
        EXPECT_EQ(text.data() + length, plainEnd(text.data(), text.data() + length));
    }
    for (int byte = 0; byte < 256; ++byte) {
        const bool isPlain = byte >= 0x20 && byte < 0x7F;
        for (std::size_t place = 0; place < 18; ++place) {
            std::string text = plain;
            text[place] = static_cast<char>(byte);
            const char* const end = text.data() + text.size();
            EXPECT_EQ(isPlain ? end : text.data() + place, plainEnd(text.data(), end)) << byte;
        }
    }
}

TEST(Text, TakesNamesForTheSameWhateverTheCaseOfAsciiLetters) {
    EXPECT_TRUE(sameName("", ""));
    EXPECT_TRUE(sameName("Content-Type", "cONTENT-tYPE"));
    EXPECT_FALSE(sameName("Term", "Terms"));
    EXPECT_FALSE(sameName("@[", "`{"));  // which stand beside the letters
    EXPECT_FALSE(sameName("\xC4", "\xE4"));
    EXPECT_FALSE(sameName({"a\0b", 3}, {"a\0c", 3}));
    EXPECT_TRUE(sameName({"a\0b", 3}, {"A\0B", 3}));
}

TEST(Text, OrdersNamesAsItTakesThemForTheSame) {
    const std::string_view ascending[] = {"",          "Lease",     "LEASE_", "leasing",
                                          {"x\0a", 3}, {"X\0B", 3}, "\xE4"};
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t j = 0; j < std::size(ascending); ++j)
            EXPECT_EQ(lessName(ascending[i], ascending[j]), i < j) << ascending[i] << ascending[j];
    }
    EXPECT_FALSE(lessName("term", "TERM"));
    EXPECT_FALSE(lessName("TERM", "term"));
}
