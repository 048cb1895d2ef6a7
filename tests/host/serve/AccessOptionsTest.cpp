// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "Access.h"
#include "CommandLine.h"
#include "Passwd.h"
#include "ServeKeys.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

ParsedArguments parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "tavqz");
    return parseArguments(int(arguments.size()), arguments.data());
}

ServeRequest serving(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "serve");
    return makeServeRequest(parse(std::move(arguments)).request.serve.values);
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
    EXPECT_EQ((std::filesystem::current_path() / "users").string(),
              serving({"--credentials", "users"}).access.credentialsFile);
    EXPECT_EQ((std::filesystem::current_path() / "users").string(),
              parse({"passwd", "--file", "users", "anna"}).request.passwd.file);
}

TEST(AccessOptions, HaveGroupsThatAreTheSystems) {
    const AccessRequest access = serving({"--pam", "--writers", "wheel"}).access;
    EXPECT_TRUE(access.usesPam);
    EXPECT_EQ("tavqz-readers", access.readers);
    EXPECT_EQ("wheel", access.writers);
    EXPECT_EQ("tavqz-subscribers", access.subscribers);
}

TEST(AccessOptions, LeaveOneUserWhoMayAll) {
    EXPECT_TRUE(hasOneUser(serving({})));
    EXPECT_FALSE(hasOneUser(serving({"--pam"})));
    EXPECT_FALSE(hasOneUser(serving({"--credentials", "a"})));
}

TEST(ServeOptions, AreThoseOfTheKeys) {
    const ServeArguments serve =
        parse({"serve", "--config", "a", "--listen", "::1", "--listen", "127.0.0.1",
               "--allow-plain", "--body-size", "5000", "--cacert", "/ca.pem"})
            .request.serve;
    EXPECT_EQ((ServeValues{{"allow-plain", {"yes"}},
                           {"body-size", {"5000"}},
                           {"cacert", {"/ca.pem"}},
                           {"listen", {"::1", "127.0.0.1"}}}),
              serve.values);
    EXPECT_EQ((std::filesystem::current_path() / "a").string(), serve.configFile);
    EXPECT_EQ("no", parse({"serve", "--pam=false"}).request.serve.values.at("pam").front());
}

TEST(ServeOptions, AreCheckedBeforeAnythingIsDone) {
    for (const std::vector<const char*>& wrong :
         std::vector<std::vector<const char*>>{{"serve", "--port", "65536"},
                                               {"serve", "--port", "1", "--port", "2"},
                                               {"serve", "--listen"},
                                               {"serve", "--listen", "::1", "127.0.0.1"},
                                               {"serve", "--key", "a"},
                                               {"serve", "--log-format", "xml"},
                                               {"serve", "--xml-depth", "0"}}) {
        EXPECT_EQ(EXIT_USAGE, parse(wrong).status) << wrong.back();
    }
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
