// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CredentialsFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <thread>
#include <vector>

#include "Error.h"
#include "PasswordHash.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

using Finding = PasswordSource::Finding;

class CredentialsFileTest : public testing::Test {
protected:
    void store(const std::string& user, const std::string& password,
               const std::optional<Rights>& rights = std::nullopt) {
        storeCredentials(path, user, hashPassword(password), rights);
    }

    static Finding check(CredentialsFile& file, const std::string& user,
                         const std::string& password) {
        Login login;
        login.hasPassword = true;
        login.user = user;
        login.password = password;
        return file.check(login);
    }

    CredentialsFile open() {
        return {path, [this](const std::string& line) { log.push_back(line); }};
    }

    const TemporaryFolder folder;
    const std::string path = folder.file("credentials");
    std::vector<std::string> log;
};

TEST_F(CredentialsFileTest, LetsInWhomItNames) {
    store("anna", "secret", Rights().with(Right::Write));
    CredentialsFile file = open();
    const Finding right = check(file, "anna", "secret");
    EXPECT_EQ(Finding::Right, right.state);
    EXPECT_EQ("write", right.rights.text());
    EXPECT_EQ(Finding::Wrong, check(file, "anna", "Secret").state);
    EXPECT_EQ(Finding::Wrong, check(file, "bob", "secret").state);
    EXPECT_TRUE(log.empty());
}

TEST_F(CredentialsFileTest, IsReadAgainWhenItChanges) {
    store("anna", "old");
    CredentialsFile file = open();
    const std::uint64_t before = file.revision();
    EXPECT_EQ(before, file.revision());
    store("anna", "new");
    EXPECT_NE(before, file.revision());
    EXPECT_EQ(Finding::Wrong, check(file, "anna", "old").state);
    EXPECT_EQ(Finding::Right, check(file, "anna", "new").state);
    EXPECT_TRUE(removeCredentials(path, "anna"));
    EXPECT_EQ(Finding::Wrong, check(file, "anna", "new").state);
    EXPECT_FALSE(removeCredentials(path, "anna"));
}

TEST_F(CredentialsFileTest, KeepsAUsersRightsWithANewPassword) {
    store("anna", "old", Rights::all());
    store("anna", "new");
    store("bob", "secret");
    CredentialsFile file = open();
    EXPECT_EQ("read,write,subscribe", check(file, "anna", "new").rights.text());
    EXPECT_EQ("read", check(file, "bob", "secret").rights.text());
}

TEST_F(CredentialsFileTest, IsItsOwnersAlone) {
    store("anna", "secret");
    struct stat status {};
    ASSERT_EQ(0, stat(path.c_str(), &status));
    EXPECT_EQ(0600U, status.st_mode & 07777U);
    CredentialsFile file = open();
    ASSERT_EQ(0, chmod(path.c_str(), 0640));
    EXPECT_EQ(Finding::Wrong, check(file, "anna", "secret").state);
    ASSERT_EQ(1U, log.size());
    EXPECT_EQ(path + " is others' to read: chmod 600 it; nobody of it may ask", log[0]);
    ASSERT_EQ(0, chmod(path.c_str(), 0600));
    EXPECT_EQ(Finding::Right, check(file, "anna", "secret").state);
}

TEST_F(CredentialsFileTest, NamesEachBadLineOnce) {
    store("anna", "secret");
    folder.write("credentials", "torn\n" + folder.read("credentials"));
    CredentialsFile file = open();
    EXPECT_EQ(Finding::Right, check(file, "anna", "secret").state);
    EXPECT_EQ(Finding::Right, check(file, "anna", "secret").state);
    ASSERT_EQ(1U, log.size());
    EXPECT_EQ(path + ", line 1 is skipped: expected is name:hash:rights", log[0]);
}

TEST_F(CredentialsFileTest, SaysOnceThatItIsMissing) {
    CredentialsFile file = open();
    EXPECT_EQ(Finding::Wrong, check(file, "anna", "secret").state);
    EXPECT_EQ(Finding::Wrong, check(file, "anna", "secret").state);
    ASSERT_EQ(1U, log.size());
    EXPECT_EQ("cannot read " + path + ": No such file or directory; nobody of it may ask", log[0]);
    store("anna", "secret");
    EXPECT_EQ(Finding::Right, check(file, "anna", "secret").state);
}

TEST_F(CredentialsFileTest, IsNoFolderAndNoBook) {
    EXPECT_THROW(storeCredentials(folder.path(), "anna", hashPassword("x"), {}), Error);
    folder.write("credentials", std::string(std::size_t(2) << 20, '#'));
    EXPECT_THROW(store("anna", "secret"), Error);
}

TEST_F(CredentialsFileTest, TakesUsersFromSeveralAtOnce) {
    const std::string hash = hashPassword("secret");
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(
            [&, i] { storeCredentials(path, "user" + std::to_string(i), hash, Rights::all()); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(4U, parseCredentials(folder.read("credentials")).users.size());
}

}  // namespace
}  // namespace QZ
