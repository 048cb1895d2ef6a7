// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RequestLog.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "ManualClock.h"

namespace QZ {
namespace {

HttpLogRecord record() {
    HttpLogRecord record;
    record.peer = "192.0.2.7";
    record.user = "anna";
    record.method = "POST";
    record.target = "/cimom";
    record.text = "GetInstance TAVIRA_Lease";
    record.status = 200;
    record.bytes = 1234;
    record.time = std::chrono::microseconds(1500);
    return record;
}

TEST(RequestLog, IsALineForPeople) {
    EXPECT_EQ("192.0.2.7 anna POST \"GetInstance TAVIRA_Lease\" 200 1234 bytes 1.5 ms",
              requestText(record()));
    EXPECT_EQ("a - - \"\" 400 0 bytes 0.0 ms", requestText({"a", "", "", "", "", 400}));
}

TEST(RequestLog, IsAnObjectForPrograms) {
    const ManualClock clock;
    EXPECT_EQ(
        "{\"time\":\"2027-01-15T08:00:00Z\",\"peer\":\"192.0.2.7\",\"user\":\"anna\","
        "\"method\":\"POST\",\"operation\":\"GetInstance TAVIRA_Lease\",\"status\":200,"
        "\"bytes\":1234,\"milliseconds\":1.5}",
        requestJson(record()));
    EXPECT_EQ("{\"time\":\"2027-01-15T08:00:00Z\",\"message\":\"a\"}", messageJson("a"));
}

TEST(RequestLog, QuotesOfNamesWhatFits) {
    HttpLogRecord hostile = record();
    hostile.user = std::string(10'000, 'u');
    hostile.method = std::string(10'000, 'm');
    EXPECT_GT(600U, requestText(hostile).size());
    EXPECT_GT(700U, requestJson(hostile).size());
}

TEST(RequestLog, SaysWhatLostThreadsCost) {
    const std::string lost =
        " with providers that have not answered in time; 64 "
        "(lost-threads) are replaced";
    EXPECT_EQ("1 thread is" + lost, lossText({1, 64, 8}));
    EXPECT_EQ("65 threads are" + lost + ": 7 requests are answered at once", lossText({65, 64, 7}));
    EXPECT_EQ("72 threads are" + lost +
                  ": no request is answered until one comes back or the server starts again",
              lossText({72, 64, 0}));
}

TEST(RequestLog, StaysOneLineOfJsonWhateverIsSent) {
    HttpLogRecord hostile = record();
    hostile.user = "a\"\n\xff\x1b[2J\xc3\xa4";
    const std::string line = requestJson(hostile);
    for (const char c : line) {
        EXPECT_TRUE(c >= ' ' && c <= '~');
    }
    EXPECT_EQ("a\"\n\xef\xbf\xbd\x1b[2J\xc3\xa4", nlohmann::json::parse(line).at("user"));
}

}  // namespace
}  // namespace QZ
