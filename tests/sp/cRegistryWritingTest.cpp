// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

#include "RegistryTest.h"

namespace {

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

// A folder in the new file's place is in root's way too.
TEST_F(RegistryTest, KeepsTheOldFileUntilTheNewOneStands) {
    write(AGENT);
    std::filesystem::create_directories(_path + ".new/in the way");
    cRegistry registry = open();
    EXPECT_EQ(update(registry, "software\\agent", "level", "dword:1"), 1);
    EXPECT_EQ(registry.UpdateRegData(), 0);
    EXPECT_EQ(file(), AGENT);
    std::filesystem::remove_all(_path + ".new");
    EXPECT_EQ(registry.UpdateRegData(), 1);
    EXPECT_NE(file().find("\nlevel=dword:00000001\n"), std::string::npos);
}

TEST_F(RegistryTest, KeepsTheOldFileWhereTheNewOneDoesNotFit) {
    write(AGENT);
    cRegistry registry = open();
    EXPECT_EQ(update(registry, "software\\agent", "level", "dword:1"), 1);
    struct rlimit limit {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const struct rlimit small = {16, limit.rlim_max};
    const auto atLimit = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const int written = registry.CloseRegData();
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    static_cast<void>(std::signal(SIGXFSZ, atLimit));
    EXPECT_EQ(written, 0);
    EXPECT_EQ(file(), AGENT);
    EXPECT_FALSE(_folder.contains("agent.reg.new"));
}

}  // namespace
