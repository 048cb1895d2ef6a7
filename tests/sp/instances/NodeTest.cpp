// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "ProviderTest.h"
#include "ServiceProcessorMachine.h"
#include "ServiceProcessorText.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::string> _values(const ServiceProcessorMachine& machine,
                                 const std::string& className, const std::string& property) {
    std::vector<std::string> result;
    for (const Pegasus::CIMInstance& instance : machine.enumerate(className)) {
        result.push_back(valueText(instance, property));
    }
    return result;
}

TEST(ServiceProcessors, AreNumberedFromOne) {
    const ServiceProcessorMachine machine(wholeServiceProcessor());
    for (const char* name : serviceProcessorClasses) {
        const auto instances = machine.enumerate(name);
        EXPECT_FALSE(instances.empty()) << name;
        for (const Pegasus::CIMInstance& instance : instances) {
            const std::string node = valueText(instance, "Node");
            EXPECT_TRUE(node == "1" || node == "absent") << name << " " << node;
        }
    }
    for (const char* name : {"TAVIRA_VigilPresent", "TAVIRA_VigilWatchdog"}) {
        EXPECT_EQ(valueText(machine.enumerate(name).at(0), "Node"), "absent") << name;
    }
}

TEST(ServiceProcessors, CountTheirInstancesApart) {
    const ServiceProcessorMachine machine(
        "count = 2\nvpd.1.1.FB_POSID = 1\nvpd.3.1.FB_POSID = 1\nsp1.vpd.3.2.FB_POSID = 1\n"
        "machine.type = ABCD\nsp1.machine.type = EFGH\n");
    EXPECT_THAT(_values(machine, "TAVIRA_VigilComponentVPD", "Node"),
                ElementsAre("1", "1", "2", "2", "2"));
    EXPECT_THAT(_values(machine, "TAVIRA_VigilComponentVPD", "serialID"),
                ElementsAre("11", "21", "11", "21", "31"));
    EXPECT_THAT(_values(machine, "TAVIRA_VigilMachineLevelVPD", "MachineType"),
                ElementsAre("ABCD", "EFGH"));
}

TEST(ServiceProcessors, FailApart) {
    const ServiceProcessorMachine machine("count = 3\nsp1.fail.state = 5\nstate.hours = 7\n");
    EXPECT_THAT(_values(machine, "TAVIRA_VigilSystemState", "Node"), ElementsAre("1", "3"));
    EXPECT_THAT(_values(machine, "TAVIRA_VigilMachineLevelVPD", "Node"),
                ElementsAre("1", "2", "3"));
}

// A text ends with its room, however the library filled it.
TEST(ServiceProcessors, SendEveryCharacterOfAMachineText) {
    const ServiceProcessorMachine machine(
        "machine.uuid = \\x00BCDEF0123456789ABCDEF0123456789X\nmachine.type = AB\\x00DE\n"
        "machine.model = A\nmachine.serial = \\s\\s99A00X\n");
    const char* name = "TAVIRA_VigilMachineLevelVPD";
    const auto machineLevel = machine.enumerate(name);
    ASSERT_EQ(machineLevel.size(), 1U);
    // No text of CIM-XML can hold a NUL.
    EXPECT_EQ(valueText(machineLevel[0], "MachineType"),
              "AB\xEF\xBF\xBD"
              "D");
    EXPECT_EQ(valueText(machineLevel[0], "UUID").substr(0, 5),
              "\xEF\xBF\xBD"
              "BC");
    EXPECT_EQ(valueText(machineLevel[0], "MachineModel"), "A  ");
    EXPECT_EQ(valueText(machineLevel[0], "SerialNumber"), "  99A00");
}

TEST(ServiceProcessors, HaveNoInstancesWhereNoneAnswered) {
    const ServiceProcessorMachine machine("type = none\n");
    EXPECT_FALSE(machine.provider->foundSP());
    for (const char* name : serviceProcessorClasses) {
        EXPECT_THAT(machine.enumerate(name), IsEmpty()) << name;
    }
}

}  // namespace
