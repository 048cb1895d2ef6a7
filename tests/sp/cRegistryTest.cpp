// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/cRegistry.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "TemporaryFolder.h"

namespace {

constexpr const char* AGENT =
    "REGEDIT4\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Agent]\n"
    "FullName=string&The Agent&\n"
    "Name=string&Agent&\n"
    "Level=dword:0000002A\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Agent\\Ports]\n"
    "Http=dword:0000170c\n";

// A file, and the object that reads it.
class RegistryTest : public testing::Test {
protected:
    void write(const std::string& text) { _folder.write("agent.reg", text); }
    std::string file() const { return _folder.read("agent.reg"); }
    cRegistry open() { return cRegistry(_path.data()); }

    // "text:…", "number:…" or "none".
    static std::string find(cRegistry& registry, std::string key, std::string name) {
        unsigned long number = 77;
        std::string text(cRegistry::MAX_TEXT + 1, '\0');
        const int found = registry.GetRegInfo(key.data(), name.data(), &number,
                                              reinterpret_cast<unsigned char*>(text.data()));
        text.resize(text.find('\0'));
        if (found == 0) {
            EXPECT_EQ(number, 0UL);
            EXPECT_EQ(text, "");
            return "none";
        }
        return text.empty() ? "number:" + std::to_string(number) : "text:" + text;
    }
    static int update(cRegistry& registry, std::string key, std::string name, std::string data) {
        return registry.UpdateRegInfo(key.data(), name.data(), data.data());
    }
    static int write(cRegistry& registry, std::string key, std::string entry) {
        return registry.WriteRegInfo(key.data(), entry.data());
    }

    TemporaryFolder _folder;
    std::string _path = _folder.file("agent.reg");
};

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

TEST_F(RegistryTest, WritesBackWhatItReadWhereNothingWasChanged) {
    write(AGENT);
    struct stat before {};
    stat(_path.c_str(), &before);
    cRegistry registry = open();
    EXPECT_EQ(registry.UpdateRegData(), 1);
    EXPECT_EQ(registry.CloseRegData(), 1);
    struct stat after {};
    stat(_path.c_str(), &after);
    EXPECT_EQ(file(), AGENT);
    EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST_F(RegistryTest, ReplacesAnEntryInItsPlace) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(update(registry, "software\\AGENT", "level", "dword:7"), 1);
    EXPECT_EQ(find(registry, "software\\agent", "level"), "number:7");
    EXPECT_EQ(update(registry, "software\\agent", "name", "string&New Name&"), 1);
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(file(),
              "REGEDIT4\n"
              "\n"
              "[HKEY_LOCAL_MACHINE\\Software\\Agent]\n"
              "FullName=string&The Agent&\n"
              "name=string&New Name&\n"
              "level=dword:00000007\n"
              "\n"
              "[HKEY_LOCAL_MACHINE\\Software\\Agent\\Ports]\n"
              "Http=dword:0000170c\n");
}

TEST_F(RegistryTest, WritesEightDigitsOfANumber) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(write(registry, "k", "a=DWord:fF"), 1);
    EXPECT_EQ(write(registry, "k", "b=dword:89ABCDEF"), 1);
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(file(), AGENT + std::string("[hkey_local_machine\\k]\n"
                                          "a=DWord:000000fF\n"
                                          "b=dword:89ABCDEF\n"));
}

TEST_F(RegistryTest, AddsAnEntryAtTheEndOfItsSection) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(write(registry, "software\\agent", "Added=string&x=y&"), 1);
    EXPECT_EQ(find(registry, "software\\agent", "added"), "text:x=y");
    EXPECT_EQ(registry.UpdateRegData(), 1);
    EXPECT_NE(file().find("Level=dword:0000002A\nAdded=string&x=y&\n\n[HKEY"), std::string::npos);
}

TEST_F(RegistryTest, LeavesTheRestAloneWhereItAddsAnEntry) {
    const std::string rest = "\n[hkey_local_machine\\b]\nw=dword:00000002";
    write("[hkey_local_machine\\a]\nv=dword:00000001\n" + rest);
    cRegistry first = open();
    EXPECT_EQ(write(first, "a", "x=dword:3"), 1);
    EXPECT_EQ(first.CloseRegData(), 1);
    EXPECT_EQ(file(), "[hkey_local_machine\\a]\nv=dword:00000001\nx=dword:00000003\n" + rest);
    cRegistry last = open();
    EXPECT_EQ(write(last, "b", "y=dword:4"), 1);
    EXPECT_EQ(last.CloseRegData(), 1);
    EXPECT_EQ(file(), "[hkey_local_machine\\a]\nv=dword:00000001\nx=dword:00000003\n" + rest +
                          "\ny=dword:00000004\n");
}

TEST_F(RegistryTest, AddsAnEntryBeforeAHeaderOnTheLastOnesLine) {
    write("[hkey_local_machine\\a]v=dword:00000001 [hkey_local_machine\\b]\n");
    cRegistry registry = open();
    EXPECT_EQ(write(registry, "a", "w=dword:2"), 1);
    EXPECT_EQ(write(registry, "a", "w=dword:3"), 1);
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(
        file(),
        "[hkey_local_machine\\a]v=dword:00000001 \nw=dword:00000003\n[hkey_local_machine\\b]\n");
}

TEST_F(RegistryTest, AddsASectionAtTheEndOfTheFile) {
    write("[hkey_local_machine\\a]\r\nv=dword:00000001");
    cRegistry registry = open();
    EXPECT_EQ(write(registry, "b", "w=dword:2"), 1);
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(file(),
              "[hkey_local_machine\\a]\r\nv=dword:00000001\r\n[hkey_local_machine\\b]\r\nw=dword:"
              "00000002\r\n");
}

TEST_F(RegistryTest, ReplacesATextThatRunsOverLines) {
    write("[hkey_local_machine\\a]\nv=string&one\ntwo=2&\nw=dword:1\n");
    cRegistry registry = open();
    EXPECT_EQ(write(registry, "a", "v=string&three&"), 1);
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(file(), "[hkey_local_machine\\a]\nv=string&three&\nw=dword:1\n");
}

// Its reader runs on to the next "&", wherever that stands; whoever replaces it takes its line
// only.
TEST_F(RegistryTest, KeepsTheNextSectionBehindATextThatDoesNotEnd) {
    const std::string next = "\n[hkey_local_machine\\b]\nw=string&kept&\n";
    write("[hkey_local_machine\\a]\nv=string&open\n" + next);
    cRegistry registry = open();
    EXPECT_EQ(find(registry, "a", "v"), "text:open\n\n[hkey_local_machine\\b]\nw=string");
    EXPECT_EQ(write(registry, "a", "v=string&one&"), 1);
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(file(), "[hkey_local_machine\\a]\nv=string&one&\n" + next);
}

TEST_F(RegistryTest, KeepsTheNextEntriesBehindATextThatDoesNotEnd) {
    const std::string next = "w=string&kept&\nx=dword:00000001\n";
    write("[hkey_local_machine\\a]\nv=string&open\n" + next);
    cRegistry registry = open();
    EXPECT_EQ(write(registry, "a", "v=string&one&"), 1);
    EXPECT_EQ(registry.UpdateRegData(), 1);
    EXPECT_EQ(file(), "[hkey_local_machine\\a]\nv=string&one&\n" + next);
}

TEST_F(RegistryTest, ReplacesAnEntryBehindATextThatDoesNotEnd) {
    write("[hkey_local_machine\\a]\nv=string&open\nw=string&two&\n");
    cRegistry registry = open();
    EXPECT_EQ(write(registry, "a", "w=string&three&"), 1);
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(file(), "[hkey_local_machine\\a]\nv=string&open\nw=string&three&\n");
}

TEST_F(RegistryTest, ReplacesAnEntryBehindATextThatDoesNotBegin) {
    write("[hkey_local_machine\\a]\nv=string\n");
    cRegistry registry = open();
    EXPECT_EQ(write(registry, "a", "w=string&one&"), 1);
    EXPECT_EQ(write(registry, "a", "w=string&two&"), 1);
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(file(), "[hkey_local_machine\\a]\nv=string\nw=string&two&\n");
}

TEST_F(RegistryTest, RefusesWhatWouldBreakTheLayout) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(write(registry, "k", "v"), 0);
    EXPECT_EQ(write(registry, "k", "=dword:1"), 0);
    EXPECT_EQ(write(registry, "k", " =dword:1"), 0);
    EXPECT_EQ(write(registry, "k", "\" \t\"=dword:1"), 0);
    EXPECT_EQ(write(registry, "k", "v=dword:"), 0);
    EXPECT_EQ(write(registry, "k", "v=dword:123456789"), 0);
    EXPECT_EQ(write(registry, "k", "v=dword:0x1"), 0);
    EXPECT_EQ(write(registry, "k", "v=string&"), 0);
    EXPECT_EQ(write(registry, "k", "v=string&a&b&"), 0);
    EXPECT_EQ(write(registry, "k", "v=string&a"), 0);
    EXPECT_EQ(write(registry, "k", "v=string&a\nb&"), 0);
    EXPECT_EQ(write(registry, "k", "v=string&[HKEY_LOCAL_MACHINE\\x]&"), 0);
    EXPECT_EQ(write(registry, "k]", "v=dword:1"), 0);
    EXPECT_EQ(write(registry, "", "v=dword:1"), 0);
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(file(), AGENT);
}

TEST_F(RegistryTest, LetsItsContentGoWhenItIsClosed) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(registry.CloseRegData(), 1);
    EXPECT_EQ(find(registry, "software\\agent", "level"), "none");
    EXPECT_EQ(registry.UpdateRegData(), 0);
}

TEST_F(RegistryTest, SaysThatAFileCannotBeWritten) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(update(registry, "software\\agent", "level", "dword:1"), 1);
    std::filesystem::remove_all(_folder.path());
    EXPECT_EQ(registry.UpdateRegData(), 0);
    EXPECT_EQ(registry.CloseRegData(), 0);
}

TEST_F(RegistryTest, ReadsHexadecimalAsTheHelperDoes) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(registry._httoi("ff", 8), 255);
}

}  // namespace
