// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "Access.h"
#include "CommandLine.h"
#include "Passwd.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

ParsedArguments parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "tavqz");
    return parseArguments(int(arguments.size()), arguments.data());
}

TEST(AccessOptions, NameOneWayToKnowUsers) {
    EXPECT_TRUE(parse({"serve", "--credentials", "a"}).isRequest);
    EXPECT_TRUE(parse({"serve", "--pam", "--pam-folder", "a"}).isRequest);
    for (const std::vector<const char*>& wrong :
         std::vector<std::vector<const char*>>{{"serve", "--credentials", "a", "--pam"},
                                               {"serve", "--credentials", "a", "--user", "anna"},
                                               {"serve", "--pam", "--password-file", "a"},
                                               {"serve", "--pam-folder", "a"},
                                               {"passwd"},
                                               {"passwd", "anna", "secret"},
                                               {"passwd", "--delete", "--rights", "read", "anna"},
                                               {"passwd", "--server", "http://box", "anna"}}) {
        EXPECT_EQ(EXIT_USAGE, parse(wrong).status) << wrong[0] << " " << wrong[1];
    }
}

TEST(AccessOptions, NameFilesFromWhereTheyAreWritten) {
    const auto serve = parse({"serve", "--credentials", "users"}).request.serve;
    EXPECT_EQ((std::filesystem::current_path() / "users").string(), serve.access.credentialsFile);
    EXPECT_EQ((std::filesystem::current_path() / "users").string(),
              parse({"passwd", "--file", "users", "anna"}).request.passwd.file);
}

TEST(AccessOptions, HaveGroupsThatAreTheSystems) {
    const AccessRequest access =
        parse({"serve", "--pam", "--writers", "wheel"}).request.serve.access;
    EXPECT_TRUE(access.usesPam);
    EXPECT_EQ("tavqz-readers", access.readers);
    EXPECT_EQ("wheel", access.writers);
    EXPECT_EQ("tavqz-subscribers", access.subscribers);
}

TEST(AccessOptions, LeaveOneUserWhoMayAll) {
    EXPECT_TRUE(hasOneUser(parse({"serve"}).request.serve));
    EXPECT_FALSE(hasOneUser(parse({"serve", "--pam"}).request.serve));
    EXPECT_FALSE(hasOneUser(parse({"serve", "--credentials", "a"}).request.serve));
}

TEST(Passwd, RefusesWhatMakesNoSenseBeforeItAsks) {
    const TemporaryFolder folder;
    const std::string file = folder.file("credentials");
    EXPECT_THROW((void)changePassword({"a:b", file, "", false}), UsageError);
    EXPECT_THROW((void)changePassword({"anna", file, "everything", false}), UsageError);
    EXPECT_THROW((void)changePassword({"anna", file, "", true}), Error);
    EXPECT_FALSE(folder.contains("credentials"));
}

}  // namespace
}  // namespace QZ
