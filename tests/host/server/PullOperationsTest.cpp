// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "ManualClock.h"
#include "TestCaller.h"

namespace QZ {
namespace {

using namespace Pegasus;
using Caller = TestCaller;

class PullOperations : public testing::Test {
protected:
    CallResult open(const std::string& more) {
        return server.call("OpenEnumerateInstances", Caller::className("TEST_Many") + more);
    }
    CallResult pull(const std::string& context, const char* count,
                    const char* method = "PullInstancesWithPath") {
        return server.call(method, Caller::value("EnumerationContext", context) +
                                       Caller::value("MaxObjectCount", count));
    }

    ManualClock clock;
    TestCaller server;
};

TEST_F(PullOperations, FetchEverythingPieceByPiece) {
    CallResult piece = open(Caller::value("MaxObjectCount", "4000"));
    ASSERT_EQ(piece.error, 0);
    std::size_t count = piece.values.size();
    EXPECT_EQ(piece.values.at(0).name, "VALUE.INSTANCEWITHPATH");
    EXPECT_EQ(piece.values.at(0).children.at(0).name, "INSTANCEPATH");
    while (piece.parameter("EndOfSequence") == "FALSE") {
        piece = pull(piece.parameter("EnumerationContext"), "4000");
        ASSERT_EQ(piece.error, 0);
        count += piece.values.size();
    }
    EXPECT_EQ(count, 10000U);
    EXPECT_EQ(piece.parameter("EnumerationContext"), "");
}

TEST_F(PullOperations, OpenWithoutObjectsUnlessSomeAreAskedFor) {
    const CallResult opened = open("");
    EXPECT_TRUE(opened.returnsSomething);
    EXPECT_TRUE(opened.values.empty());
    EXPECT_EQ(opened.parameter("EndOfSequence"), "FALSE");
}

TEST_F(PullOperations, FetchPathsAsPaths) {
    const CallResult opened =
        server.call("OpenEnumerateInstancePaths",
                    Caller::className("TEST_Several") + Caller::value("MaxObjectCount", "1"));
    ASSERT_EQ(opened.values.size(), 1U);
    EXPECT_EQ(opened.values[0].name, "INSTANCEPATH");
    const std::string context = opened.parameter("EnumerationContext");
    EXPECT_EQ(pull(context, "1").error, 21);  // of the other kind
    const CallResult rest = pull(context, "10", "PullInstancePaths");
    EXPECT_EQ(rest.values.size(), 1U);
    EXPECT_EQ(rest.parameter("EndOfSequence"), "TRUE");
    EXPECT_EQ(pull(context, "1", "PullInstancePaths").error, 21);
}

TEST_F(PullOperations, SendWhatTheListNames) {
    const CallResult opened =
        open(Caller::value("MaxObjectCount", "1") + Caller::properties({"Number"}));
    EXPECT_EQ(Caller::propertyNames(opened.values.at(0)), "Number");
}

TEST_F(PullOperations, EndWhenTheyAreClosed) {
    const std::string context = open("").parameter("EnumerationContext");
    const std::string parameter = Caller::value("EnumerationContext", context);
    const CallResult closed = server.call("CloseEnumeration", parameter);
    EXPECT_EQ(closed.error, 0);
    EXPECT_FALSE(closed.returnsSomething);
    EXPECT_EQ(server.call("CloseEnumeration", parameter).error, 21);
    EXPECT_EQ(pull(context, "1").error, 21);
}

TEST_F(PullOperations, EndWhenNobodyAskedForAWhile) {
    const std::string context =
        open(Caller::value("OperationTimeout", "10")).parameter("EnumerationContext");
    clock.sleepMilliseconds(9'000);
    EXPECT_EQ(pull(context, "1").error, 0);
    clock.sleepMilliseconds(9'000);
    EXPECT_EQ(pull(context, "1").error, 0);
    clock.sleepMilliseconds(10'000);
    EXPECT_EQ(pull(context, "1").error, 21);
}

TEST_F(PullOperations, BelongToWhoOpenedThem) {
    const std::string context = open("").parameter("EnumerationContext");
    HttpRequest request =
        Caller::request("PullInstancesWithPath", Caller::value("EnumerationContext", context) +
                                                     Caller::value("MaxObjectCount", "1"));
    request.caller.name = "somebody else";
    MemoryReply reply;
    server.handler.handle(request, reply);
    EXPECT_EQ(Caller::result("PullInstancesWithPath", reply.answer.body).error, 21);
    EXPECT_EQ(server
                  .call("PullInstancesWithPath",
                        Caller::value("EnumerationContext", context) +
                            Caller::value("MaxObjectCount", "1"),
                        "root/interop")
                  .error,
              21);
    EXPECT_EQ(pull(context, "1").error, 0);
}

TEST_F(PullOperations, TakeTheNamespaceInAnyCase) {
    const std::string context = open("").parameter("EnumerationContext");
    const std::string parameters =
        Caller::value("EnumerationContext", context) + Caller::value("MaxObjectCount", "1");
    EXPECT_EQ(server.call("PullInstancesWithPath", parameters, "ROOT/Tavqz").error, 0);
}

TEST_F(PullOperations, RefuseWhatTheServerDoesNotHave) {
    EXPECT_EQ(open(Caller::value("OperationTimeout", "0")).error, 22);
    EXPECT_EQ(open(Caller::value("OperationTimeout", "100000")).error, 22);
    EXPECT_EQ(open(Caller::value("FilterQueryLanguage", "DMTF:FQL") +
                   Caller::value("FilterQuery", "Number = 1"))
                  .error,
              25);
    EXPECT_EQ(open(Caller::value("ContinueOnError", "TRUE")).error, 26);
    EXPECT_EQ(open(Caller::value("ContinueOnError", "FALSE")).error, 0);
}

TEST_F(PullOperations, AreBoundedInTheirNumber) {
    CallResult last;
    for (int i = 0; i < 65; ++i) {
        last = server.call("OpenEnumerateInstances", Caller::className("TEST_Several"));
    }
    EXPECT_EQ(last.error, 27);
    clock.sleepMilliseconds(31'000);
    EXPECT_EQ(open("").error, 0);
}

TEST(PullBudget, IsOneForAllEnumerations) {
    const ManualClock clock;
    RequestHandler::Limits limits;
    limits.pulls.allObjects = 15'000;
    TestCaller server(TestCaller::OfTests, limits);
    const auto open = [&server] {
        return server.call("OpenEnumerateInstances", Caller::className("TEST_Many"));
    };
    const CallResult first = open();
    EXPECT_EQ(first.error, 0);
    EXPECT_EQ(open().error, 27);
    // What is fetched is kept no more.
    EXPECT_EQ(server
                  .call("PullInstancesWithPath",
                        Caller::value("EnumerationContext", first.parameter("EnumerationContext")) +
                            Caller::value("MaxObjectCount", "5000"))
                  .error,
              0);
    EXPECT_EQ(open().error, 0);
    EXPECT_EQ(open().error, 27);
}

// Whoever asks, for whatever: nobody need open another one for that.
TEST(PullBudget, GetsBackWhatNobodyFetchedInTime) {
    ManualClock clock;
    PullContexts contexts({});
    {
        PullContexts::Kept objects(contexts);
        objects.add(CIMObjectPath("TEST_Several.Number=1"));
        EXPECT_EQ(contexts.keptObjects(), 1U);
        EXPECT_NE(contexts.open({"tester", "root/tavqz"}, std::move(objects), 0, 10).context, "");
    }
    contexts.dropExpired();
    EXPECT_EQ(contexts.keptObjects(), 1U);
    clock.sleepMilliseconds(10'000);
    contexts.dropExpired();
    EXPECT_EQ(contexts.keptObjects(), 0U);
}

}  // namespace
}  // namespace QZ
