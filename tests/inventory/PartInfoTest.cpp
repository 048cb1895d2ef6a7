// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PartInfo.h"

#include <gtest/gtest.h>

namespace QZ {
namespace {

std::string _cleaned(const std::string& text) {
    std::string cleaned;
    PartInfo("", "", text, "", "").getSerialNumber(cleaned);
    return cleaned;
}

TEST(PartInfo, GivesBackEachText) {
    const PartInfo part("maker", "model", "serial", "tag", "version");
    std::string text;
    part.getManufacturer(text);
    EXPECT_EQ(text, "maker");
    part.getModel(text);
    EXPECT_EQ(text, "model");
    part.getSerialNumber(text);
    EXPECT_EQ(text, "serial");
    part.getTag(text);
    EXPECT_EQ(text, "tag");
    part.getVersion(text);
    EXPECT_EQ(text, "version");
}

TEST(PartInfo, CleansEachText) {
    const PartInfo part(" \x01m", "m\x02 ", "\ts", "t\n", "\x1Fv");
    std::string maker;
    std::string model;
    std::string serial;
    std::string tag;
    std::string version;
    part.getManufacturer(maker);
    part.getModel(model);
    part.getSerialNumber(serial);
    part.getTag(tag);
    part.getVersion(version);
    EXPECT_EQ(maker + model + serial + tag + version, "mmstv");
}

TEST(PartInfo, DropsALeadingBlankAndATrailingTab) {
    EXPECT_EQ(_cleaned(" S-1\t"), "S-1");
}

TEST(PartInfo, DropsControlCharactersWhereverTheyAre) {
    std::string controls;
    for (char code = 1; code < ' '; ++code) {
        controls += code;
    }
    EXPECT_EQ(_cleaned(controls + "S" + controls + "-1" + controls), "S-1");
}

// Controls go first: the blanks that they parted are at an end then.
TEST(PartInfo, DropsBlanksThatControlCharactersHid) {
    EXPECT_EQ(_cleaned("\t \n S 1 \r \t"), "S 1");
}

TEST(PartInfo, KeepsAllElse) {
    EXPECT_EQ(_cleaned("\x7F\x80\xFF"), "\x7F\x80\xFF");
    EXPECT_EQ(_cleaned("\"quoted\""), "\"quoted\"");
    EXPECT_EQ(_cleaned("a  b"), "a  b");
    EXPECT_EQ(_cleaned("\xC2\xA0"), "\xC2\xA0");
}

TEST(PartInfo, LeavesNothingOfBlanks) {
    EXPECT_EQ(_cleaned("    "), "");
    EXPECT_EQ(_cleaned(" \t "), "");
    EXPECT_EQ(_cleaned(""), "");
}

}  // namespace
}  // namespace QZ
