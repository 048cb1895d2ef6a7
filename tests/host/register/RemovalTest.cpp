// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "ToolsOfServer.h"

using namespace QZ;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr const char* _classes = "cimcli nc -di -n root/tavqz";

// A server that runs and has what is registered, a class or two for each kind.
void _registerIn(const ToolsOfServer& server) {
    server.start();
    server.answer("cimcli ns", "root/tavqz\nroot\n");
    server.answer("cimprovider -l", "AssetIDProviderModule\n");
    server.answer(_classes, "CIM_ManagedElement\nTAVIRA_Lease\nCIM_Product\nTAVIRA_FRU\n");
    server.answer("cimcli eq -n root/tavqz",
                  "Qualifier Key : boolean = false, Scope(property),\n    Flavor(ToSubclass);\n");
}

}  // namespace

TEST(Removal, TakesEverythingAwaySubclassesFirst) {
    ToolsOfServer server;
    _registerIn(server);
    server.registrar().remove();
    EXPECT_THAT(
        server.changes(),
        ElementsAre("cimprovider -d -m AssetIDProviderModule",
                    "cimprovider -r -m AssetIDProviderModule", "cimcli dc TAVIRA_FRU -n root/tavqz",
                    "cimcli dc TAVIRA_Lease -n root/tavqz", "cimcli dc CIM_Product -n root/tavqz",
                    "cimcli dc CIM_ManagedElement -n root/tavqz", "cimcli dq Key -n root/tavqz",
                    "cimcli di __Namespace.Name=\"tavqz\" -n root"));
}

TEST(Removal, LeavesTheNamespaceToOthersThatUseIt) {
    ToolsOfServer server;
    _registerIn(server);
    server.answer(_classes, "CIM_ManagedElement\nTAVIRA_Lease\nCIM_Zone\n");
    server.registrar().remove();
    EXPECT_THAT(server.changes(), ElementsAre("cimprovider -d -m AssetIDProviderModule",
                                              "cimprovider -r -m AssetIDProviderModule",
                                              "cimcli dc TAVIRA_Lease -n root/tavqz"));
    EXPECT_THAT(server.said, HasSubstr("root/tavqz stays, with classes that are not ours, such as "
                                       "CIM_Zone\n"));
}

TEST(Removal, HasNothingToDoWhereNothingIsRegistered) {
    ToolsOfServer server;
    server.start();
    server.answer("cimcli ns", "root\n");
    server.registrar().remove();
    EXPECT_THAT(server.changes(), IsEmpty());
}

TEST(Removal, StartsAServerThatIsDownAndStopsIt) {
    ToolsOfServer server;
    _registerIn(server);
    std::filesystem::remove(server.folder().file("bin/up"));
    server.fail("cimcli ns", 54);
    server.registrar().remove();
    const Names changes = server.changes();
    EXPECT_EQ(changes.front(), "cimserver enableHttpConnection=false enableHttpsConnection=false");
    EXPECT_EQ(changes.back(), "cimserver -s");
    EXPECT_THAT(changes, Contains("cimcli dc TAVIRA_Lease -n root/tavqz"));
    EXPECT_FALSE(server.isUp());
}

TEST(Removal, NamesWhatThereCanBeInADryRunOfAServerThatIsDown) {
    ToolsOfServer server;
    RegisterRequest request;
    request.isDryRun = true;
    server.registrar(request).remove();
    for (const char* class_ :
         {"TAVIRA_WarrantyExpirationEvent", "TAVIRA_PhysicalDiskDrive", "CIM_AlertIndication"}) {
        EXPECT_THAT(server.said, HasSubstr(std::string("dc ") + class_ + " -n root/tavqz\n"));
    }
    EXPECT_THAT(server.said, Not(HasSubstr("stays")));
}
