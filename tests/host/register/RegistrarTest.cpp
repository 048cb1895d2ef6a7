// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Registrar.h"

#include <gmock/gmock.h>

#include "Error.h"
#include "ToolsOfServer.h"

using namespace QZ;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

std::string _failure(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.what();
    }
    return "";
}

constexpr const char* _question = "cimcli ni TAVIRA_Lease -n root/tavqz";

}  // namespace

TEST(Registrar, LoadsClassesAndRegistrationIntoARunningServer) {
    ToolsOfServer server;
    server.start();
    server.registrar().add();
    EXPECT_THAT(
        server.changes(),
        ElementsAre("cimmof -n root/tavqz cim-base.mof", "cimmof -uc -n root/tavqz tavqz.mof",
                    "cimmof -n root/PG_InterOp tavqz-registration.mof", _question));
    EXPECT_TRUE(server.isUp());
}

TEST(Registrar, LoadsThemIntoTheRepositoryOfAServerThatIsDown) {
    ToolsOfServer server;
    server.registrar().add();
    EXPECT_THAT(server.changes(),
                ElementsAre("cimmofl -W -n root/tavqz cim-base.mof",
                            "cimmofl -W -uc -n root/tavqz tavqz.mof",
                            "cimmofl -W -n root/PG_InterOp tavqz-registration.mof"));
    EXPECT_FALSE(server.isUp());
}

TEST(Registrar, LeavesStandardClassesThatAreThere) {
    ToolsOfServer server;
    server.start();
    server.answer("cimcli nc -di -n root/tavqz",
                  "CIM_ManagedElement\nCIM_Product\nCIM_FRU\nCIM_ManagedSystemElement\n"
                  "CIM_LogicalElement\nCIM_EnabledLogicalElement\nCIM_LogicalDevice\nCIM_Watchdog\n"
                  "CIM_Indication\nCIM_ProcessIndication\nCIM_AlertIndication\n");
    server.registrar().add();
    EXPECT_THAT(server.changes().front(), "cimmof -uc -n root/tavqz tavqz.mof");
}

TEST(Registrar, ReplacesAnEarlierRegistration) {
    ToolsOfServer server;
    server.start();
    server.answer("cimprovider -l", "OtherModule\nAssetIDProviderModule\n");
    server.registrar().add();
    EXPECT_THAT(
        server.changes(),
        ElementsAre("cimprovider -d -m AssetIDProviderModule",
                    "cimprovider -r -m AssetIDProviderModule", "cimmof -n root/tavqz cim-base.mof",
                    "cimmof -uc -n root/tavqz tavqz.mof",
                    "cimmof -n root/PG_InterOp tavqz-registration.mof", _question));
}

TEST(Registrar, StartsAServerBrieflyToReplaceAnEarlierRegistration) {
    ToolsOfServer server;
    server.answer("cimmofl -W -n root/PG_InterOp " + ToolsOfServer::schemaFolder() +
                      "/tavqz-registration.mof",
                  "Warning: the instance already exists.\n");
    server.answer("cimprovider -l", "AssetIDProviderModule\n");
    server.registrar().add();
    const Names changes = server.changes();
    ASSERT_EQ(changes.size(), 11U);
    EXPECT_EQ(changes[3], "cimserver enableHttpConnection=false enableHttpsConnection=false");
    EXPECT_EQ(changes[4], "cimprovider -d -m AssetIDProviderModule");
    EXPECT_EQ(changes[10], "cimserver -s");
    EXPECT_FALSE(server.isUp());
}

TEST(Registrar, StopsABriefServerAlsoWhereAStepFails) {
    ToolsOfServer server;
    server.answer("cimprovider -l", "AssetIDProviderModule\n");
    server.fail("cimprovider -d -m AssetIDProviderModule", 1);
    EXPECT_THAT(_failure([&server] { server.registrar().remove(); }),
                HasSubstr("Run this again when the server's clients are done"));
    EXPECT_FALSE(server.isUp());
}

TEST(Registrar, RegistersTheRaidModuleWhereItIsInstalled) {
    ToolsOfServer server;
    server.start();
    (void)server.folder().write("lib/libTavqzRaidProvider.so", "");
    server.registrar().add();
    EXPECT_THAT(server.changes(),
                testing::IsSupersetOf({"cimmof -uc -n root/tavqz tavqz-raid.mof",
                                       "cimmof -n root/PG_InterOp tavqz-raid-registration.mof"}));
}

TEST(Registrar, FindsTheInteropNamespace) {
    ToolsOfServer up;
    up.start();
    up.answer("cimcli nc -di -n root/PG_InterOp", "");
    up.answer("cimcli nc -di -n root/interop", "PG_ProviderModule\n");
    up.registrar().add();
    EXPECT_THAT(up.changes(), testing::Contains("cimmof -n root/interop tavqz-registration.mof"));

    ToolsOfServer down;
    std::filesystem::rename(down.folder().file("repository/root#PG_InterOp"),
                            down.folder().file("repository/interop"));
    down.registrar().add();
    EXPECT_THAT(down.changes(), testing::Contains("cimmofl -W -n interop tavqz-registration.mof"));
}

TEST(Registrar, AsksForAnInteropNamespaceThatIsNotFound) {
    ToolsOfServer server;
    std::filesystem::remove(server.folder().file("repository/root#PG_InterOp"));
    EXPECT_THAT(_failure([&server] { server.registrar().add(); }), HasSubstr("--namespace"));
    EXPECT_THAT(server.changes(), IsEmpty());
    RegisterRequest request;
    request.interopNamespace = "root/mine";
    server.registrar(request).add();
    EXPECT_THAT(server.changes().back(), "cimmofl -W -n root/mine tavqz-registration.mof");
}

TEST(Registrar, FollowsTheConfigurationOfTheRepository) {
    ToolsOfServer server;
    server.answer("cimconfig -l -p", "repositoryDir=store/cim\nenableBinaryRepository=true\n");
    std::filesystem::create_directories(server.folder().file("store/cim/root#interop"));
    server.registrar().add();
    EXPECT_EQ(server.changes().back(), "cimmofl -W -R " + server.folder().file("store") +
                                           " -N cim -M BIN -n root/interop tavqz-registration.mof");
}

TEST(Registrar, MissesTheModuleAmongTheProviders) {
    ToolsOfServer server;
    server.start();
    RegisterRequest request;
    request.providerFolder = server.folder().file("elsewhere");
    EXPECT_EQ(_failure([&] { server.registrar(request).add(); }),
              "The server's folder of providers, " + request.providerFolder +
                  ", has no libAssetIDProvider.so: copy it there, or name the folder with "
                  "--provider-dir");
    EXPECT_THAT(server.changes(), IsEmpty());
}

TEST(Registrar, SaysEachStepWithItsCommand) {
    ToolsOfServer server;
    server.start();
    server.registrar().add();
    EXPECT_THAT(server.said, HasSubstr("Load the classes of libAssetIDProvider.so\n    " +
                                       server.folder().file("bin/cimmof") + " -uc -n root/tavqz " +
                                       ToolsOfServer::schemaFolder() + "/tavqz.mof\n"));
}

TEST(Registrar, ChangesNothingInADryRun) {
    RegisterRequest request;
    request.isDryRun = true;
    for (const bool isUp : {false, true}) {
        ToolsOfServer server;
        if (isUp) {
            server.start();
        }
        server.registrar(request).add();
        EXPECT_THAT(server.said, HasSubstr("tavqz-registration.mof\n"));
        request.isRemoval = true;
        server.registrar(request).remove();
        EXPECT_THAT(server.changes(), IsEmpty());
        EXPECT_EQ(server.isUp(), isUp);
    }
}

TEST(Registrar, NamesTheStepThatFailsAndWhatToDo) {
    ToolsOfServer server;
    server.start();
    const std::string mof = ToolsOfServer::schemaFolder() + "/tavqz.mof";
    server.answer("cimmof -uc -n root/tavqz " + mof, "Parsing error: no rights\n");
    server.fail("cimmof -uc -n root/tavqz " + mof, 3);
    EXPECT_EQ(_failure([&server] { server.registrar().add(); }),
              "\"" + server.folder().file("bin/cimmof") + " -uc -n root/tavqz " + mof +
                  "\" ended with 3: Parsing error: no rights\nRun this as the server's "
                  "administrator. Where classes of another model are in the way, take them away "
                  "first: tavqz register --remove");
    EXPECT_THAT(server.changes(), Not(testing::Contains(_question)));
}

TEST(Registrar, TellsAModuleThatDoesNotAnswer) {
    ToolsOfServer server;
    server.start();
    server.fail(_question, 1);
    EXPECT_THAT(_failure([&server] { server.registrar().add(); }), HasSubstr("does not answer"));
}

TEST(Registrar, LeavesAServerAloneThatRunsAndDoesNotAnswer) {
    ToolsOfServer server;
    server.start();
    server.answer("cimcli ns", "not authorized");
    server.fail("cimcli ns", 4);
    EXPECT_THAT(_failure([&server] { server.registrar().add(); }),
                HasSubstr("runs and does not answer: not authorized"));
    EXPECT_THAT(server.changes(), IsEmpty());
}
