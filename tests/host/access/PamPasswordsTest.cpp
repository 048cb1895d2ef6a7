// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PamPasswords.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <vector>

#include "GroupRights.h"
#include "TemporaryFolder.h"

// PAM itself, with a service file of the test's own: pam_matrix knows passwords from a file, so
// that neither root nor an account is needed.

namespace QZ {
namespace {

using Finding = PasswordSource::Finding;

std::string userName() {
    return getpwuid(geteuid())->pw_name;
}

// A group that the test's user is in, by another way than the code under test.
std::string groupName();

class PamPasswordsTest : public testing::Test {
protected:
    PamPasswordsTest() {
        folder.write("users", userName() + ":secret:tavqz\nghost:boo:tavqz\n" +
                                  "clerk:secret:another service\n");
        serve("");
    }

    // With these lines for accounts.
    void serve(const std::string& account) const {
        const std::string matrix = std::string(PAM_MATRIX) + " passdb=" + folder.file("users");
        folder.write("tavqz",
                     "auth required " + matrix + "\naccount required " + matrix + "\n" + account);
    }

    Finding check(const std::string& user, const std::string& password,
                  const RightGroups& groups = {}) {
        PamPasswords passwords({"tavqz", folder.path()}, groups,
                               [this](const std::string& line) { log.push_back(line); });
        Login login;
        login.peer = "192.0.2.7";
        login.hasPassword = true;
        login.user = user;
        login.password = password;
        return passwords.check(login);
    }

    const TemporaryFolder folder;
    std::vector<std::string> log;
};

TEST_F(PamPasswordsTest, LetsInWhomPamKnows) {
    EXPECT_EQ(Finding::Right, check(userName(), "secret").state);
    EXPECT_EQ(Finding::Wrong, check(userName(), "Secret").state);
    EXPECT_EQ(Finding::Wrong, check("nobody-there", "secret").state);
    EXPECT_EQ(Finding::Wrong, check("", "secret").state);
}

TEST_F(PamPasswordsTest, TakesNoZeroByteForAnEnd) {
    EXPECT_EQ(Finding::Wrong, check(userName(), std::string("secret\0x", 8)).state);
    EXPECT_EQ(Finding::Wrong, check(userName() + std::string("\0x", 2), "secret").state);
}

TEST_F(PamPasswordsTest, AsksWhetherTheAccountIsGood) {
    EXPECT_EQ(Finding::Wrong, check("clerk", "secret").state) << "not of this service";
    serve("account required pam_debug.so acct=acct_expired\n");
    EXPECT_EQ(Finding::Wrong, check(userName(), "secret").state);
    EXPECT_EQ("PAM's service tavqz refuses " + userName() + ": User account has expired",
              log.back());
    serve("account required pam_debug.so acct=new_authtok_reqd\n");
    EXPECT_EQ(Finding::Wrong, check(userName(), "secret").state);
}

TEST_F(PamPasswordsTest, BlamesNobodyForWhatPamCannotFindOut) {
    serve("account required pam_no_such_module.so\n");
    EXPECT_EQ(Finding::Unknown, check(userName(), "secret").state);
    ASSERT_FALSE(log.empty());
    EXPECT_NE(std::string::npos, log.back().find("PAM's service tavqz cannot check"));
}

TEST_F(PamPasswordsTest, GivesRightsByGroups) {
    RightGroups groups;
    EXPECT_EQ("", check(userName(), "secret", groups).rights.text());
    groups.readers = groupName();
    EXPECT_EQ("read", check(userName(), "secret", groups).rights.text());
    groups.subscribers = groupName();
    EXPECT_EQ("read,subscribe", check(userName(), "secret", groups).rights.text());
}

TEST_F(PamPasswordsTest, GivesNoRightsToWhoHasNoGroups) {
    const Finding ghost = check("ghost", "boo", {"", "", ""});
    EXPECT_EQ(Finding::Right, ghost.state);
    EXPECT_TRUE(ghost.rights == Rights::none());
}

std::string groupName() {
    FILE* const pipe = popen("id -gn", "r");  // NOLINT(cert-env33-c): our own words
    char text[256] = "";
    if (pipe) {
        EXPECT_TRUE(fgets(text, sizeof text, pipe));
        pclose(pipe);
    }
    const std::string name(text);
    return name.substr(0, name.find('\n'));
}

}  // namespace
}  // namespace QZ
