// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <thread>

#include "ScopedEnvironment.h"
#include "ScopedWorkingFolder.h"
#include "TemporaryFolder.h"
#include "TestCaller.h"
#include "XmlText.h"

namespace QZ {
namespace {

using Caller = TestCaller;

// The module that is shipped, on each of the machines.
class Machines : public testing::TestWithParam<const char*> {
protected:
    TemporaryFolder _folder;
    ScopedEnvironment _root{"TAVQZ_HOST_ROOT",
                            std::string(TAVQZ_SOURCE_DIR "/tests/machines/") + GetParam()};
    ScopedEnvironment _data{"TAVQZ_DATA_DIR", _folder.path()};
    // From where the module finds the library that reads a machine's service processors.
    ScopedWorkingFolder _work{TAVQZ_BINARY_DIR "/lib/simulated/lib"};

public:
    TestCaller server{TestCaller::Shipped};
};

const char* const CLASSES[] = {
    "TAVIRA_ComputerSystemDetails",
    "TAVIRA_Lease",
    "TAVIRA_Warranty",
    "TAVIRA_SerialNumberInformation",
    "TAVIRA_VigilPresent",
    "TAVIRA_VigilComponentVPD",
    "TAVIRA_VigilMachineLevelVPD",
    "TAVIRA_VigilPostBiosVPD",
    "TAVIRA_VigilWatchdog",
    "TAVIRA_VigilManagementProcessorVPD",
    "TAVIRA_VigilSystemState",
    "TAVIRA_FRU",
    "CIM_ManagedElement",
};

// INSTANCENAME as it was received.
std::string _again(const XmlElement& name) {
    std::string xml = "<INSTANCENAME CLASSNAME=\"" + *name.attribute("CLASSNAME") + "\">";
    for (const XmlElement& key : name.children) {
        const XmlElement& value = key.children.at(0);
        std::string text;
        appendXmlText(text, value.text);
        xml += "<KEYBINDING NAME=\"" + *key.attribute("NAME") + "\"><KEYVALUE VALUETYPE=\"" +
               *value.attribute("VALUETYPE") + "\">" + text + "</KEYVALUE></KEYBINDING>";
    }
    return xml + "</INSTANCENAME>";
}

TEST_P(Machines, AnswerEveryReadingOperation) {
    for (const char* const name : CLASSES) {
        const std::string parameter = Caller::className(name);
        const CallResult instances = server.call("EnumerateInstances", parameter);
        const CallResult names = server.call("EnumerateInstanceNames", parameter);
        ASSERT_EQ(instances.error, 0) << name << ": " << instances.description;
        ASSERT_EQ(names.values.size(), instances.values.size()) << name;
        const CallResult pulled = server.call("OpenEnumerateInstances",
                                              parameter + Caller::value("MaxObjectCount", "1000"));
        EXPECT_EQ(pulled.values.size(), instances.values.size()) << name;
        EXPECT_EQ(server.call("GetClass", parameter).error, 0) << name;
        for (std::size_t i = 0; i < names.values.size(); ++i) {
            const CallResult one =
                server.call("GetInstance", Caller::instanceName(_again(names.values[i])));
            ASSERT_EQ(one.error, 0) << name << ": " << one.description;
            EXPECT_EQ(Caller::propertyNames(one.values.at(0)),
                      Caller::propertyNames(instances.values[i]));
        }
    }
}

TEST_P(Machines, HaveTheServiceProcessorsThatTheyDescribe) {
    const char* const classes[] = {
        "TAVIRA_VigilPresent",     "TAVIRA_VigilSystemState", "TAVIRA_VigilMachineLevelVPD",
        "TAVIRA_VigilPostBiosVPD", "TAVIRA_VigilWatchdog",    "TAVIRA_VigilManagementProcessorVPD",
        "TAVIRA_VigilComponentVPD"};
    const std::map<std::string, std::vector<std::size_t>> described = {
        {"rack-server", {1, 1, 1, 1, 4, 4, 29}},
        // Six, the first five of which fail one query each.
        {"damaged-firmware", {6, 5, 5, 5, 5, 10, 10}},
        {"hostile-texts", {1, 1, 1, 1, 3, 1, 1}}};
    const auto found = described.find(GetParam());
    std::vector<std::size_t> counts;
    for (const char* const name : classes) {
        const CallResult all = server.call("EnumerateInstances", Caller::className(name));
        EXPECT_EQ(all.error, 0) << name << ": " << all.description;
        counts.push_back(all.values.size());
    }
    EXPECT_EQ(counts, found != described.end() ? found->second
                                               : std::vector<std::size_t>(std::size(classes), 0));
}

TEST_P(Machines, KeepWhatIsWritten) {
    const std::string path = Caller::instanceName(
        Caller::named("TAVIRA_Lease", "Identifier", "TAVIRA|CorvanaAgent|Lease"));
    const auto set = [&](const char* property, const char* value) {
        const auto result =
            server.call("SetProperty", path + Caller::value("PropertyName", property) +
                                           Caller::value("NewValue", value));
        EXPECT_EQ(result.error, 0) << result.description;
        EXPECT_FALSE(result.returnsSomething);
        const auto read =
            server.call("GetProperty", path + Caller::value("PropertyName", property));
        return read.values.at(0).text;
    };
    EXPECT_EQ(set("Lessor", "Acme &amp; S\xC3\xB6hne"), "Acme & S\xC3\xB6hne");
    EXPECT_EQ(set("Buyout", "4294967295"), "4294967295");
    EXPECT_EQ(set("EndDate", "20270131000000.000000+060"), "20270131000000.000000+060");
}

TEST_P(Machines, KeepThePersonalisedPairsWhenAnotherPropertyIsSet) {
    const auto name =
        server.call("EnumerateInstanceNames", Caller::className("TAVIRA_ComputerSystemDetails"));
    const std::string path = Caller::instanceName(_again(name.values.at(0)));
    const auto set = [&](const char* property, const char* value) {
        return server
            .call("SetProperty",
                  path + Caller::value("PropertyName", property) + Caller::value("NewValue", value))
            .error;
    };
    EXPECT_EQ(set("PersonalizedLabel3", "Cost centre"), 0);
    EXPECT_EQ(set("PersonalizedData3", "4711"), 0);
    EXPECT_EQ(set("PrimaryOwnerName", "Ada"), 0);
    const auto read =
        server.call("GetProperty", path + Caller::value("PropertyName", "PersonalizedLabel3"));
    EXPECT_EQ(read.values.at(0).text, "Cost centre");
}

TEST_P(Machines, RefuseWhatTheModuleRefuses) {
    const auto newInstance = [](const char* name) {
        return std::string("<IPARAMVALUE NAME=\"NewInstance\"><INSTANCE CLASSNAME=\"") + name +
               "\"/></IPARAMVALUE>";
    };
    const auto created = server.call("CreateInstance", newInstance("TAVIRA_Lease"));
    EXPECT_EQ(created.error, 7);
    EXPECT_EQ(created.description, "AssetIDProvider::createInstance");
    EXPECT_EQ(
        server
            .call("DeleteInstance", Caller::instanceName(Caller::named(
                                        "TAVIRA_Lease", "Identifier", "TAVIRA|CorvanaAgent|Lease")))
            .error,
        7);
}

TEST_P(Machines, AnswerSixteenClientsAtOnce) {
    std::atomic<int> wrong{0};
    std::vector<std::thread> clients;
    clients.reserve(16);
    for (int client = 0; client < 16; ++client) {
        clients.emplace_back([&] {
            for (int i = 0; i < 5; ++i) {
                wrong += server.call("EnumerateInstances", Caller::className("TAVIRA_Lease"))
                                     .values.size() == 1
                             ? 0
                             : 1;
            }
        });
    }
    for (std::thread& client : clients) {
        client.join();
    }
    EXPECT_EQ(wrong, 0);
}

INSTANTIATE_TEST_SUITE_P(All, Machines,
                         testing::Values("rack-server", "bare", "hostile-texts", "damaged-firmware",
                                         "old-server"),
                         [](const auto& machine) {
                             std::string name = machine.param;
                             name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
                             return name;
                         });

}  // namespace
}  // namespace QZ
