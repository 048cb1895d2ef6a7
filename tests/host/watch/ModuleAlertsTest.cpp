// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ModuleAlerts.h"

#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

#include "CimText.h"
#include "Error.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

using namespace QZ;
using namespace Pegasus;

namespace {

std::unique_ptr<InProcessServer> _makeServer(const std::string& schema) {
    return std::make_unique<InProcessServer>(Schema::load(schema),
                                             [](const std::string&) { return TEST_ALERTS; });
}

class ModuleAlertsTest : public ::testing::Test {
protected:
    void start(ModuleAlerts& alerts) {
        alerts.start([this](const CIMInstance& alert) {
            taken += make_string(alert.getClassName().getString()) + " " +
                     make_string(alert.getProperty(0).getValue().toString()) + "\n";
        });
    }
    std::string calls() const { return folder.read("calls"); }

    TemporaryFolder folder;
    ScopedEnvironment file{"TAVQZ_TEST_CALLS", folder.file("calls")};
    std::string taken;
};

const char* const _created =
    "First create root/tavqz:TEST_First SELECT * FROM CIM_AlertIndication\n"
    "Second create root/tavqz:TEST_Second root/tavqz:TEST_SecondToo "
    "SELECT * FROM CIM_AlertIndication\n";

}  // namespace

TEST_F(ModuleAlertsTest, SubscribeAsAServerDoes) {
    const auto server = _makeServer(TEST_SCHEMA);
    ModuleAlerts alerts(*server);
    start(alerts);
    EXPECT_EQ(calls(), std::string(_created) + "First enable\nSecond enable\n");
    EXPECT_EQ(taken, "TEST_First enabled\nTEST_Second enabled\n");
    taken.clear();
    alerts.stop();
    EXPECT_EQ(calls(), std::string(_created) +
                           "First enable\nSecond enable\nFirst disable\nSecond disable\n"
                           "First delete root/tavqz:TEST_First same\n"
                           "Second delete root/tavqz:TEST_Second root/tavqz:TEST_SecondToo same\n");
    EXPECT_EQ(taken, "TEST_First disabled\nTEST_Second disabled\n") << "what comes last counts";
}

TEST_F(ModuleAlertsTest, EndOnceAndWithTheObject) {
    const auto server = _makeServer(TEST_SCHEMA);
    {
        ModuleAlerts alerts(*server);
        start(alerts);
    }
    const std::string before = calls();
    EXPECT_NE(before.find("Second delete"), std::string::npos);
    ModuleAlerts alerts(*server);
    alerts.stop();
    EXPECT_EQ(calls(), before);
}

TEST_F(ModuleAlertsTest, UndoWhatARefusalLeavesHalfDone) {
    const auto server = _makeServer(TEST_SCHEMA);
    {
        const ScopedEnvironment refused("TAVQZ_TEST_REFUSED", "Second enable");
        ModuleAlerts alerts(*server);
        EXPECT_THROW(start(alerts), CIMException);
    }
    EXPECT_EQ(calls(), std::string(_created) +
                           "First enable\nSecond enable\nFirst disable\n"
                           "First delete root/tavqz:TEST_First same\n"
                           "Second delete root/tavqz:TEST_Second root/tavqz:TEST_SecondToo same\n");
}

TEST_F(ModuleAlertsTest, EndAllTheSameWhereOneProviderRefuses) {
    const auto server = _makeServer(TEST_SCHEMA);
    const ScopedEnvironment refused("TAVQZ_TEST_REFUSED", "First disable");
    ModuleAlerts alerts(*server);
    start(alerts);
    alerts.stop();
    EXPECT_NE(calls().find("Second disable"), std::string::npos);
    EXPECT_NE(calls().find("First delete"), std::string::npos);
}

TEST_F(ModuleAlertsTest, NeedSomebodyWhoRaisesThem) {
    folder.write("schema/none.mof", "class TEST_Any { string Name; };");
    const auto server = _makeServer(folder.file("schema"));
    ModuleAlerts alerts(*server);
    EXPECT_THROW(start(alerts), Error);
}
