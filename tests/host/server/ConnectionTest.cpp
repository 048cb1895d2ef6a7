// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "HttpServer.h"
#include "RawClient.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "TestCaller.h"

// What a client gets over a connection from the whole server.

namespace QZ {
namespace {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Connection : public testing::Test {
protected:
    explicit Connection(milliseconds limit = HttpLimits().answer) : options(limitedTo(limit)) {}

    std::string answer(const HttpRequest& request) const {
        const RawClient client(http.port());
        client.send(TestCaller::bytesOf(request));
        return client.receive();
    }
    static HttpRequest enumerate(const std::string& className) {
        return TestCaller::request("EnumerateInstances", TestCaller::className(className));
    }
    static HttpServerOptions limitedTo(milliseconds answer) {
        HttpServerOptions limited;
        limited.limits.answer = answer;
        return limited;
    }

    const HttpServerOptions options;
    TestCaller server;
    HttpServer http{options, [this](const HttpRequest& request, HttpReply& reply) {
                        server.handler.handle(request, reply);
                    }};
};

TEST_F(Connection, AnswersExtendedRequestsUnderTheirPrefix) {
    HttpRequest request = enumerate("TEST_Several");
    request.method = "M-POST";
    request.headers = {{"Content-Type", "application/xml"},
                       {"Man", "http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=73"},
                       {"73-CIMOperation", "MethodCall"},
                       {"73-CIMMethod", "EnumerateInstances"},
                       {"73-CIMObject", "root/tavqz"}};
    EXPECT_THAT(answer(request),
                AllOf(StartsWith("HTTP/1.1 200 OK\r\n"), HasSubstr("\r\nExt: \r\n"),
                      HasSubstr("\r\n73-CIMOperation: MethodResponse\r\n"),
                      HasSubstr("\r\nMan: http://www.dmtf.org/cim/mapping/http/v1.0; ns=73\r\n"),
                      HasSubstr("<IMETHODRESPONSE NAME=\"EnumerateInstances\">")));
}

TEST_F(Connection, TellsInTrailersWhatFailsAfterMuchWasSent) {
    HttpRequest request = enumerate("TEST_ManyThenThrows");
    request.headers.emplace_back("TE", "trailers");
    EXPECT_THAT(answer(request),
                AllOf(HasSubstr("\r\nTransfer-Encoding: chunked\r\n"),
                      HasSubstr("\r\nTrailer: CIMStatusCode, CIMStatusCodeDescription\r\n"),
                      EndsWith("\r\n0\r\nCIMStatusCode: 2\r\n"
                               "CIMStatusCodeDescription: enough\r\n\r\n")));
}

TEST_F(Connection, NamesTheTrailersOfExtendedRequestsUnderTheirPrefix) {
    HttpRequest request = enumerate("TEST_ManyThenThrows");
    request.method = "M-POST";
    request.headers = {{"Content-Type", "application/xml"},
                       {"Man", "http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=73"},
                       {"73-CIMOperation", "MethodCall"},
                       {"73-CIMMethod", "EnumerateInstances"},
                       {"73-CIMObject", "root/tavqz"},
                       {"TE", "trailers"}};
    EXPECT_THAT(answer(request),
                AllOf(HasSubstr("\r\nTrailer: 73-CIMStatusCode, 73-CIMStatusCodeDescription\r\n"),
                      EndsWith("\r\n0\r\n73-CIMStatusCode: 2\r\n"
                               "73-CIMStatusCodeDescription: enough\r\n\r\n")));
}

TEST_F(Connection, EndsWithoutAnEndWhereTheClientTakesNoTrailers) {
    const RawClient client(http.port());
    client.send(TestCaller::bytesOf(enumerate("TEST_ManyThenThrows")));
    EXPECT_TRUE(client.isReset());
}

TEST_F(Connection, TellsAClientThatTheServerStops) {
    const TemporaryFolder folder;
    const ScopedEnvironment asked("TAVQZ_TEST_MODIFIED", folder.file("asked"));
    const RawClient client(http.port());
    client.send(TestCaller::bytesOf(enumerate("TEST_Waits")));
    while (folder.read("asked").empty()) {
        std::this_thread::yield();
    }
    EXPECT_FALSE(http.stop(milliseconds(0)));
    EXPECT_THAT(client.receive(), HasSubstr("<ERROR CODE=\"28\" DESCRIPTION=\"the server stops"));
    EXPECT_EQ(server.call("EnumerateInstances", TestCaller::className("TEST_Releases")).error, 0);
    while (http.lostWorkers() != 0) {
        std::this_thread::yield();
    }
}

class ImpatientConnection : public Connection {
protected:
    ImpatientConnection() : Connection(milliseconds(50)) {}
};

TEST_F(ImpatientConnection, TellsThatAProviderDoesNotAnswer) {
    const std::string late = answer(enumerate("TEST_Waits"));
    EXPECT_THAT(
        late,
        AllOf(StartsWith("HTTP/1.1 200 OK\r\n"), HasSubstr("\r\nCIMOperation: MethodResponse\r\n"),
              HasSubstr("<ERROR CODE=\"1\" DESCRIPTION=\"the provider did not answer"),
              Not(HasSubstr("IRETURNVALUE"))));
    EXPECT_EQ(http.lostWorkers(), 1U);
    EXPECT_FALSE(http.stop(milliseconds(0)));
    // It comes back after all, and costs nobody anything.
    EXPECT_EQ(server.call("EnumerateInstances", TestCaller::className("TEST_Releases")).error, 0);
    while (http.lostWorkers() != 0) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(http.stop(milliseconds(0)));
}

}  // namespace
}  // namespace QZ
