// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>
#include <gtest/gtest.h>

#include <thread>

using namespace Pegasus;

namespace {

// Used before any constructor of this file has run: see EmptyWorksBeforeItsConstructor.
extern String _late;
const Uint32 _sizeOfLate = _late.size();
const Boolean _lateIsEmpty = _late == String::EMPTY;
String _late;

}  // namespace

TEST(String, EmptyWorksBeforeItsConstructor) {
    EXPECT_EQ(_sizeOfLate, 0U);
    EXPECT_TRUE(_lateIsEmpty);
}

TEST(String, StartsEmpty) {
    const String s;
    EXPECT_EQ(s.size(), 0U);
    EXPECT_EQ(s, "");
    EXPECT_EQ(s, String::EMPTY);
    EXPECT_EQ(Uint16(s.getChar16Data()[0]), 0);
}

TEST(String, CountsCodeUnits) {
    EXPECT_EQ(String("abc").size(), 3U);
    EXPECT_EQ(String("\xc3\xa4").size(), 1U);
    EXPECT_EQ(String("\xf0\x9f\x98\x80").size(), 2U);
}

TEST(String, IsMadeOfAPart) {
    const Char16 units[] = {'a', 'b', 'c', 0};
    EXPECT_EQ(String(units), "abc");
    EXPECT_EQ(String(units, 2), "ab");
    EXPECT_EQ(String("abc", 2), "ab");
    EXPECT_EQ(String(String("abc"), 2), "ab");
    EXPECT_THROW(String(String("abc"), 4), IndexOutOfBoundsException);
}

TEST(String, RefusesNullPointers) {
    EXPECT_THROW(String(static_cast<const char*>(nullptr)), Exception);
    EXPECT_THROW(String(static_cast<const char*>(nullptr), 0), Exception);
    EXPECT_THROW(String(static_cast<const Char16*>(nullptr)), Exception);
}

TEST(String, KeepsNulInside) {
    const String s("a\0b", 3);
    EXPECT_EQ(s.size(), 3U);
    EXPECT_EQ(Uint16(s[1]), 0);
    EXPECT_NE(s, "a");
}

TEST(String, CopiesAreIndependent) {
    String original("abc");
    String copy(original);
    copy[0] = 'x';
    copy.append('!');
    EXPECT_EQ(original, "abc");
    EXPECT_EQ(copy, "xbc!");
    copy = original;
    original.clear();
    EXPECT_EQ(copy, "abc");
    EXPECT_EQ(original.size(), 0U);
}

TEST(String, AssignsEachForm) {
    const Char16 units[] = {'a', 'b', 0};
    String s("old");
    EXPECT_EQ(s.assign(units), "ab");
    EXPECT_EQ(s.assign(units, 1), "a");
    EXPECT_EQ(s.assign("xyz"), "xyz");
    EXPECT_EQ(s.assign("xyz", 2), "xy");
    EXPECT_EQ(s.assign(s), "xy");
}

TEST(String, AppendsItself) {
    String s("abc");
    s.append(s);
    EXPECT_EQ(s, "abcabc");
    s.append(s.getChar16Data() + 1, 2);
    EXPECT_EQ(s, "abcabcbc");
    s.reserveCapacity(100);
    s.append(s.getChar16Data(), s.size());
    EXPECT_EQ(s, "abcabcbcabcabcbc");
}

TEST(String, AppendsManyUnits) {
    String s;
    for (int i = 0; i < 1000; ++i)
        s.append(Char16(Uint16('a' + i % 26)));
    ASSERT_EQ(s.size(), 1000U);
    EXPECT_TRUE(s[999] == 'l');
    EXPECT_EQ(Uint16(s.getChar16Data()[1000]), 0);
}

TEST(String, AppendsFormattedText) {
    String s("x");
    s.appendPrintf("%d-%s", 5, "\xc3\xa4");
    EXPECT_EQ(s, "x5-\xc3\xa4");
    String wide;
    wide.appendPrintf("%0500d", 1);
    EXPECT_EQ(wide.size(), 500U);
}

TEST(String, RemovesAPart) {
    String s("abcdef");
    const String before(s);
    s.remove(1, 2);
    EXPECT_EQ(s, "adef");
    s.remove(4);
    EXPECT_EQ(s, "adef");
    s.remove(1);
    EXPECT_EQ(s, "a");
    EXPECT_EQ(before, "abcdef");
    EXPECT_THROW(s.remove(0, 2), IndexOutOfBoundsException);
    EXPECT_THROW(s.remove(2), IndexOutOfBoundsException);
    EXPECT_EQ(s, "a");
}

TEST(String, GivesSubstrings) {
    const String s("abc");
    EXPECT_EQ(s.subString(1), "bc");
    EXPECT_EQ(s.subString(1, 1), "b");
    EXPECT_EQ(s.subString(1, 100), "bc");
    EXPECT_EQ(s.subString(3), "");
    EXPECT_EQ(s.subString(4), "");
}

TEST(String, IndexesUpToTheTerminator) {
    String s("abc");
    const String& constant = s;
    EXPECT_TRUE(constant[2] == 'c');
    EXPECT_EQ(Uint16(constant[3]), 0);
    EXPECT_EQ(Uint16(s[3]), 0);
    EXPECT_THROW(constant[4], IndexOutOfBoundsException);
    EXPECT_THROW(s[4], IndexOutOfBoundsException);
    EXPECT_EQ(Uint16(String()[0]), 0);
}

TEST(String, Finds) {
    const String s("abcabc");
    EXPECT_EQ(s.find('b'), 1U);
    EXPECT_EQ(s.find(2, 'b'), 4U);
    EXPECT_EQ(s.find(6, 'b'), PEG_NOT_FOUND);
    EXPECT_EQ(s.find('x'), PEG_NOT_FOUND);
    EXPECT_EQ(s.find(String("ca")), 2U);
    EXPECT_EQ(s.find(String("abcabcd")), PEG_NOT_FOUND);
    EXPECT_EQ(s.find(String()), PEG_NOT_FOUND);
    EXPECT_EQ(s.reverseFind('b'), 4U);
    EXPECT_EQ(s.reverseFind('x'), PEG_NOT_FOUND);
    EXPECT_EQ(String().reverseFind('x'), PEG_NOT_FOUND);
    EXPECT_THROW(s.find(7, 'b'), IndexOutOfBoundsException);
}

TEST(String, OrdersByCodeUnits) {
    EXPECT_LT(String("a"), String("b"));
    EXPECT_LT(String("Z"), String("a"));
    EXPECT_LE(String("a"), String("a"));
    EXPECT_GT(String("ab"), String("a"));
    EXPECT_GE(String("\xc3\xa4"), String("z"));
    EXPECT_EQ(String::compare("abc", "abd", 2), 0);
    EXPECT_GT(String::compare("abc", "ab", 3), 0);
    EXPECT_LT(String::compare("", "b"), 0);
    EXPECT_NE(String("a"), String("ab"));
}

TEST(String, IgnoresTheCaseOfAsciiOnly) {
    EXPECT_TRUE(String::equalNoCase("TaViRa_1", "tavira_1"));
    EXPECT_FALSE(String::equalNoCase("\xc3\x84", "\xc3\xa4"));
    EXPECT_FALSE(String::equalNoCase("abc", "ab"));
    EXPECT_LT(String::compareNoCase("A", "b"), 0);
    EXPECT_LT(String::compareNoCase("_", "A"), 0);
    EXPECT_GT(String::compareNoCase("abc", "AB"), 0);

    String s(
        "\xc3\x84"
        "AbZ[");
    const String before(s);
    s.toLower();
    EXPECT_EQ(s,
              "\xc3\x84"
              "abz[");
    EXPECT_TRUE(before[1] == 'A');
}

TEST(String, Concatenates) {
    EXPECT_EQ(String("root") + "/" + String("tavqz"), "root/tavqz");
    EXPECT_EQ("a" + String(), "a");
}

// Copies share storage; threads that drop and change theirs must not see each other.
TEST(String, CopiesBelongToDifferentThreads) {
    const String shared("shared by two threads");
    const auto work = [&shared] {
        for (int i = 0; i < 10000; ++i) {
            String mine(shared);
            mine.append('!');
            ASSERT_EQ(mine.size(), shared.size() + 1);
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(shared, "shared by two threads");
}
