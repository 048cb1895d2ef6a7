// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CredentialsText.h"

#include <gtest/gtest.h>

#include "Error.h"
#include "PasswordHash.h"

namespace QZ {
namespace {

const std::string& someHash() {
    static const std::string hash = hashPassword("secret");
    return hash;
}

std::string line(const std::string& user, const std::string& rights = "read") {
    return user + ":" + someHash() + ":" + rights + "\n";
}

TEST(CredentialsText, HoldsAUserALine) {
    const CredentialsText text =
        parseCredentials("# who may\n\n" + line("anna", "write,read") + line("b o b"));
    ASSERT_EQ(2U, text.users.size());
    EXPECT_EQ("anna", text.users[0].user);
    EXPECT_EQ(someHash(), text.users[0].hash);
    EXPECT_EQ("read,write", text.users[0].rights.text());
    EXPECT_EQ("b o b", text.users[1].user);
    EXPECT_TRUE(text.badLines.empty());
}

TEST(CredentialsText, SkipsBadLinesAndSaysWhy) {
    const CredentialsText text = parseCredentials(
        "anna\n" + line("") + "bob:secret:read\n" + line("carl", "reed") + line("dora") +
        line("dora", "write") + "eve:*:read\n" + "fred:" + someHash() + ":read:more\n");
    ASSERT_EQ(1U, text.users.size());
    EXPECT_EQ("read", text.users[0].rights.text());
    std::vector<std::size_t> numbers;
    for (const auto& bad : text.badLines) {
        numbers.push_back(bad.number);
        EXPECT_EQ(std::string::npos, bad.reason.find("secret")) << bad.reason;
    }
    EXPECT_EQ((std::vector<std::size_t>{1, 2, 3, 4, 6, 7, 8}), numbers);
}

TEST(CredentialsText, KeepsWhatAPersonWrote) {
    const std::string before = "# mine\n" + line("anna") + "torn line\n" + line("anna", "write");
    EXPECT_EQ("# mine\n" + line("anna", "subscribe") + "torn line\n",
              withUser(before, {"anna", someHash(), Rights().with(Right::Subscribe)}));
    EXPECT_EQ("# mine\ntorn line\n", withoutUser(before, "anna"));
    EXPECT_EQ(before, withoutUser(before, "bob"));
}

TEST(CredentialsText, GetsANewUserALineOfHisOwn) {
    EXPECT_EQ("# no end\n" + line("anna"),
              withUser("# no end", {"anna", someHash(), Rights().with(Right::Read)}));
}

TEST(CredentialsText, HasNoNamesThatAreNoField) {
    EXPECT_TRUE(isUserName("änna smith"));
    for (const std::string& name :
         {std::string(), std::string("a:b"), std::string("#a"), std::string("a\nb"),
          std::string("a\0b", 3), std::string(257, 'a')}) {
        EXPECT_FALSE(isUserName(name)) << name;
    }
}

TEST(PasswordHash, MatchesItsPasswordAlone) {
    EXPECT_TRUE(matchesHash("secret", someHash()));
    EXPECT_FALSE(matchesHash("Secret", someHash()));
    EXPECT_FALSE(matchesHash("", someHash()));
    EXPECT_FALSE(matchesHash(std::string("secret\0more", 11), someHash()));
    EXPECT_FALSE(matchesHash(std::string(600, 'x'), someHash()));
    EXPECT_FALSE(matchesHash("secret", ""));
    EXPECT_FALSE(matchesHash("*0", "*0"));
}

TEST(PasswordHash, IsAnotherEachTime) {
    EXPECT_NE(someHash(), hashPassword("secret"));
    EXPECT_EQ("$y$", someHash().substr(0, 3));
}

TEST(PasswordHash, IsNotMadeOfWhatNobodyCouldSend) {
    EXPECT_THROW((void)hashPassword(""), Error);
    EXPECT_THROW((void)hashPassword(std::string("a\0b", 3)), Error);
    EXPECT_THROW((void)hashPassword(std::string(512, 'x')), Error);
}

}  // namespace
}  // namespace QZ
