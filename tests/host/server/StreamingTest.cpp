// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "HttpServer.h"
#include "RawClient.h"
#include "TestCaller.h"

namespace QZ {
namespace {

// Whether memory is kept for a while after it is freed, to tell who uses it.
#if defined(__has_feature)
constexpr bool HAS_SHADOW_MEMORY = __has_feature(address_sanitizer);
#elif defined(__SANITIZE_ADDRESS__)
constexpr bool HAS_SHADOW_MEMORY = true;
#else
constexpr bool HAS_SHADOW_MEMORY = false;
#endif

// Of this process, in KiB.
long _residentMemory() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.compare(0, 6, "VmRSS:") == 0) {
            return std::stol(line.substr(6));
        }
    }
    return 0;
}

TEST(Streaming, SendsTenThousandInstancesWithoutKeepingThem) {
    TestCaller server;
    HttpServer http({}, [&server](const HttpRequest& request, HttpReply& reply) {
        server.handler.handle(request, reply);
    });
    // What is loaded and allocated once is not the enumeration's.
    EXPECT_EQ(server.call("EnumerateInstances", TestCaller::className("TEST_Several")).error, 0);
    const long before = _residentMemory();
    const RawClient client(http.port());
    client.send(TestCaller::bytesOf(
        TestCaller::request("EnumerateInstances", TestCaller::className("TEST_Many"))));

    const std::string instance = "<VALUE.NAMEDINSTANCE>";
    std::size_t count = 0;
    std::size_t total = 0;
    long most = 0;
    std::string tail;
    char part[65536];
    for (ssize_t got; (got = client.receive(part, sizeof part)) > 0;) {
        tail.append(part, std::size_t(got));
        total += std::size_t(got);
        for (std::size_t at; (at = tail.find(instance)) != std::string::npos; ++count) {
            tail.erase(0, at + instance.size());
        }
        tail.erase(0, tail.size() - std::min(tail.size(), instance.size() - 1));
        most = std::max(most, _residentMemory());
    }
    // A chunk's frame may cut a tag in two.
    EXPECT_NEAR(double(count), 10'000, 100);
    EXPECT_GT(total, std::size_t(2) << 20);
    if (!HAS_SHADOW_MEMORY) {
        EXPECT_LT(most - before, 10 << 10);
    }
}

}  // namespace
}  // namespace QZ
