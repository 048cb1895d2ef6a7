// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServeKeys.h"

#include <gmock/gmock.h>

#include <set>

#include "CheckPool.h"
#include "CommandLine.h"
#include "HttpServer.h"

namespace QZ {
namespace {

using testing::HasSubstr;

ServeRequest with(const std::string& name, const std::string& value) {
    return makeServeRequest({{name, {value}}});
}

std::string refusal(const ServeValues& values) {
    try {
        (void)makeServeRequest(values);
    } catch (const UsageError& error) {
        return error.what();
    }
    return {};
}

TEST(ServeKeys, HaveNamesOfTheirOwn) {
    std::set<std::string> names;
    for (const ServeKey& key : serveKeys()) {
        EXPECT_TRUE(names.insert(key.name).second) << key.name;
        EXPECT_EQ(&key, findServeKey(key.name));
        EXPECT_FALSE(key.description.empty()) << key.name;
    }
    EXPECT_EQ(nullptr, findServeKey("listen "));
    EXPECT_EQ(nullptr, findServeKey(""));
}

TEST(ServeKeys, HaveStandardValuesThatTheyTake) {
    for (const ServeKey& key : serveKeys()) {
        if (!key.standard.empty()) {
            EXPECT_EQ(key.standard, checkedServeValue(key, key.standard, "")) << key.name;
        }
    }
}

// Each limit, by another value than its standard one.
TEST(ServeKeys, SetEachLimit) {
    const auto seconds = [](const std::string& name) {
        const ServeLimits limits = with(name, "7").limits;
        std::set<std::string> changed;
        const auto note = [&](const char* member, auto left, auto right) {
            if (left != right) {
                EXPECT_EQ(std::chrono::seconds(7), left);
                changed.insert(member);
            }
        };
        const ServeLimits old;
        note("idle-time", limits.idle, old.idle);
        note("header-time", limits.header, old.header);
        note("body-time", limits.body, old.body);
        note("answer-time", limits.answer, old.answer);
        note("sending-time", limits.sending, old.sending);
        note("stop-time", limits.stop, old.stop);
        return changed;
    };
    for (const char* name :
         {"idle-time", "header-time", "body-time", "answer-time", "sending-time", "stop-time"}) {
        EXPECT_EQ(std::set<std::string>{name}, seconds(name));
    }
    EXPECT_EQ(2000U, with("header-size", "2000").limits.headerBytes);
    EXPECT_EQ(2000U, with("body-size", "2000").limits.bodyBytes);
    EXPECT_EQ(20U, with("xml-depth", "20").limits.xmlDepth);
    EXPECT_EQ(20U, with("xml-nodes", "20").limits.xmlNodes);
    EXPECT_EQ(2U, with("connections", "2").limits.connections);
    EXPECT_EQ(2U, with("connections-per-client", "2").limits.connectionsPerClient);
    EXPECT_EQ(2U, with("requests", "2").limits.requests);
    EXPECT_EQ(2U, with("waiting-requests", "2").limits.waitingRequests);
    EXPECT_EQ(2U, with("lost-threads", "2").limits.lostThreads);
    EXPECT_EQ(2U, with("enumerations", "2").limits.enumerations);
    EXPECT_EQ(2U, with("enumerated-objects", "2").limits.enumeratedObjects);
    EXPECT_EQ(2U, with("checks", "2").limits.checks);
    EXPECT_EQ(2U, with("waiting-checks", "2").limits.waitingChecks);
}

// Said once more, for people, in the keys.
TEST(ServeKeys, HaveTheLimitsThatTheServerHas) {
    const ServeLimits told;
    const HttpLimits http;
    EXPECT_EQ(http.idle, told.idle);
    EXPECT_EQ(http.header, told.header);
    EXPECT_EQ(http.body, told.body);
    EXPECT_EQ(http.answer, told.answer);
    EXPECT_EQ(http.sending, told.sending);
    EXPECT_EQ(http.headerBytes, told.headerBytes);
    EXPECT_EQ(http.bodyBytes, told.bodyBytes);
    EXPECT_EQ(http.connections, told.connections);
    EXPECT_EQ(http.connectionsPerClient, told.connectionsPerClient);
    EXPECT_EQ(http.workers, told.requests);
    EXPECT_EQ(http.waiting, told.waitingRequests);
    EXPECT_EQ(http.lostWorkers, told.lostThreads);
    const CheckPool::Limits checks;
    EXPECT_EQ(checks.threads, told.checks);
    EXPECT_EQ(checks.waiting, told.waitingChecks);
}

TEST(ServeKeys, RefuseWhatIsNoNumberInRange) {
    for (const char* wrong : {"", "0", "-1", "+1", "1.5", "1 ", "0x10", "1000001", "99999999999"}) {
        EXPECT_THROW((void)with("connections", wrong), UsageError) << wrong;
    }
    EXPECT_EQ("a number from 0 to 65535 is expected", refusal({{"port", {"65536"}}}));
    EXPECT_EQ(0U, with("port", "0").port);
    EXPECT_EQ(65535U, with("port", "65535").port);
}

TEST(ServeKeys, TakeTimesInSecondsAndPartsOfThem) {
    const auto time = [](const char* value) { return with("body-time", value).limits.body; };
    EXPECT_EQ(std::chrono::milliseconds(1), time("0.001"));
    EXPECT_EQ(std::chrono::milliseconds(1500), time("1.5"));
    EXPECT_EQ(std::chrono::milliseconds(2050), time("2.05"));
    EXPECT_EQ(std::chrono::hours(24), time("86400"));
    for (const char* wrong : {"", "0", "0.000", ".5", "1.", "1.5555", "1.5 ", "-1", "1,5", "1.-5",
                              "86401", "86400.001", "1.5.5"}) {
        EXPECT_THROW((void)time(wrong), UsageError) << wrong;
    }
    EXPECT_EQ("seconds from 0.001 to 86400 are expected", refusal({{"body-time", {"soon"}}}));
}

TEST(ServeKeys, TakeSwitchesAndWords) {
    EXPECT_TRUE(with("allow-plain", "yes").allowsPlain);
    EXPECT_FALSE(with("allow-plain", "no").allowsPlain);
    EXPECT_EQ("yes or no is expected", refusal({{"pam", {"true"}}}));
    EXPECT_EQ("json", with("log-format", "json").logFormat);
    EXPECT_EQ("text or json is expected", refusal({{"log-format", {"xml"}}}));
    EXPECT_EQ("a value is expected", refusal({{"readers", {""}}}));
}

TEST(ServeKeys, TakeSeveralListenersInTheirOrder) {
    const ServeRequest request =
        makeServeRequest({{"listen", {"::1", "https://0.0.0.0"}}, {"socket", {"/a", "/b"}}});
    EXPECT_EQ((std::vector<std::string>{"::1", "https://0.0.0.0"}), request.listen);
    EXPECT_EQ((std::vector<std::string>{"/a", "/b"}), request.sockets);
}

TEST(ServeKeys, FindFilesFromWhereTheyAreWritten) {
    EXPECT_EQ("/etc/tavqz/users",
              checkedServeValue(*findServeKey("credentials"), "users", "/etc/tavqz"));
    EXPECT_EQ("/users", checkedServeValue(*findServeKey("credentials"), "/users", "/etc/tavqz"));
    EXPECT_EQ("users", checkedServeValue(*findServeKey("readers"), "users", "/etc/tavqz"));
}

TEST(ServeKeys, ExcludeOrNeedEachOther) {
    const std::string several = "only one says who may ask";
    EXPECT_THAT(refusal({{"credentials", {"/a"}}, {"pam", {"yes"}}}), HasSubstr(several));
    EXPECT_THAT(refusal({{"credentials", {"/a"}}, {"user", {"anna"}}}), HasSubstr(several));
    EXPECT_THAT(refusal({{"pam", {"yes"}}, {"password-file", {"/a"}}}), HasSubstr(several));
    EXPECT_EQ("", refusal({{"credentials", {"/a"}}, {"pam", {"no"}}}));
    EXPECT_EQ("pam-folder: pam is needed, too", refusal({{"pam-folder", {"/a"}}}));
    EXPECT_EQ("certificate and key: each needs the other", refusal({{"key", {"/a"}}}));
}

}  // namespace
}  // namespace QZ
