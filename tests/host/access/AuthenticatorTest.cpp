// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Authenticator.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <future>

#include "ManualClock.h"

namespace QZ {
namespace {

using std::chrono::seconds;

// Knows one password, and may be held up. What it is asked is counted.
class TestPasswords : public PasswordSource {
public:
    Finding check(const Login& login) override {
        ++asked;
        if (login.user == "slow") {
            released.wait();
        }
        if (login.user == "unknowable") {
            return {Finding::Unknown, {}};
        }
        return login.password == "right" ? Finding{Finding::Right, Rights().with(Right::Read)}
                                         : Finding{};
    }
    std::optional<Rights> rightsOf(const std::string& user) override {
        ++asked;
        return user == "anna" ? std::optional<Rights>(Rights().with(Right::Write)) : std::nullopt;
    }
    std::uint64_t revision() override { return changes; }

    std::atomic<int> asked{0};
    std::atomic<std::uint64_t> changes{0};
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
};

Login login(const std::string& user, const std::string& password,
            const std::string& peer = "192.0.2.7") {
    Login login;
    login.peer = peer;
    login.isEncrypted = true;
    login.hasPassword = true;
    login.user = user;
    login.password = password;
    return login;
}

class AuthenticatorTest : public testing::Test {
protected:
    std::future<Verdict> start(const Login& given) {
        const auto promise = std::make_shared<std::promise<Verdict>>();
        std::future<Verdict> result = promise->get_future();
        const auto verdict = authenticator.authenticate(
            given, [promise](const Verdict& later) { promise->set_value(later); });
        if (verdict) {
            promise->set_value(*verdict);
        }
        return result;
    }
    Verdict ask(const Login& given) { return start(given).get(); }
    Verdict::Kind kindOf(const Login& given) { return ask(given).kind; }

    ManualClock clock;
    std::shared_ptr<TestPasswords> passwords = std::make_shared<TestPasswords>();
    Authenticator authenticator{passwords, {}, {}, [](const std::string&) {}};
};

TEST_F(AuthenticatorTest, LetsInWithWhatTheSourceGrants) {
    const Verdict verdict = ask(login("anna", "right"));
    EXPECT_EQ(Verdict::Accepted, verdict.kind);
    EXPECT_EQ("anna", verdict.caller.name);
    EXPECT_EQ("read", verdict.caller.rights.text());
    EXPECT_EQ(Caller::Password, verdict.caller.origin);
}

TEST_F(AuthenticatorTest, RefusesWrongPasswordsAndNone) {
    EXPECT_EQ(Verdict::Refused, kindOf(login("anna", "wrong")));
    Login none;
    none.peer = "192.0.2.7";
    none.isEncrypted = true;
    EXPECT_EQ(Verdict::Refused, kindOf(none));
    EXPECT_EQ(1, passwords->asked);
}

TEST_F(AuthenticatorTest, LogsOfANameWhatFits) {
    std::promise<std::string> logged;
    Authenticator logging(passwords, {}, {},
                          [&logged](const std::string& line) { logged.set_value(line); });
    EXPECT_FALSE(
        logging.authenticate(login(std::string(10'000, 'a'), "wrong"), [](const Verdict&) {}));
    EXPECT_EQ("wrong password for " + std::string(197, 'a') + "... from 192.0.2.7, number 1",
              logged.get_future().get());
}

TEST_F(AuthenticatorTest, RemembersForAShortTimeWhoWasLetIn) {
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(Verdict::Accepted, kindOf(login("anna", "right")));
    }
    EXPECT_EQ(1, passwords->asked);
    clock.sleepMilliseconds(60'000);
    EXPECT_EQ(Verdict::Accepted, kindOf(login("anna", "right")));
    EXPECT_EQ(2, passwords->asked);
}

TEST_F(AuthenticatorTest, RemembersNobodyElse) {
    (void)ask(login("anna", "right"));
    EXPECT_EQ(Verdict::Refused, kindOf(login("anna", "wrong")));
    EXPECT_EQ(Verdict::Accepted, kindOf(login("anna", "right", "192.0.2.8")));
    EXPECT_EQ(3, passwords->asked);
}

TEST_F(AuthenticatorTest, ForgetsWhoWasLetInWhenThePasswordsChange) {
    (void)ask(login("anna", "right"));
    passwords->changes = 1;
    (void)ask(login("anna", "right"));
    EXPECT_EQ(2, passwords->asked);
}

TEST_F(AuthenticatorTest, SlowsWhoeverGuesses) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Verdict::Refused, kindOf(login("anna", "guess" + std::to_string(i))));
    }
    const Verdict slowed = ask(login("anna", "right"));
    EXPECT_EQ(Verdict::TooOften, slowed.kind);
    EXPECT_EQ(seconds(1), slowed.retryAfter);
    EXPECT_EQ(3, passwords->asked);
    EXPECT_EQ(Verdict::Accepted, kindOf(login("anna", "right", "192.0.2.8")));
    clock.sleepMilliseconds(1000);
    EXPECT_EQ(Verdict::Accepted, kindOf(login("anna", "right")));
}

TEST_F(AuthenticatorTest, SlowsWhoeverGuessedBeforeItWasMade) {
    const auto wrong = std::make_shared<WrongPasswords>();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(0, wrong->begin("192.0.2.7", "anna").count());
    }
    Authenticator made(
        passwords, {}, {}, [](const std::string&) {}, wrong);
    const auto verdict = made.authenticate(login("anna", "right"), [](const Verdict&) {});
    ASSERT_TRUE(verdict);
    EXPECT_EQ(Verdict::TooOften, verdict->kind);
}

TEST_F(AuthenticatorTest, DoesNotSlowWhoIsInAlready) {
    (void)ask(login("anna", "right"));
    for (int i = 0; i < 3; ++i) {
        (void)ask(login("anna", "guess" + std::to_string(i)));
    }
    EXPECT_EQ(Verdict::Accepted, kindOf(login("anna", "right")));
}

TEST_F(AuthenticatorTest, AsksOnceForManyThatComeAtOnce) {
    std::vector<std::future<Verdict>> all(20);
    for (auto& each : all) {
        each = start(login("slow", "right"));
    }
    passwords->release.set_value();
    for (auto& each : all) {
        EXPECT_EQ(Verdict::Accepted, each.get().kind);
    }
    EXPECT_EQ(1, passwords->asked);
}

TEST_F(AuthenticatorTest, IsBusyForOneAddressAndNotForOthers) {
    std::vector<std::future<Verdict>> all;
    for (int i = 0; i < 100; ++i) {
        all.push_back(start(login("slow", "guess" + std::to_string(i), "192.0.2.66")));
        clock.sleepMilliseconds(60'000);
    }
    const Verdict busy = all.back().get();
    EXPECT_EQ(Verdict::Busy, busy.kind);
    EXPECT_LT(seconds(0), busy.retryAfter);
    EXPECT_EQ(Verdict::Accepted, kindOf(login("anna", "right")));
    passwords->release.set_value();
    EXPECT_EQ(Verdict::Refused, all.front().get().kind);
}

TEST_F(AuthenticatorTest, IsBusyForThoseThatItLeavesWaiting) {
    Authenticator::Limits limits;
    limits.pool.threads = 1;
    auto leaving = std::make_unique<Authenticator>(passwords, RightGroups{}, limits,
                                                   [](const std::string&) {});
    EXPECT_FALSE(leaving->authenticate(login("slow", "right"), [](const Verdict&) {}));
    std::promise<Verdict::Kind> kind;
    EXPECT_FALSE(
        leaving->authenticate(login("anna", "right", "192.0.2.8"),
                              [&kind](const Verdict& verdict) { kind.set_value(verdict.kind); }));
    const auto gone = std::async(std::launch::async, [&leaving] { leaving.reset(); });
    EXPECT_EQ(Verdict::Busy, kind.get_future().get());
    passwords->release.set_value();
}

TEST_F(AuthenticatorTest, CountsNoPasswordThatNobodyCouldCheck) {
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(Verdict::Busy, kindOf(login("unknowable", "right")));
    }
    EXPECT_EQ(5, passwords->asked);
}

TEST_F(AuthenticatorTest, AnswersOtherMachinesInTheClearWhereItIsToldTo) {
    Login plain = login("anna", "right");
    plain.isEncrypted = false;
    EXPECT_EQ(Verdict::TooPlain, kindOf(plain));
    EXPECT_EQ(0, passwords->asked) << "it is not looked at";
    for (const char* own : {"127.0.0.1", "127.9.8.7", "::1"}) {
        plain.peer = own;
        EXPECT_EQ(Verdict::Accepted, kindOf(plain)) << own;
    }
    for (const char* other : {"128.0.0.1", "::2", "127.0.0.1.example", ""}) {
        plain.peer = other;
        EXPECT_EQ(Verdict::TooPlain, kindOf(plain)) << other;
    }
    Authenticator::Limits limits;
    limits.allowsPlain = true;
    Authenticator open(passwords, {}, limits, [](const std::string&) {});
    std::promise<Verdict::Kind> kind;
    EXPECT_FALSE(open.authenticate(
        plain, [&kind](const Verdict& verdict) { kind.set_value(verdict.kind); }));
    EXPECT_EQ(Verdict::Accepted, kind.get_future().get());
}

TEST_F(AuthenticatorTest, KnowsItsUsersByTheirCertificates) {
    Login shown = login("", "");
    shown.hasPassword = false;
    shown.certificateName = "anna";
    const Verdict verdict = ask(shown);
    EXPECT_EQ(Verdict::Accepted, verdict.kind);
    EXPECT_EQ("anna", verdict.caller.name);
    EXPECT_EQ(Caller::Certificate, verdict.caller.origin);
    EXPECT_EQ("write", verdict.caller.rights.text());
    shown.certificateName = "nobody";
    EXPECT_EQ(Verdict::Refused, kindOf(shown)) << "not taken for who came before";
}

TEST_F(AuthenticatorTest, BelievesAPasswordBeforeACertificate) {
    Login both = login("bob", "right");
    both.certificateName = "anna";
    EXPECT_EQ("bob", ask(both).caller.name);
    both.password = "wrong";
    EXPECT_EQ(Verdict::Refused, kindOf(both));
}

TEST_F(AuthenticatorTest, KnowsLocalUsersByTheirNumber) {
    Login local;
    local.peer = "local";
    local.localUser = geteuid();
    const Verdict verdict = ask(local);
    EXPECT_EQ(Verdict::Accepted, verdict.kind);
    EXPECT_EQ(Caller::LocalUser, verdict.caller.origin);
    EXPECT_TRUE(verdict.caller.rights == Rights::all());
    EXPECT_EQ(0, passwords->asked);
}

TEST_F(AuthenticatorTest, GivesALocalStrangerAName) {
    Login local;
    local.peer = "local";
    local.localUser = 4'000'000'000U;
    const Verdict verdict = ask(local);
    EXPECT_EQ(Verdict::Accepted, verdict.kind);
    EXPECT_EQ("uid 4000000000", verdict.caller.name);
    EXPECT_TRUE(verdict.caller.rights == Rights::none());
}

TEST_F(AuthenticatorTest, BelievesALocalClientsPassword) {
    Login local = login("anna", "right", "local");
    local.localUser = 4'000'000'000U;
    EXPECT_EQ("anna", ask(local).caller.name);
}

}  // namespace
}  // namespace QZ
