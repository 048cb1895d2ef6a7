// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// What is said of each question to a service processor, and in which order. This program's own
// addLogItem stands in the place of the silent one.

#include <gmock/gmock.h>

#include "ServiceProcessorMachine.h"
#include "tavqz/AccessHelpers.h"

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

namespace {

std::vector<std::string>& _lines() {
    static std::vector<std::string> lines;
    return lines;
}

}  // namespace

void addLogItem(char* tag, char* text) {
    _lines().push_back(std::string(tag) + ": " + text);
}

namespace {

// All that is said while a class is asked for, but for how texts are looked up.
std::vector<std::string> _said(const ServiceProcessorMachine& machine, const char* className) {
    _lines().clear();
    machine.enumerate(className);
    std::vector<std::string> result;
    for (const std::string& line : _lines()) {
        if (line.find("AssetIDProvider.get") != 0) {
            result.push_back(line);
        }
    }
    return result;
}

constexpr const char* _exit = "AssetIDProvider: enumerateInstances() exiting";
constexpr const char* _done = "AssetIDProvider: done with vpd instances";
constexpr const char* _looping = "AssetIDProvider: looping thru vector instances";

TEST(ServiceProcessorLog, TellsWhatWasAskedForAndThatThereIsNone) {
    const ServiceProcessorMachine machine("speed = 1\n");
    const std::pair<const char*, const char*> classes[] = {
        {"TAVIRA_VigilComponentVPD", "user asked for component vpd instances"},
        {"TAVIRA_VigilMachineLevelVPD", "user asked for chassis (machine level) vpd instances"},
        {"TAVIRA_VigilManagementProcessorVPD", "user asked for management processor vpd instances"},
        {"TAVIRA_VigilPostBiosVPD", "user asked for post/bios vpd instances"},
        {"TAVIRA_VigilPresent", "user asked for vigil present instances"},
        {"TAVIRA_VigilWatchdog", "user asked for watchdog instances"},
        {"TAVIRA_VigilSystemState", "user asked for system state instances"}};
    for (const auto& [name, asked] : classes) {
        EXPECT_THAT(_said(machine, name),
                    ElementsAre(std::string("AssetIDProvider: ") + asked,
                                "AssetIDProvider: NO SP FOUND!!", _done, _exit));
    }
}

TEST(ServiceProcessorLog, FramesEachBuilderOfEachProcessor) {
    const ServiceProcessorMachine machine("count = 2\n");
    const std::pair<const char*, const char*> builders[] = {
        {"TAVIRA_VigilMachineLevelVPD", "getVigilMachineLevelVPDInstances"},
        {"TAVIRA_VigilPostBiosVPD", "getVigilPostBiosVPDInstances"},
        {"TAVIRA_VigilPresent", "getVigilPresentInstances"},
        {"TAVIRA_VigilWatchdog", "getVigilWatchdogInstances"}};
    for (const auto& [name, builder] : builders) {
        std::vector<std::string> said = _said(machine, name);
        said.erase(said.begin());
        const std::string start = std::string("VigilProvider: ******** ") + builder;
        const std::string entered = start + "() entered ***********";
        const std::string exiting = start + "() exiting ***********";
        EXPECT_THAT(said, ElementsAre(entered, exiting, _looping, entered, exiting, _looping, _done,
                                      _exit));
    }
}

TEST(ServiceProcessorLog, TellsBothStatusesOfTheSystemState) {
    const ServiceProcessorMachine machine("fail.state = -3\nfail.type = 7\n");
    EXPECT_THAT(_said(machine, "TAVIRA_VigilSystemState"),
                ElementsAre("AssetIDProvider: user asked for system state instances",
                            "VigilProvider: ******** getVigilSystemStateInstances() entered "
                            "***********",
                            "VigilProvider: rc1=[-3]  rc2=[7]",
                            "VigilProvider: ******** getVigilSystemStateInstances() exiting "
                            "***********",
                            _looping, _done, _exit));
}

TEST(ServiceProcessorLog, TellsOfEachFirmwareThatIsRead) {
    const ServiceProcessorMachine machine(
        "vpd.18.1.FB_POSID = 1\nvpd.20.1.FB_POSID = 1\nvpd.20.1.invalid = yes\n");
    EXPECT_THAT(
        _said(machine, "TAVIRA_VigilManagementProcessorVPD"),
        ElementsAre("AssetIDProvider: user asked for management processor vpd instances",
                    "VigilProvider: ******** getVigilManagementProcessorVPDInstances() entered "
                    "***********",
                    "VigilProvider: At beginning of for loop",
                    "VigilProvider: got vpd object for type 18/instance 1:  rc=0",
                    "VigilProvider: At beginning of for loop",
                    "VigilProvider: got vpd object for type 19/instance 1:  rc=2",
                    "VigilProvider: At beginning of for loop",
                    "VigilProvider: got vpd object for type 20/instance 1:  rc=0",
                    "VigilProvider: At beginning of for loop",
                    "VigilProvider: got vpd object for type 21/instance 1:  rc=2",
                    "VigilProvider: returning vector",
                    "VigilProvider: ******** getVigilManagementProcessorVPDInstances() exiting "
                    "***********",
                    _looping, _done, _exit));
}

TEST(ServiceProcessorLog, TellsOfEachComponentThatIsRead) {
    const ServiceProcessorMachine machine("vpd.3.1.FB_POSID = 1\n");
    std::vector<std::string> expected = {
        "AssetIDProvider: user asked for component vpd instances",
        "VigilProvider: ******** getVigilComponentVPDInstances() entered ***********"};
    for (int type = 1; type <= 17; ++type) {
        const std::string read = "VigilProvider: got vpd object for type " + std::to_string(type);
        expected.insert(expected.end(), {"VigilProvider: At beginning of for loop",
                                         "VigilProvider: At beginning of while loop"});
        if (type == 3) {
            expected.insert(expected.end(), {read + "/instance 1:  rc=0",
                                             "VigilProvider: vpd object should be valid",
                                             "VigilProvider: At end of while loop",
                                             "VigilProvider: At beginning of while loop"});
        }
        expected.insert(expected.end(),
                        {read + (type == 3 ? "/instance 2" : "/instance 1") + ":  rc=2",
                         "VigilProvider: getVPDData failed!", "VigilProvider: At end of for loop"});
    }
    expected.insert(expected.end(),
                    {"VigilProvider: returning vector",
                     "VigilProvider: ******** getVigilComponentVPDInstances() exiting ***********",
                     _looping, _done, _exit});
    EXPECT_THAT(_said(machine, "TAVIRA_VigilComponentVPD"), ElementsAreArray(expected));
}

// Under the other builder's name.
TEST(ServiceProcessorLog, TellsOfAnIpmiInventoryAsOfOtherComponents) {
    const ServiceProcessorMachine machine("type = 101\n");
    EXPECT_THAT(
        _said(machine, "TAVIRA_VigilComponentVPD"),
        ElementsAre("AssetIDProvider: user asked for component vpd instances",
                    "VigilProvider: ******** getVigilComponentVPDInstances() entered ***********",
                    "VigilProvider: ******** getVigilComponentVPDInstances() exiting ***********",
                    "AssetIDProvider: looping thru IPMI instances", _done, _exit));
}

TEST(ServiceProcessorLog, TellsOfEveryLookup) {
    const ServiceProcessorMachine machine("type = 8\n");
    _lines().clear();
    machine.provider->getStringForSPType(6, false);
    machine.provider->getStringForDeviceType(VPD_INST_CPU);
    machine.provider->getStringForSysState(1);
    machine.provider->getDeviceTypeForDeviceType(VPD_INST_CPU);
    machine.provider->getInstTypeForIPMIEntityID(10);
    EXPECT_THAT(
        _lines(),
        ElementsAre("AssetIDProvider.getStringForSPType(): Entered",
                    "AssetIDProvider.getStringForDeviceType(): Entered",
                    "AssetIDProvider.getStringForSysState(): Entered",
                    "AssetIDProvider.getDeviceTypeForDeviceType(): Entered",
                    "AssetIDProvider.getDeviceTypeForDeviceType(): device type for vpd inst "
                    "type [14]=[19]"));
}

}  // namespace
