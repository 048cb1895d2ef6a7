// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiReplies.h"

#include <gtest/gtest.h>

namespace QZ {
namespace {

IpmiRequest _readFru() {
    return {IpmiFunction::Storage, 0x11, std::string("\0\0\0\x20", 4)};
}

TEST(IpmiReplies, ArePlainLinesOfBytes) {
    IpmiReplies replies;
    replies.add({IpmiFunction::Application, 0x01, {}}, {IpmiNormal, "\x20\x01"});
    replies.add(_readFru(), {IpmiNotPresent, {}});
    EXPECT_EQ(replies.text(),
              "06 01 = 00 20 01\n"
              "0a 11 00 00 00 20 = cb\n");
}

TEST(IpmiReplies, ComeBackFromTheirText) {
    IpmiReplies replies;
    IpmiRequest far = _readFru();
    far.address = 0xB4;
    far.channel = 6;
    far.lun = 1;
    replies.add(far, {IpmiNormal, std::string("\0\xFF", 2)});
    replies.add(_readFru(), {IpmiNormal, {}});
    const IpmiReplies again = IpmiReplies::parse(replies.text());
    EXPECT_EQ(replies.text(), "0a 11 00 00 00 20 = 00\nb4.06.01 0a 11 00 00 00 20 = 00 00 ff\n");
    EXPECT_EQ(again.text(), replies.text());
    ASSERT_TRUE(again.find(far));
    EXPECT_EQ(again.find(far)->data, std::string("\0\xFF", 2));
    EXPECT_EQ(again.find(_readFru())->data, "");
}

TEST(IpmiReplies, MayHaveRemarksAndLinesForOneCommandTwice) {
    const IpmiReplies replies = IpmiReplies::parse(
        "# a controller\n"
        "06 01 = 00 01\n"
        "\n"
        "  06  01 =  00 02   # the later one\r\n");
    ASSERT_TRUE(replies.find({IpmiFunction::Application, 0x01, {}}));
    EXPECT_EQ(replies.find({IpmiFunction::Application, 0x01, {}})->data, "\x02");
}

TEST(IpmiReplies, PassOverLinesThatAreWrong) {
    for (const char* line :
         {"06 01", "06 = 00", "= 00", "06 01 =", "06 1 = 00", "06 01 = 0", "06 01 = 00 zz",
          "xx 01 = 00", "06 01 = 001", "b4.06 06 01 = 00", "b4.06.zz 06 01 = 00", "06 01 # = 00"}) {
        EXPECT_EQ(IpmiReplies::parse(line).text(), "") << line;
    }
}

TEST(IpmiReplies, KnowWhatIsNeverReplied) {
    IpmiReplies replies = IpmiReplies::parse("06 01 = none\n");
    const IpmiRequest request{IpmiFunction::Application, 0x01, {}};
    EXPECT_TRUE(replies.hasNoReply(request));
    EXPECT_FALSE(replies.find(request));
    EXPECT_FALSE(replies.hasNoReply(_readFru()));
    EXPECT_EQ(replies.text(), "06 01 = none\n");
    replies.add(request, {});
    EXPECT_FALSE(replies.hasNoReply(request));
}

}  // namespace
}  // namespace QZ
