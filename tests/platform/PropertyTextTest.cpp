// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PropertyText.h"

#include <gtest/gtest.h>

#include <random>

#include "RepeatableRandom.h"

using namespace QZ;

namespace {

std::string readBack(const std::string& value) {
    PropertyText text;
    text.set("key", value);
    return PropertyText(text.compose()).get("key");
}

std::string composed(const std::string& key, const std::string& value) {
    PropertyText text;
    text.set(key, value);
    return text.compose();
}

// Changes one entry of a text.
std::string changed(const std::string& before, const std::string& key, const std::string& value,
                    bool keepOld = false) {
    PropertyText text(before);
    text.set(key, value, keepOld);
    return text.compose();
}

// A short text of characters that are hard on a line codec.
std::string randomText(std::mt19937& random) {
    static const std::string bytes("\0\n\r\t =#\\xnrts0Aa\x1B\x7F\x80\x85\xC2\xC3\xBF\xEF\xBB\xFF",
                                   26);
    std::string text(random() % 10, ' ');
    for (char& byte : text)
        byte = bytes[random() % bytes.size()];
    return text;
}

}  // namespace

TEST(PropertyText, IsOneLineForEachEntryInOrderOfSetting) {
    PropertyText text;
    text.set("LEASE.Term", "36");
    text.set("LEASE.Lessor", "Acme");
    text.set("LEASE.Term", "48");
    EXPECT_EQ("LEASE.Term=48\nLEASE.Lessor=Acme\n", text.compose());
    EXPECT_EQ("48", text.get("LEASE.Term"));
}

TEST(PropertyText, IsEmptyForAMissingKey) {
    const PropertyText text("a=1\n");
    EXPECT_EQ("", text.get("b"));
    EXPECT_FALSE(text.contains("b"));
    EXPECT_TRUE(text.contains("a"));
}

TEST(PropertyText, KeepsCommentsAndUnknownLines) {
    const std::string before = "# by hand\n\n  \t\nwhat is this?\na = 1\nUNKNOWN=x\n#a=0\n";
    EXPECT_EQ(before, PropertyText(before).compose());
    EXPECT_EQ("# by hand\n\n  \t\nwhat is this?\na=2\nUNKNOWN=x\n#a=0\nb=3\n",
              changed(changed(before, "a", "2"), "b", "3"));
}

TEST(PropertyText, KeepsTheLineOfAValueThatIsTheSame) {
    const std::string before = "  a = b\\x63  \r\nc=d";
    EXPECT_EQ(before, changed(before, "a", "bc"));
    EXPECT_EQ(before, changed(before, "c", std::string("d\0\0", 3)));
}

TEST(PropertyText, ComparesWhatALineReadsAs) {
    EXPECT_EQ("a=b\\\\\\\\c\n", changed("a=b\\\\c\n", "a", "b\\\\c"));
    EXPECT_EQ("1", PropertyText("a\\\\b=1\n").get("a\\b"));
    EXPECT_FALSE(PropertyText("a\\\\b=1\n").contains("a\\\\b"));
    EXPECT_EQ("1", PropertyText("\\x61b=1\n").get("ab"));
}

TEST(PropertyText, IgnoresBlanksAroundKeyAndValue) {
    const PropertyText text(" \ta\t = \t b  c \t\nd=\n = x\n");
    EXPECT_EQ("b  c", text.get("a"));
    EXPECT_EQ("", text.get("d"));
    EXPECT_TRUE(text.contains("d"));
    EXPECT_EQ("x", text.get(""));
}

TEST(PropertyText, ToleratesTheLineEndsOfOtherSystems) {
    const std::string before =
        "\xEF\xBB\xBF"
        "a=1\r\nb=2\r\n";
    EXPECT_EQ("1", PropertyText(before).get("a"));
    EXPECT_EQ("2", PropertyText(before).get("b"));
    EXPECT_EQ(
        "\xEF\xBB\xBF"
        "a=1\r\nb=3\r\n",
        changed(before, "b", "3"));
    EXPECT_EQ("a=3\r\nb=2\r\n", changed(before, "a", "3"));
}

TEST(PropertyText, ToleratesAMissingLineEnd) {
    EXPECT_EQ("2", PropertyText("a=1\nb=2").get("b"));
    EXPECT_EQ("a=1\nb=3\n", changed("a=1\nb=2", "b", "3"));
    EXPECT_EQ("a=1\nb=2\nc=3\n", changed("a=1\nb=2", "c", "3"));
}

TEST(PropertyText, CountsTheLastOfTwoEntries) {
    const std::string before = "a=1\nb=2\na=3\n";
    EXPECT_EQ("3", PropertyText(before).get("a"));
    EXPECT_EQ("a=1\nb=2\na=4\n", changed(before, "a", "4"));
    EXPECT_EQ("a=1\nb=2\na=1\n", changed(before, "a", "1"));
}

TEST(PropertyText, KeepsAnOldLineAsACommentAbove) {
    EXPECT_EQ("x=1\n# kept, not understood: d = 31.1.27\nd=\ny=2\n",
              changed("x=1\n d = 31.1.27 \ny=2\n", "d", "", true));
    EXPECT_EQ("# kept, not understood: d=31.1.27\r\nd=\r\n",
              changed("d=31.1.27\r\n", "d", "", true));
    EXPECT_EQ("# kept, not understood: d=31.1.27\nd=\n", changed("d=31.1.27", "d", "", true));
}

TEST(PropertyText, KeepsNothingWhereNothingChanges) {
    EXPECT_EQ("d=31.1.27\n", changed("d=31.1.27\n", "d", "31.1.27", true));
    EXPECT_EQ("d=1\n", changed("", "d", "1", true));
}

TEST(PropertyText, WritesEscapesThatAPersonCanRead) {
    EXPECT_EQ("key=a\\\\b\n", composed("key", "a\\b"));
    EXPECT_EQ("key=two\\nlines\\r\\n\n", composed("key", "two\nlines\r\n"));
    EXPECT_EQ("key=\\ttab\n", composed("key", "\ttab"));
    EXPECT_EQ("key=\\s a b \\s\n", composed("key", "  a b  "));
    EXPECT_EQ("key=\\s\n", composed("key", " "));
    EXPECT_EQ("key=\\x1B\\x7F\\xC2\\x85\n", composed("key", "\x1B\x7F\xC2\x85"));
    EXPECT_EQ("key=a\\x00b\n", composed("key", std::string("a\0b", 3)));
    EXPECT_EQ("key=a=b # c\n", composed("key", "a=b # c"));
    EXPECT_EQ(
        "key=Gr\xC3\xBC\xC3\x9F"
        "e\n",
        composed("key",
                 "Gr\xC3\xBC\xC3\x9F"
                 "e"));
    EXPECT_EQ("key=\\xFC\\xC3 ok\n", composed("key", "\xFC\xC3 ok"));
    EXPECT_EQ("a\\x3Db=1\n", composed("a=b", "1"));
    EXPECT_EQ("\\x23a#=1\n", composed("#a#", "1"));
    EXPECT_EQ("\\sa\\s=1\n", composed(" a ", "1"));
}

TEST(PropertyText, TakesEscapesThatAreNoneAsTheyStand) {
    EXPECT_EQ("C:\\data \\", PropertyText("a=C:\\data \\").get("a"));
    EXPECT_EQ("\\x", PropertyText("a=\\x\n").get("a"));
    EXPECT_EQ("\\x4", PropertyText("a=\\x4\n").get("a"));
    EXPECT_EQ("\\x4g", PropertyText("a=\\x4g\n").get("a"));
    EXPECT_EQ("JK", PropertyText("a=\\x4a\\x4B\n").get("a"));
}

TEST(PropertyText, DropsTheZeroPaddingOfNumbers) {
    EXPECT_EQ("key=12\n", composed("key", std::string("12\0\0", 4)));
    EXPECT_EQ("key=\n", composed("key", std::string(4, '\0')));
}

TEST(PropertyText, DropsLinesWithZeroBytes) {
    const PropertyText text(std::string("a=1\nb=2\0\0\nc=3\n\0\0\0", 17));
    EXPECT_TRUE(text.isDamaged());
    EXPECT_EQ("a=1\nc=3\n", text.compose());
    EXPECT_FALSE(PropertyText("a=1\n").isDamaged());
}

TEST(PropertyText, GivesBackEveryCharacter) {
    for (int byte = 1; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        for (const std::string& value : {one, "a" + one, one + "a", "a" + one + "b"}) {
            EXPECT_EQ(value, readBack(value)) << byte;
            EXPECT_EQ("v", PropertyText(composed(value, "v")).get(value)) << byte;
        }
    }
}

TEST(PropertyText, GivesBackRandomTextsUnderRandomKeys) {
    std::mt19937 random = repeatableRandom(20270131);
    for (int round = 0; round < 20000; ++round) {
        const std::string key = randomText(random);
        std::string value = randomText(random);
        PropertyText text(randomText(random));
        text.set(key, value);
        const PropertyText again(text.compose());
        while (!value.empty() && value.back() == '\0')
            value.pop_back();
        ASSERT_EQ(value, again.get(key)) << testing::PrintToString(text.compose());
        ASSERT_FALSE(again.isDamaged());
    }
}

TEST(PropertyText, ComposesWhatItRead) {
    std::mt19937 random = repeatableRandom(20270201);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = randomText(random) + randomText(random);
        if (text.find('\0') == std::string::npos) {
            ASSERT_EQ(text, PropertyText(text).compose());
        }
    }
}
