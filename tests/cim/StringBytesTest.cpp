// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>
#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>

using namespace Pegasus;

namespace {

std::string _bytes(const String& s) {
    return static_cast<const char*>(s.getCString());
}

}  // namespace

TEST(StringBytes, GoThroughUnchanged) {
    for (const char* text :
         {"", "plain", "\xc2\x80", "\xdf\xbf", "\xe0\xa0\x80", "\xef\xbf\xbf", "\xf0\x90\x80\x80",
          "\xf4\x8f\xbf\xbf", "\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80"})
        EXPECT_EQ(_bytes(String(text)), text);
}

TEST(StringBytes, DecodesSurrogatePairs) {
    const String s("\xf0\x9f\x98\x80");
    EXPECT_EQ(Uint16(s[0]), 0xd83d);
    EXPECT_EQ(Uint16(s[1]), 0xde00);
}

TEST(StringBytes, RefusesMalformedUtf8) {
    for (const char* text :
         {"\x80", "\xff", "\xc0\x80", "\xc1\xbf", "\xc3", "a\xc3(", "\xe0\x9f\xbf", "\xe2\x82",
          "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xf0\x9f\x98"})
        EXPECT_THROW(String{text}, Exception) << testing::PrintToString(text);
}

TEST(StringBytes, SaysWhereUtf8IsMalformed) {
    try {
        const String s("ab\xc0\x80");
        FAIL() << "nothing was thrown";
    } catch (const Exception& e) {
        EXPECT_EQ(e.getMessage(), "malformed UTF-8 at byte 2: c0 80");
    }
}

TEST(StringBytes, LeavesTheStringWhenItThrows) {
    String s("before");
    EXPECT_THROW(s.assign("\xff"), Exception);
    EXPECT_EQ(s, "before");
}

TEST(StringBytes, ReadNoFurtherThanTold) {
    // The second byte of the sequence exists, but is not part of the text.
    EXPECT_THROW(String("a\xc3\xa4", 2), Exception);
    EXPECT_EQ(String("a\xc3\xa4", 1), "a");
}

TEST(StringBytes, LetHalvesOfSurrogatePairsPass) {
    const Char16 high[] = {'b', 0xd800};
    EXPECT_EQ(_bytes(String(high, 2)), "b\xed\xa0\x80");
    const Char16 low[] = {0xdc00, 'a'};
    EXPECT_EQ(_bytes(String(low, 2)),
              "\xed\xb0\x80"
              "a");
    const String read("\xed\xa0\x80");
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(Uint16(read[0]), 0xd800);
}

TEST(StringBytes, WriteToStreamsAsUtf8) {
    std::ostringstream out;
    out << String("M\xc3\xbcnchen");
    EXPECT_EQ(out.str(), "M\xc3\xbcnchen");
}

TEST(CString, OwnsItsBytes) {
    EXPECT_EQ(static_cast<const char*>(CString()), nullptr);
    CString kept;
    {
        const CString source = String("text").getCString();
        kept = source;
        EXPECT_NE(static_cast<const char*>(kept), static_cast<const char*>(source));
    }
    const CString copy(kept);
    EXPECT_STREQ(kept, "text");
    kept = CString();
    EXPECT_EQ(static_cast<const char*>(kept), nullptr);
    EXPECT_STREQ(copy, "text");
}

TEST(Char16, ComparesWithCharacters) {
    EXPECT_TRUE(Char16('a') == 'a');
    EXPECT_TRUE('a' == Char16('a'));
    EXPECT_TRUE(Char16('a') != 'b');
    EXPECT_TRUE(Char16(0x20ac) != Char16(0xac));
    EXPECT_EQ(Uint16(Char16()), 0);
}
