// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The service-processor classes, over the simulated device library.

#include <gmock/gmock.h>
#include <unistd.h>

#include <memory>

#include "CimText.h"
#include "ProviderTest.h"

using namespace Pegasus;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// A machine whose "lib" folder holds the simulated library and its description. The provider is
// made when the description stands.
class ServiceProcessor : public ::testing::Test {
protected:
    ServiceProcessor() {
        _machine.folder().write("etc/hostname", "node17\n");
        std::filesystem::create_directories(_machine.folder().file("run"));
        std::filesystem::create_directories(_machine.folder().file("lib"));
        std::filesystem::create_symlink(SIMULATED_DEVICE,
                                        _machine.folder().file("lib/libtav_shrdevice.so"));
        std::filesystem::current_path(_machine.folder().file("run"));
    }
    ~ServiceProcessor() override {
        _provider.reset();
        std::filesystem::current_path(_home);
    }

    void describe(const std::string& text) {
        _machine.folder().write("etc/tavqz/service-processor.txt", text);
        if (!_provider) {
            _provider = std::make_unique<QZ::AssetIDProvider>();
        }
    }
    QZ::AssetIDProvider& provider() { return *_provider; }

    std::vector<CIMInstance> enumerate(const std::string& className) {
        CIMObjectPath path{String(className.c_str())};
        path.setNameSpace(CIMNamespaceName("root/tavqz"));
        Instances handler;
        _provider->enumerateInstances(OperationContext(), path, false, false, CIMPropertyList(),
                                      handler);
        EXPECT_TRUE(handler.isWhole());
        return handler.all;
    }

    std::vector<std::string> values(const std::string& className, const std::string& property) {
        std::vector<std::string> result;
        for (const CIMInstance& instance : enumerate(className)) {
            result.push_back(valueText(instance, property));
        }
        return result;
    }

private:
    TestMachine _machine;
    std::filesystem::path _home = std::filesystem::current_path();
    std::unique_ptr<QZ::AssetIDProvider> _provider;
};

std::vector<std::string> _names(const CIMInstance& instance) {
    std::vector<std::string> result;
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        result.push_back(QZ::make_string(instance.getProperty(i).getName().getString()));
    }
    return result;
}

constexpr const char* _allClasses[] = {
    "TAVIRA_VigilComponentVPD", "TAVIRA_VigilMachineLevelVPD", "TAVIRA_VigilManagementProcessorVPD",
    "TAVIRA_VigilPostBiosVPD",  "TAVIRA_VigilPresent",         "TAVIRA_VigilWatchdog",
    "TAVIRA_VigilSystemState"};

constexpr const char* _whole =
    "type = 1\n"
    "vpd.3.1.EEPROM_FRU_NUMBER = F1\n"
    "vpd.18.1.FIRMWARE_IMAGE_VERSION = 1\n"
    "watchdog.os = 60\n";

TEST_F(ServiceProcessor, CountsTheFirmwareThatIsReadable) {
    describe(
        "type = 1\nvpd.18.1.FIRMWARE_IMAGE_VERSION = 1.4\nvpd.18.1.FIRMWARE_IMAGE_TIMESTAMP = 5 3 "
        "2004\nvpd.18.1.FIRMWARE_IMAGE_BUILD_ID = B18\nvpd.18.1.FIRMWARE_IMAGE_FILENAME = a.bin\n"
        "vpd.20.1.FIRMWARE_IMAGE_TIMESTAMP = 5 -1 2004\n");
    const char* name = "TAVIRA_VigilManagementProcessorVPD";
    EXPECT_THAT(values(name, "UniqueId"), ElementsAre("1", "2"));
    EXPECT_THAT(values(name, "serialID"), ElementsAre("11", "21"));
    EXPECT_THAT(values(name, "DeviceType"), ElementsAre("12", "25"));
    EXPECT_THAT(values(name, "Node"), ElementsAre("1", "1"));
    EXPECT_THAT(values(name, "ReleaseDate"), ElementsAre("03-05-2004", ""));
    // One record serves all, so that what a library leaves out is what it said before.
    EXPECT_THAT(values(name, "BuildId"), ElementsAre("B18", "B18"));
    const auto all = enumerate(name);
    EXPECT_THAT(
        _names(all[0]),
        ElementsAre("ProviderName", "Node", "UniqueId", "DeviceType", "serialID", "Description",
                    "VPDType", "Filename", "BuildId", "Revision", "ReleaseDate",
                    "SystemCreationClassName", "SystemName", "CreationClassName"));
    EXPECT_EQ(valueText(all[0], "ProviderName"), "Corvana|Agent|AssetIDProvider");
    EXPECT_EQ(valueText(all[0], "SystemName"), "node17");
    EXPECT_EQ(valueText(all[0], "SystemCreationClassName"), "TAVIRA_Computersystem");
    EXPECT_EQ(valueText(all[0], "CreationClassName"), name);
    EXPECT_EQ(valueText(all[0], "Filename"), "a.bin");
    EXPECT_EQ(valueText(all[0], "Revision"), "1.4");
    EXPECT_EQ(QZ::make_string(all[0].getPath().toString()),
              std::string(name) + ".DeviceType=12,Node=1,serialID=11,UniqueId=\"1\"");
}

TEST_F(ServiceProcessor, LeavesAReleaseDateOutThatIsNotKnown) {
    describe("vpd.18.1.FIRMWARE_IMAGE_TIMESTAMP = -1 5 2004\n");
    EXPECT_THAT(values("TAVIRA_VigilManagementProcessorVPD", "ReleaseDate"), ElementsAre(""));
}

TEST_F(ServiceProcessor, ListsComponentsByTypeUntilOneIsMissing) {
    describe(
        "vpd.1.1.EEPROM_FRU_NUMBER = F1\nvpd.3.1.EEPROM_FRU_NUMBER = F31\n"
        "vpd.3.2.EEPROM_FRU_NUMBER = F32\nvpd.3.4.EEPROM_FRU_NUMBER = F34\n"
        "vpd.9.1.invalid = yes\nvpd.9.2.EEPROM_FRU_NUMBER = F92\n"
        "vpd.17.1.EEPROM_MANUFACTURER_ID = M\nvpd.17.1.EEPROM_PART_NUMBER = P\n"
        "vpd.18.1.EEPROM_FRU_NUMBER = none\n");
    const char* name = "TAVIRA_VigilComponentVPD";
    EXPECT_THAT(values(name, "DeviceType"), ElementsAre("0", "16", "16", "0"));
    EXPECT_THAT(values(name, "FieldReplaceableUnitNumber"), ElementsAre("F1", "F31", "F32", "F32"));
    EXPECT_THAT(values(name, "serialID"), ElementsAre("11", "21", "31", "41"));
    EXPECT_EQ(values(name, "ManufacturerId").back(), "M");
    EXPECT_EQ(values(name, "ModelNumber").back(), "P");
}

TEST_F(ServiceProcessor, StopsAt255InstancesOfAType) {
    std::string text;
    for (int i = 1; i <= 300; ++i) {
        text += "vpd.7." + std::to_string(i) + ".EEPROM_VPDID = 1\n";
    }
    describe(text);
    EXPECT_EQ(enumerate("TAVIRA_VigilComponentVPD").size(), 255U);
}

TEST_F(ServiceProcessor, TakesMachineTextsWholeAndBiosTextsToTheirEnd) {
    describe(
        "machine.uuid = 0123456789ABCDEF0123456789ABCDEFX\nmachine.type = 8840X\n"
        "machine.model = 25\nmachine.serial = 99ABCDEF\npostbios.level = KPE\n"
        "postbios.date = 03/02/2025\npostbios.version = -7\n");
    const auto machine = enumerate("TAVIRA_VigilMachineLevelVPD");
    ASSERT_EQ(machine.size(), 1U);
    EXPECT_EQ(valueText(machine[0], "UUID"), "0123456789ABCDEF0123456789ABCDEF");
    EXPECT_EQ(valueText(machine[0], "MachineType"), "8840");
    EXPECT_EQ(valueText(machine[0], "MachineModel"), "25 ");
    EXPECT_EQ(valueText(machine[0], "SerialNumber"), "99ABCDE");
    EXPECT_EQ(valueText(machine[0], "Description"), "Machine Level VPD");
    EXPECT_EQ(valueText(machine[0], "DeviceType"), "23");
    EXPECT_EQ(valueText(machine[0], "UniqueId"), "1");
    const auto bios = enumerate("TAVIRA_VigilPostBiosVPD");
    ASSERT_EQ(bios.size(), 1U);
    EXPECT_EQ(valueText(bios[0], "Version"), "-7");
    EXPECT_EQ(valueText(bios[0], "BuildLevel"), "KPE");
    EXPECT_EQ(valueText(bios[0], "BuildDate"), "03/02/2025");
    EXPECT_EQ(valueText(bios[0], "DeviceType"), "24");
}

TEST_F(ServiceProcessor, HasAWatchdogForEachTimerThatIsSet) {
    describe("watchdog.post = 0\nwatchdog.loader = -1\nwatchdog.os = 300\n");
    const char* name = "TAVIRA_VigilWatchdog";
    EXPECT_THAT(values(name, "TimeoutInterval"), ElementsAre("0", "300"));
    EXPECT_THAT(values(name, "MonitoredEntity"), ElementsAre("8", "8"));
    EXPECT_THAT(_names(enumerate(name)[0]),
                ElementsAre("ProviderName", "DeviceID", "SystemCreationClassName", "SystemName",
                            "CreationClassName", "TimeoutInterval", "MonitoredEntity",
                            "MonitoredEntityDescription"));
}

TEST_F(ServiceProcessor, TellsTheSystemState) {
    describe(
        "type = 3\nstate.hours = 5000000000\nstate.restarts = 65535\nstate.status = 7\n"
        "state.current = 5\n");
    const auto all = enumerate("TAVIRA_VigilSystemState");
    ASSERT_EQ(all.size(), 1U);
    EXPECT_THAT(_names(all[0]),
                ElementsAre("ProviderName", "DeviceID", "SystemCreationClassName", "SystemName",
                            "CreationClassName", "Node", "PowerOnHours", "RestartCount",
                            "StatusInfo", "CurrentState", "CurrentStateStr", "VigilDetected"));
    EXPECT_EQ(valueText(all[0], "PowerOnHours"), "5000000000");
    EXPECT_EQ(valueText(all[0], "RestartCount"), "65535");
    EXPECT_EQ(valueText(all[0], "StatusInfo"), "7");
    EXPECT_EQ(valueText(all[0], "CurrentState"), "5");
    EXPECT_EQ(valueText(all[0], "VigilDetected"), "Vigil PCI Adapter");
    EXPECT_EQ(all[0].getPath().getKeyBindings().size(), 4U);
}

TEST_F(ServiceProcessor, IsAskedOnceForEachOfSeveral) {
    describe(std::string(_whole) + "count = 2\nsp1.watchdog.os = 90\n");
    EXPECT_THAT(values("TAVIRA_VigilMachineLevelVPD", "Node"), ElementsAre("1", "2"));
    EXPECT_THAT(values("TAVIRA_VigilWatchdog", "TimeoutInterval"), ElementsAre("60", "90"));
    EXPECT_THAT(values("TAVIRA_VigilPresent", "DeviceID"), ElementsAre("0", "0"));
    EXPECT_THAT(values("TAVIRA_VigilComponentVPD", "UniqueId"), ElementsAre("1", "1"));
}

TEST_F(ServiceProcessor, GetsTheFirstOfSeveralWithOnePath) {
    describe("type = 1\nwatchdog.os = 60\ncount = 2\nsp1.watchdog.os = 90\n");
    const auto all = enumerate("TAVIRA_VigilWatchdog");
    ASSERT_EQ(all.size(), 2U);
    ASSERT_TRUE(all[0].getPath() == all[1].getPath());
    Instances handler;
    provider().getInstance(OperationContext(), all[1].getPath(), false, false, CIMPropertyList(),
                           handler);
    EXPECT_TRUE(handler.isWhole());
    ASSERT_EQ(handler.all.size(), 1U);
    EXPECT_EQ(valueText(handler.all[0], "TimeoutInterval"), "60");
}

class NoServiceProcessor : public ServiceProcessor, public ::testing::WithParamInterface<int> {};

TEST_P(NoServiceProcessor, DeliversNothingForACountThatIsNotPositive) {
    describe(_whole + ("count = " + std::to_string(GetParam()) + "\n"));
    EXPECT_TRUE(provider().foundSP());
    for (const char* name : _allClasses) {
        EXPECT_THAT(enumerate(name), IsEmpty()) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Counts, NoServiceProcessor, ::testing::Values(0, -1));

TEST_F(ServiceProcessor, LeavesOutWhatItFailsToAnswer) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> failures = {
        {"vpd", {"TAVIRA_VigilComponentVPD", "TAVIRA_VigilManagementProcessorVPD"}},
        {"type", {}},
        {"state", {"TAVIRA_VigilSystemState"}},
        {"machine", {"TAVIRA_VigilMachineLevelVPD"}},
        {"watchdog", {"TAVIRA_VigilWatchdog"}},
        {"postbios", {"TAVIRA_VigilPostBiosVPD"}}};
    for (const auto& [query, missing] : failures) {
        describe(_whole + ("fail." + query + " = 5\n"));
        for (const char* name : _allClasses) {
            const bool isMissing = std::find(missing.begin(), missing.end(), name) != missing.end();
            EXPECT_EQ(enumerate(name).size(), isMissing ? 0U : 1U) << query << " " << name;
        }
    }
    EXPECT_THAT(values("TAVIRA_VigilSystemState", "PowerOnHours"), ElementsAre("0"));
}

TEST_F(ServiceProcessor, HasNoComponentsOfItsOwnWhereItSpeaksIpmi) {
    describe(_whole);
    EXPECT_EQ(enumerate("TAVIRA_VigilComponentVPD").size(), 1U);
    std::string speaksIpmi = _whole;
    speaksIpmi.replace(0, std::string("type = 1\n").size(), "type = 101\n");
    describe(speaksIpmi);
    EXPECT_THAT(enumerate("TAVIRA_VigilComponentVPD"), IsEmpty());
    EXPECT_EQ(enumerate("TAVIRA_VigilManagementProcessorVPD").size(), 1U);
}

TEST_F(ServiceProcessor, TurnsCodesIntoOtherCodes) {
    describe("");
    const std::map<int, int> deviceTypes = {{3, 16},  {6, 4},   {7, 18},  {8, 18},  {9, 17},
                                            {10, 17}, {14, 19}, {16, 23}, {18, 12}, {19, 13},
                                            {20, 25}, {21, 22}, {22, 24}};
    for (int type = -1; type < 30; ++type) {
        const auto found = deviceTypes.find(type);
        EXPECT_EQ(provider().getDeviceTypeForDeviceType(static_cast<VPD_INST_TYPE>(type)),
                  found == deviceTypes.end() ? 0 : found->second)
            << type;
    }
    const std::map<int, int> entities = {{15, 7}, {21, 11}, {10, 9}};
    for (int entity = -1; entity < 64; ++entity) {
        const auto found = entities.find(entity);
        EXPECT_EQ(provider().getInstTypeForIPMIEntityID(entity),
                  found == entities.end() ? 0 : found->second)
            << entity;
    }
}

}  // namespace
