// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The provider over the library for management controllers, on a machine with recorded replies.

#include <gtest/gtest.h>

#include "AssetIDProvider.h"
#include "BuildPaths.h"
#include "FirmwareParts.h"
#include "ProviderTest.h"
#include "ScopedWorkingFolder.h"

using namespace Pegasus;

namespace {

constexpr const char* _replies =
    "06 01 = 00 20 01 02 14 02 0F 57 01 00 34 12 00 1A FF 07  # Get Device ID\n"
    "06 25 = 00 44 01 00 00 58 02 58 02  # Get Watchdog Timer\n"
    "06 37 = 00 00 11 22 33 44 55 66 77 88 99 AA BB CC DD EE 0F  # Get System GUID\n"
    "00 01 = 00 01 00 00  # Get Chassis Status\n"
    "00 0F = 00 3C 34 12 00 00  # Get POH Counter\n"
    "0A 40 = 00 51 01 00 00 10 01 00 00 00 01 00 00 00 02  # Get SEL Info\n"
    "0A 43 00 00 00 00 00 FF = 00 FF FF 01 00 02 00 00 00 00 20 00 04 1D 01 6F 01 FF FF\n";

class BmcDevice : public testing::Test {
protected:
    ~BmcDevice() override {
        if (_provider != nullptr) {
            _provider->terminate();
        }
    }

    void record(const std::string& replies) const {
        _machine.folder().write("dev/ipmi0.replies", replies);
    }
    void addFirmware() const {
        SmBiosBuilder firmware(SmBiosBuilder::EntryPoint::Version3, 3, 5);
        addBios(firmware, "EX2U-2.14", "03/02/2025");
        addSystem(firmware, {"Example Corp", "Server -[884025X]-", "04", "99A0001"},
                  std::string(16, '\xFF'));
        firmware.addEnd().writeBelow(_machine.folder().path());
    }
    // One that is made at the first question.
    QZ::AssetIDProvider& provider() {
        if (_provider == nullptr) {
            _provider = new QZ::AssetIDProvider;
        }
        return *_provider;
    }
    std::vector<CIMInstance> enumerate(const std::string& className) {
        CIMObjectPath path{String(className.c_str())};
        path.setNameSpace(CIMNamespaceName("root/tavqz"));
        Instances handler;
        provider().enumerateInstances(OperationContext(), path, false, false, CIMPropertyList(),
                                      handler);
        return handler.all;
    }
    // The property of the one instance there is.
    std::string value(const char* className, const char* property) {
        const auto all = enumerate(className);
        return all.size() == 1 ? valueText(all[0], property)
                               : std::to_string(all.size()) + " instances";
    }

private:
    TestMachine _machine;
    ScopedWorkingFolder _work{TAVQZ_BINARY_DIR "/bin"};
    QZ::AssetIDProvider* _provider = nullptr;
};

TEST_F(BmcDevice, TellsWhatTheControllerAndTheFirmwareSay) {
    record(_replies);
    addFirmware();
    EXPECT_TRUE(provider().foundSP());
    const char* firmware = "TAVIRA_VigilManagementProcessorVPD";
    EXPECT_EQ(value(firmware, "Revision"), "2.14");
    EXPECT_EQ(value(firmware, "BuildId"), "001AFF07");
    EXPECT_EQ(value(firmware, "ReleaseDate"), "");
    EXPECT_EQ(value(firmware, "DeviceType"), "12");
    const char* machine = "TAVIRA_VigilMachineLevelVPD";
    EXPECT_EQ(value(machine, "UUID"), "33221100554477668899AABBCCDDEE0F");
    EXPECT_EQ(value(machine, "MachineType"), "8840");
    EXPECT_EQ(value(machine, "MachineModel"), "25X");
    EXPECT_EQ(value(machine, "SerialNumber"), "99A0001");
    const char* bios = "TAVIRA_VigilPostBiosVPD";
    EXPECT_EQ(value(bios, "BuildLevel"), "EX2U-2.14");
    EXPECT_EQ(value(bios, "BuildDate"), "03/02/2025");
    const char* state = "TAVIRA_VigilSystemState";
    EXPECT_EQ(value(state, "PowerOnHours"), "4660");
    EXPECT_EQ(value(state, "RestartCount"), "1");
    EXPECT_EQ(value(state, "StatusInfo"), "3");
    EXPECT_EQ(value(state, "CurrentState"), "5");
    EXPECT_EQ(value("TAVIRA_VigilWatchdog", "TimeoutInterval"), "60");
    EXPECT_EQ(value("TAVIRA_VigilWatchdog", "DeviceID"), "Watchdog2");
    EXPECT_EQ(value("TAVIRA_VigilPresent", "MonitoredEntity"), "8");
}

TEST_F(BmcDevice, LeavesOutWhatTheControllerDoesNotTell) {
    record("06 01 = 00 20 01 02 14 02 0F 57 01 00 34 12\n");
    EXPECT_TRUE(provider().foundSP());
    EXPECT_EQ(value("TAVIRA_VigilManagementProcessorVPD", "BuildId"), "");
    for (const char* name :
         {"TAVIRA_VigilMachineLevelVPD", "TAVIRA_VigilPostBiosVPD", "TAVIRA_VigilSystemState",
          "TAVIRA_VigilWatchdog", "TAVIRA_VigilComponentVPD"}) {
        EXPECT_EQ(enumerate(name).size(), 0U) << name;
    }
}

TEST_F(BmcDevice, IsNoneOnAMachineWithoutAController) {
    addFirmware();
    EXPECT_FALSE(provider().foundSP());
    EXPECT_EQ(enumerate("TAVIRA_VigilPostBiosVPD").size(), 0U);
}

}  // namespace
