// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <filesystem>

#include "RegistryTest.h"

namespace {

TEST_F(RegistryTest, ReadsTextsAndNumbersInAnyCase) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "SOFTWARE\\agent", "LEVEL"), "number:42");
    EXPECT_EQ(find(registry, "Software\\Agent\\Ports", "http"), "number:5900");
}

TEST_F(RegistryTest, GivesTextsInLowerCase) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "software\\agent", "FullName"), "text:the agent");
}

TEST_F(RegistryTest, FindsAnEarlierNameThatContainsTheOneAskedFor) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "software\\agent", "Name"), "text:the agent");
}

TEST_F(RegistryTest, LooksForAValueInItsSectionOnly) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "software\\agent", "http"), "none");
    EXPECT_EQ(find(registry, "software\\agent\\ports", "level"), "none");
    EXPECT_EQ(find(registry, "software\\agen", "level"), "none");
}

TEST_F(RegistryTest, ReadsANumberOfFewerDigits) {
    write("[hkey_local_machine\\k]\nshort=dword:1f\nlast=dword:7");
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "k", "short"), "number:31");
    EXPECT_EQ(find(registry, "k", "last"), "number:7");
}

TEST_F(RegistryTest, KeepsNumbersTo32Bits) {
    write(
        "[hkey_local_machine\\k]\nall=dword:FFFFFFFF\nmore=dword:123456789\nmarked=dword:"
        "0x12345678\n");
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "k", "all"), "number:4294967295");
    EXPECT_EQ(find(registry, "k", "more"), "number:305419896");
    // No more than the eight characters behind the colon are the number's.
    EXPECT_EQ(find(registry, "k", "marked"), "number:1193046");
}

TEST_F(RegistryTest, FindsNothingWhereTheDataAreCutOff) {
    write("[hkey_local_machine\\k]\nopen=string&no end\n");
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "k", "open"), "none");
    write("[hkey_local_machine\\k]\nbare=dword\n");
    cRegistry bare = open();
    EXPECT_EQ(find(bare, "k", "bare"), "none");
    write("[hkey_local_machine\\k]\nname");
    cRegistry name = open();
    EXPECT_EQ(find(name, "k", "name"), "none");
    write("[hkey_local_machine\\k]\nother=hex:00\n");
    cRegistry other = open();
    EXPECT_EQ(find(other, "k", "other"), "none");
}

// Signs behind the name are looked for wherever they stand, in the next section too.
TEST_F(RegistryTest, TakesTheFirstSignBehindTheName) {
    write(
        "[hkey_local_machine\\k]\nname\n[hkey_local_machine\\l]\nv=dword:7\n"
        "t=string\nw=string&x&\nd=dword\nx=y:00000009\n");
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "k", "name"), "number:7");
    EXPECT_EQ(find(registry, "l", "\nt"), "text:x");
    EXPECT_EQ(find(registry, "l", "\nd"), "number:9");
}

TEST_F(RegistryTest, PutsNoNulBehindAText) {
    write(AGENT);
    cRegistry registry = open();
    std::string key = "software\\agent";
    std::string name = "fullname";
    std::string text(16, '#');
    EXPECT_EQ(registry.GetRegInfo(key.data(), name.data(), nullptr,
                                  reinterpret_cast<unsigned char*>(text.data())),
              1);
    EXPECT_EQ(text, "the agent#######");
}

TEST_F(RegistryTest, CopiesNoMoreThanItsLimit) {
    write("[hkey_local_machine\\k]\nlong=string&" + std::string(5000, 'x') + "&\n");
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "k", "long"), "text:" + std::string(cRegistry::MAX_TEXT, 'x'));
}

TEST_F(RegistryTest, FindsAKeyByWhatItBeginsWith) {
    write(AGENT);
    cRegistry registry = open();
    std::string key = "SOFTWARE\\Agent\\Po";
    testing::internal::CaptureStdout();
    EXPECT_TRUE(registry.CheckRegTree(key.data()));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\nCheckRegTree called and regkey is [SOFTWARE\\Agent\\Po]\n"
              "\nThe configBuffer != NULL and the checkkey is "
              "[[hkey_local_machine\\software\\agent\\po]\n");
    key = "Agent";
    EXPECT_FALSE(registry.CheckRegTree(key.data()));
}

TEST_F(RegistryTest, FindsALineItemAnywhere) {
    write(AGENT);
    cRegistry registry = open();
    std::string item = "string&The";
    testing::internal::CaptureStdout();
    EXPECT_TRUE(registry.CheckRegTreeLineItem(item.data()));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\nCheckRegTree called and regkey is [string&The]\n"
              "\nThe configBuffer != NULL and the checkkey is [string&the]\n");
    item = "missing";
    EXPECT_FALSE(registry.CheckRegTreeLineItem(item.data()));
}

TEST_F(RegistryTest, SaysNoWithoutAFile) {
    cRegistry registry = open();
    std::string key = "k";
    testing::internal::CaptureStdout();
    EXPECT_FALSE(registry.CheckRegTree(key.data()));
    EXPECT_FALSE(registry.CheckRegTree(nullptr));
    EXPECT_FALSE(registry.CheckRegTreeLineItem(nullptr));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\nCheckRegTree called and regkey is [k]\n\nCheckRegTree called and regkey is NULL");
    EXPECT_EQ(find(registry, "k", "v"), "none");
    EXPECT_EQ(update(registry, "k", "v", "dword:1"), 0);
    EXPECT_EQ(registry.CloseRegData(), 0);
    EXPECT_FALSE(std::filesystem::exists(_path));
    cRegistry nameless(nullptr);
    EXPECT_EQ(find(nameless, "k", "v"), "none");
    EXPECT_EQ(nameless.UpdateRegData(), 0);
}

TEST_F(RegistryTest, TakesNullOutputsAndArguments) {
    write(AGENT);
    cRegistry registry = open();
    std::string key = "software\\agent";
    std::string name = "level";
    EXPECT_EQ(registry.GetRegInfo(key.data(), name.data(), nullptr, nullptr), 1);
    EXPECT_EQ(registry.GetRegInfo(nullptr, name.data(), nullptr, nullptr), 0);
    EXPECT_EQ(registry.GetRegInfo(key.data(), nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(registry.UpdateRegInfo(key.data(), name.data(), nullptr), 0);
    EXPECT_EQ(registry.WriteRegInfo(key.data(), nullptr), 0);
    EXPECT_EQ(registry.WriteRegInfo(nullptr, name.data()), 0);
}

TEST_F(RegistryTest, ReadsHexadecimalAsTheHelperDoes) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(registry._httoi("ff", 8), 255);
}

}  // namespace
