// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "InProcessServer.h"

#include <gmock/gmock.h>

#include <atomic>
#include <stdexcept>
#include <thread>

#include "Commands.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "TestServer.h"

using namespace QZ;
using namespace Pegasus;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

template <class Call>
std::string _refusal(Call call) {
    try {
        call();
    } catch (const CIMException& exception) {
        return statusText(exception);
    }
    return "accepted";
}

std::string _refusalOf(const char* className) {
    TestServer server;
    return _refusal([&] { server.all(className); });
}

}  // namespace

TEST(InProcessServer, AnswersWithWhatTheProviderDelivers) {
    TestServer server;
    const auto found = server.all("TEST_Several");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1].getPath().toString(), String("root/tavqz:TEST_Several.Number=2"));
    EXPECT_TRUE(server.all("TEST_Empty").empty());
    EXPECT_EQ(server.enumerateInstanceNames(TestServer::classPath("TEST_Several")).size(), 2U);
}

TEST(InProcessServer, PassesTheClassNameAsTheClientSpeltIt) {
    TestServer server;
    const auto found = server.enumerateInstances(CIMObjectPath("test_Several"));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].getClassName().getString(), String("test_Several"));
    EXPECT_EQ(found[0].getPath().getNameSpace().getString(), String("root/tavqz"));
}

TEST(InProcessServer, GetsOneInstanceOrSaysThatThereIsNone) {
    TestServer server;
    const CIMInstance found = server.getInstance(CIMObjectPath("TEST_Prints.Id=\"one\""));
    EXPECT_EQ(found.getPropertyCount(), 1U);
    EXPECT_THAT(_refusal([&] { server.getInstance(CIMObjectPath("TEST_Prints.Id=\"missing\"")); }),
                StartsWith("CIM_ERR_NOT_FOUND (6): root/tavqz:TEST_Prints"));
}

TEST(InProcessServer, RefusesWhatItDoesNotHave) {
    EXPECT_EQ(_refusalOf("TEST_Unheard"), "CIM_ERR_INVALID_CLASS (5): TEST_Unheard");
    EXPECT_THAT(_refusalOf("TEST_Nobody"), StartsWith("CIM_ERR_NOT_SUPPORTED (7)"));
    TestServer server;
    EXPECT_EQ(_refusal([&] { server.enumerateInstances(CIMObjectPath("root/a:TEST_Several")); }),
              "CIM_ERR_INVALID_NAMESPACE (3): root/a");
}

TEST(InProcessServer, PassesAProvidersRefusalOn) {
    EXPECT_EQ(_refusalOf("TEST_ThrowsCim"), "CIM_ERR_ACCESS_DENIED (2): not today");
    EXPECT_EQ(_refusalOf("TEST_ThrowsCimSilently"), "CIM_ERR_INVALID_CLASS (5)");
}

TEST(InProcessServer, SurvivesWhateverAProviderThrows) {
    EXPECT_THAT(_refusalOf("TEST_ThrowsPegasus"),
                testing::AllOf(StartsWith("CIM_ERR_FAILED (1): provider TestProvider: "),
                               HasSubstr("of another type")));
    EXPECT_EQ(_refusalOf("TEST_ThrowsStandard"),
              "CIM_ERR_FAILED (1): provider TestProvider: of the library");
    EXPECT_THAT(_refusalOf("TEST_ThrowsNumber"), StartsWith("CIM_ERR_FAILED (1)"));
    TestServer server;
    for (const char* name : {"TEST_ThrowsPegasus", "TEST_ThrowsStandard", "TEST_ThrowsNumber"}) {
        CIMObjectPath path(String(), "root/tavqz", name);
        EXPECT_NE(_refusal([&] { server.enumerateInstanceNames(path); }), "accepted");
        EXPECT_NE(_refusal([&] { server.getInstance(path); }), "accepted");
        CIMInstance instance(name);
        instance.setPath(path);
        EXPECT_NE(_refusal([&] { server.modifyInstance(instance, CIMPropertyList()); }),
                  "accepted");
    }
    EXPECT_EQ(server.all("TEST_Several").size(), 2U);
}

TEST(InProcessServer, HoldsProvidersToTheOrderOfTheirAnswer) {
    EXPECT_THAT(_refusalOf("TEST_DeliversEarly"), HasSubstr("delivered before processing()"));
    EXPECT_THAT(_refusalOf("TEST_DeliversLate"), HasSubstr("delivered after complete()"));
    EXPECT_THAT(_refusalOf("TEST_ProcessesTwice"), HasSubstr("processing() twice"));
    EXPECT_THAT(_refusalOf("TEST_CompletesTwice"), HasSubstr("complete() twice"));
    EXPECT_THAT(_refusalOf("TEST_NeverCompletes"), HasSubstr("without complete()"));
    EXPECT_THAT(_refusalOf("TEST_DeliversNothingness"), HasSubstr("holds nothing"));
    TestServer server;
    EXPECT_THAT(
        _refusal([&] {
            server.enumerateInstanceNames(TestServer::classPath("TEST_DeliversNothingness"));
        }),
        HasSubstr("path without a class"));
}

TEST(InProcessServer, SaysWhatIsWrongWithAModule) {
    EXPECT_THAT(_refusalOf("TEST_OfUnknownProvider"), HasSubstr("has no provider"));
    EXPECT_THAT(_refusalOf("TEST_OfOtherKindOfProvider"), HasSubstr("is no provider of instances"));
    EXPECT_THAT(_refusalOf("TEST_OfThrowingProvider"), HasSubstr("cannot begin"));
    EXPECT_THAT(_refusalOf("TEST_OfMissingModule"), HasSubstr("/nowhere/libMissing.so"));
}

TEST(InProcessServer, HandsAModificationOnAsItCame) {
    TemporaryFolder folder;
    const ScopedEnvironment file("TAVQZ_TEST_MODIFIED", folder.file("modified"));
    TestServer server;
    CIMInstance instance("TEST_Settings");
    instance.setPath(CIMObjectPath("root/tavqz:TEST_Settings.Id=\"one\""));
    instance.addProperty(CIMProperty("U8", CIMValue(Uint8(7))));
    Array<CIMName> names;
    names.append("U8");
    server.modifyInstance(instance, CIMPropertyList(names));
    EXPECT_EQ(folder.read("modified"), "root/tavqz:TEST_Settings.Id=\"one\"\nU8\nU8 uint8 7\n");

    CIMInstance unfinished("TEST_NeverCompletes");
    unfinished.setPath(CIMObjectPath("TEST_NeverCompletes.Id=\"one\""));
    EXPECT_THAT(_refusal([&] { server.modifyInstance(unfinished, CIMPropertyList()); }),
                HasSubstr("without complete()"));
}

TEST(InProcessServer, CreatesInstances) {
    const TemporaryFolder folder;
    const ScopedEnvironment environment("TAVQZ_TEST_MODIFIED", folder.file("created"));
    TestServer server;
    CIMInstance settings("TEST_Settings");
    settings.addProperty(CIMProperty("Id", CIMValue(String("new"))));
    EXPECT_EQ(server.createInstance(settings).toString(),
              String("root/tavqz:TEST_Settings.Id=\"one\""))
        << "as the provider says";
    EXPECT_EQ(folder.read("created"), "root/tavqz:TEST_Settings\nNULL\nId string new\n");

    CIMInstance several("TEST_Several");
    several.addProperty(CIMProperty("Name", CIMValue(String("x"))));
    several.addProperty(CIMProperty("Number", CIMValue(Uint16(9))));
    EXPECT_EQ(server.createInstance(several).toString(), String("root/tavqz:TEST_Several.Number=9"))
        << "class and keys where the provider says nothing";
    EXPECT_THAT(_refusal([&] { server.createInstance(CIMInstance("TEST_ThrowsCim")); }),
                StartsWith("CIM_ERR_ACCESS_DENIED"));
    EXPECT_THAT(_refusal([&] { server.createInstance(CIMInstance("TEST_Missing")); }),
                StartsWith("CIM_ERR_INVALID_CLASS"));
}

TEST(InProcessServer, DeletesInstances) {
    const TemporaryFolder folder;
    const ScopedEnvironment environment("TAVQZ_TEST_MODIFIED", folder.file("deleted"));
    TestServer server;
    server.deleteInstance(CIMObjectPath("TEST_Settings.Id=\"one\""));
    EXPECT_EQ(folder.read("deleted"), "root/tavqz:TEST_Settings.Id=\"one\"\nNULL\n");
    EXPECT_THAT(
        _refusal([&] { server.deleteInstance(CIMObjectPath("TEST_Settings.Id=\"missing\"")); }),
        StartsWith("CIM_ERR_NOT_FOUND"));
    EXPECT_THAT(_refusal([&] { server.deleteInstance(CIMObjectPath("TEST_Nobody.Id=\"x\"")); }),
                StartsWith("CIM_ERR_NOT_SUPPORTED"));
}

TEST(InProcessServer, AnswersProvidersThroughTheirHandle) {
    TestServer server;
    EXPECT_EQ(server.all("TEST_AsksBack").size(), 2U);
}

TEST(InProcessServer, EndsProvidersThatAskThemselves) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(_refusalOf("TEST_Recurses"),
                  "CIM_ERR_FAILED (1): providers ask one another, more than 16 deep");
    }
}

// As when the client is gone.
TEST(InProcessServer, EndsAProviderFromWhichNobodyTakesAnyMore) {
    const ScopedEnvironment endless("TEST_ENDLESS", "1");
    TestServer server;
    for (const char* name : {"TEST_Endless", "TEST_Threaded", "TEST_Several"}) {
        int taken = 0;
        EXPECT_THROW(server.enumerateInstances(InProcessServer::Caller(),
                                               TestServer::classPath(name), CIMPropertyList(),
                                               [&](const CIMInstance&) {
                                                   ++taken;
                                                   throw std::length_error("enough");
                                               }),
                     std::length_error)
            << name;
        EXPECT_EQ(taken, 1) << name;
    }
    EXPECT_EQ(server.all("TEST_Several").size(), 2U);
}

TEST(InProcessServer, AsksNoIndicationsOfAProviderThatHasNone) {
    TestServer server;
    const ProviderEntry entry{"TestModule", "TestProvider", "TestProvider"};
    EXPECT_THAT(_refusal([&] { server.askIndications(entry, [](CIMIndicationProvider&) {}); }),
                HasSubstr("TestProvider: is registered for indications and has none"));
}

TEST(InProcessServer, AnswersSeveralThreads) {
    TestServer server;
    std::vector<std::thread> threads;
    threads.reserve(8);
    std::atomic<int> right{0};
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] { right += server.all("TEST_AsksBack").size() == 2; });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(right, 8);
}
