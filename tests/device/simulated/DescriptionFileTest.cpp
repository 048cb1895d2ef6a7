// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>

#include "Description.h"
#include "TestMachine.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class SimulatedDescriptionFile : public testing::Test {
protected:
    // What is told of a file with that text.
    std::string read(const std::string& text) {
        write(text);
        return load();
    }
    void write(const std::string& text) const {
        _machine.folder().write("etc/tavqz/service-processor.txt", text);
    }
    std::string load() {
        testing::internal::CaptureStderr();
        found = loadDescription();
        return testing::internal::GetCapturedStderr();
    }
    std::string path() const { return _machine.folder().file("etc/tavqz/service-processor.txt"); }

    std::optional<Description> found;

private:
    TestMachine _machine;
};

}  // namespace

TEST_F(SimulatedDescriptionFile, IsNoneWhereThereIsNoFile) {
    EXPECT_EQ(load(), "");
    EXPECT_FALSE(found);
}

TEST_F(SimulatedDescriptionFile, IsReadAnewEachTime) {
    EXPECT_EQ(read("type = 3\n"), "");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->number(0, "type", 1), 3);
    read("type = 4\n");
    EXPECT_EQ(found->number(0, "type", 1), 4);
    read("");
    EXPECT_TRUE(found);
}

TEST_F(SimulatedDescriptionFile, IsRefusedWithItsMistakesOnce) {
    const std::string mistakes = "Cannot use " + path() + ": line 1: \"speed\" is no key\n" +
                                 "Cannot use " + path() + ": line 3: \"noise\" is no key\n";
    const std::string wrong = "speed = 1\ntype = 1\nnoise = 1\n";
    EXPECT_EQ(read(wrong), mistakes);
    EXPECT_FALSE(found);
    EXPECT_EQ(load(), "");
    EXPECT_FALSE(found);
    EXPECT_EQ(read("type = 1\n"), "");
    EXPECT_TRUE(found);
    EXPECT_EQ(read(wrong), mistakes);
}

TEST_F(SimulatedDescriptionFile, TellsTenMistakesAtMost) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += "speed\n";
    }
    const std::string told = read(text);
    EXPECT_THAT(told, HasSubstr("line 10: "));
    EXPECT_THAT(told, testing::Not(HasSubstr("line 11: ")));
    EXPECT_THAT(told, testing::EndsWith("\nand 990 more\n"));
}

TEST_F(SimulatedDescriptionFile, IsRefusedWhereItIsNoFileOfOurs) {
    EXPECT_EQ(read(std::string((std::size_t(1) << 20) + 1, '\n')),
              "Cannot use " + path() + ": it is no file of at most 1 MiB\n");
    EXPECT_FALSE(found);
    std::filesystem::remove(path());
    std::filesystem::create_directory(path());
    load();
    EXPECT_FALSE(found);
    std::filesystem::remove(path());
    std::filesystem::create_symlink(path(), path());
    EXPECT_THAT(load(), StartsWith("Cannot use " + path() + ": "));
    EXPECT_FALSE(found);
}
