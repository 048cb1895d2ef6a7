// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// The model as it is shipped.

#include "Schema.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "BuildPaths.h"
#include "TemporaryFolder.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const Schema& _schema() {
    static const Schema schema = Schema::load(TAVQZ_SOURCE_DIR "/schema");
    return schema;
}

const ClassDeclaration& _class(const std::string& name) {
    const ClassDeclaration* found = _schema().classes.find(name);
    if (!found) {
        throw Error("no class " + name);
    }
    return *found;
}

std::vector<std::string> _names(const std::string& className,
                                bool (PropertyDeclaration::*has)() const) {
    std::vector<std::string> names;
    for (const PropertyDeclaration& property : _class(className).properties) {
        if ((property.*has)()) {
            names.push_back(property.name);
        }
    }
    return names;
}

bool _isServed(const std::string& name) {
    return _schema().registration.instanceProvider(MODEL_NAMESPACE, name) != nullptr;
}

const std::vector<std::string> _vpdClasses = {
    "TAVIRA_VigilComponentVPD", "TAVIRA_VigilMachineLevelVPD", "TAVIRA_VigilManagementProcessorVPD",
    "TAVIRA_VigilPostBiosVPD"};
const std::vector<std::string> _stateClasses = {"TAVIRA_VigilPresent", "TAVIRA_VigilWatchdog",
                                                "TAVIRA_VigilSystemState"};

}  // namespace

TEST(Schema, DeclaresTheKeys) {
    const auto isKey = &PropertyDeclaration::isKey;
    EXPECT_THAT(_names("TAVIRA_ComputerSystemDetails", isKey),
                ElementsAre("IdentifyingNumber", "Name", "Vendor", "Version"));
    for (const char* name : {"TAVIRA_Lease", "TAVIRA_Warranty", "TAVIRA_SerialNumberInformation"}) {
        EXPECT_THAT(_names(name, isKey), ElementsAre("Identifier"));
    }
    for (const std::string& name : _vpdClasses) {
        EXPECT_THAT(_names(name, isKey), ElementsAre("Node", "UniqueId", "DeviceType", "serialID"));
    }
    for (const std::string& name : _stateClasses) {
        EXPECT_THAT(_names(name, isKey), ElementsAre("DeviceID", "SystemCreationClassName",
                                                     "SystemName", "CreationClassName"));
    }
    EXPECT_THAT(_names("TAVIRA_FRU", isKey),
                ElementsAre("FRUNumber", "IdentifyingNumber", "Vendor"));
}

TEST(Schema, DeclaresWhatMayBeWritten) {
    const auto isWritable = &PropertyDeclaration::isWritable;
    EXPECT_THAT(
        _names("TAVIRA_Lease", isWritable),
        ElementsAre("LRF", "Term", "Buyout", "FMV", "Lessor", "Payment", "StartDate", "EndDate"));
    EXPECT_THAT(_names("TAVIRA_Warranty", isWritable),
                ElementsAre("Duration", "DurationUnit", "EndDate", "Cost"));
    EXPECT_THAT(_names("TAVIRA_ComputerSystemDetails", isWritable),
                ElementsAre("AssetNumber", "PersonalizedLabel1", "PersonalizedData1",
                            "PersonalizedLabel2", "PersonalizedData2", "PersonalizedLabel3",
                            "PersonalizedData3", "PersonalizedLabel4", "PersonalizedData4",
                            "PersonalizedLabel5", "PersonalizedData5", "PrimaryOwnerName",
                            "PrimaryOwnerPhone", "PrimaryOwnerPosition", "PrimaryOwnerDepartment",
                            "LastInventoried", "PurchaseDate", "SystemLocation", "LocalDateTime",
                            "KELPProfile", "KELPUpdateTime"));
    EXPECT_THAT(_names("TAVIRA_SerialNumberInformation", isWritable), IsEmpty());
}

TEST(Schema, MarksThePersonalizedPairsAsReplacedTogether) {
    int marked = 0;
    for (const PropertyDeclaration& property : _class("TAVIRA_ComputerSystemDetails").properties) {
        const bool isPersonalized = property.name.find("Personalized") == 0;
        EXPECT_EQ(property.qualifiers.isTrue("TAVIRA_ReplacedTogether"), isPersonalized)
            << property.name;
        marked += isPersonalized;
    }
    EXPECT_EQ(marked, 10);
}

TEST(Schema, DeclaresTheTypesOfTheServiceProcessorClasses) {
    const auto type = [](const char* className, const char* property) {
        return _class(className).find(property)->type;
    };
    EXPECT_EQ(type("TAVIRA_VigilManagementProcessorVPD", "VPDType"), CIMTYPE_STRING);
    EXPECT_EQ(type("TAVIRA_VigilComponentVPD", "serialID"), CIMTYPE_UINT16);
    EXPECT_EQ(type("TAVIRA_VigilSystemState", "PowerOnHours"), CIMTYPE_UINT64);
    EXPECT_EQ(type("TAVIRA_VigilSystemState", "RestartCount"), CIMTYPE_UINT16);
    EXPECT_EQ(type("TAVIRA_VigilSystemState", "StatusInfo"), CIMTYPE_UINT16);
    EXPECT_EQ(type("TAVIRA_VigilSystemState", "CurrentState"), CIMTYPE_UINT32);
    EXPECT_EQ(type("TAVIRA_VigilWatchdog", "TimeoutInterval"), CIMTYPE_UINT32);
    EXPECT_EQ(type("TAVIRA_VigilWatchdog", "MonitoredEntity"), CIMTYPE_UINT16);
}

TEST(Schema, DerivesFromTheStandardClassesWithTheSameKeys) {
    EXPECT_EQ(_class("TAVIRA_ComputerSystemDetails").superclass, "CIM_Product");
    EXPECT_EQ(_class("TAVIRA_FRU").superclass, "CIM_FRU");
    EXPECT_EQ(_class("TAVIRA_VigilWatchdog").superclass, "CIM_Watchdog");
    EXPECT_EQ(_class("TAVIRA_VigilPresent").superclass, "CIM_LogicalDevice");
    EXPECT_EQ(_class("TAVIRA_VigilSystemState").superclass, "CIM_LogicalDevice");
    for (const std::string& name : _vpdClasses) {
        EXPECT_EQ(_class(name).superclass, "CIM_ManagedElement");
    }
    for (const auto& declared : _schema().classes.classes()) {
        for (const PropertyDeclaration& property : declared->properties) {
            EXPECT_FALSE(_isServed(declared->name) && property.isKey() && property.isPropagated)
                << declared->name << "." << property.name << " is a key that nobody sends";
        }
    }
}

TEST(Schema, HasWhatOneSubscribesWithInBothNamespaces) {
    for (const ClassRepository* const classes : {&_schema().classes, &_schema().interop}) {
        for (const char* const name : {"CIM_IndicationFilter", "CIM_ListenerDestinationCIMXML"}) {
            const ClassDeclaration* const declared = classes->find(name);
            ASSERT_TRUE(declared) << name;
            EXPECT_FALSE(declared->isAbstract());
            EXPECT_TRUE(declared->find("SystemCreationClassName")->isKey());
            EXPECT_TRUE(declared->find("SystemName")->isKey());
            EXPECT_TRUE(declared->find("CreationClassName")->isKey());
            EXPECT_TRUE(declared->find("Name")->isKey());
        }
        const ClassDeclaration* const subscription = classes->find("CIM_IndicationSubscription");
        ASSERT_TRUE(subscription);
        EXPECT_TRUE(subscription->qualifiers.isTrue("Association"));
        EXPECT_EQ(subscription->find("Filter")->referenceClass, "CIM_IndicationFilter");
        EXPECT_EQ(subscription->find("Handler")->referenceClass, "CIM_ListenerDestination");
        EXPECT_TRUE(subscription->find("Filter")->isKey() &&
                    subscription->find("Handler")->isKey());
    }
}

TEST(Schema, DerivesTheAlertsFromTheStandardOne) {
    for (const char* name : {"TAVIRA_LeaseExpirationEvent", "TAVIRA_WarrantyExpirationEvent"}) {
        EXPECT_EQ(_class(name).superclass, "CIM_AlertIndication");
        EXPECT_TRUE(_class(name).find("EventTime"));
        EXPECT_TRUE(_class(name).find("UniqueSystemID"));
        EXPECT_FALSE(_isServed(name)) << "nobody sends it yet";
    }
}

TEST(Schema, RegistersExactlyWhatTheModulesAnswer) {
    std::vector<std::string> expected = {
        "TAVIRA_ComputerSystemDetails",   "TAVIRA_Lease", "TAVIRA_Warranty",
        "TAVIRA_SerialNumberInformation", "TAVIRA_FRU",   "TAVIRA_PhysicalDiskDrive",
        "TAVIRA_RAIDController"};
    expected.insert(expected.end(), _vpdClasses.begin(), _vpdClasses.end());
    expected.insert(expected.end(), _stateClasses.begin(), _stateClasses.end());
    std::vector<std::string> served;
    for (const auto& declared : _schema().classes.classes()) {
        if (_isServed(declared->name)) {
            served.push_back(declared->name);
        }
    }
    EXPECT_THAT(served, testing::UnorderedElementsAreArray(expected));
    EXPECT_FALSE(_schema().classes.find("TAVIRA_VigilVitalProductData"));
}

TEST(Schema, HasANameForPeopleForEverythingThatIsReported) {
    for (const auto& declared : _schema().classes.classes()) {
        if (!_isServed(declared->name)) {
            continue;
        }
        EXPECT_NE(declared->qualifiers.text("DisplayName"), "") << declared->name;
        for (const PropertyDeclaration& property : declared->properties) {
            if (property.isPropagated) {
                continue;  // never sent
            }
            EXPECT_NE(property.qualifiers.text("DisplayName"), "")
                << declared->name << "." << property.name;
            EXPECT_NE(property.qualifiers.text("Description"), "")
                << declared->name << "." << property.name;
        }
    }
}

TEST(Schema, KeepsTheInteropClassesApart) {
    TemporaryFolder folder;
    folder.write("a.mof", "class A {};");
    EXPECT_TRUE(Schema::load(folder.path()).interop.classes().empty());
    std::filesystem::create_directory(folder.file("interop"));
    folder.write("interop/b.mof", "class B {}; class A {};");
    const Schema schema = Schema::load(folder.path());
    EXPECT_FALSE(schema.classes.find("B"));
    EXPECT_EQ(schema.interop.classes().size(), 2U);
    EXPECT_EQ(schema.find("ROOT/tavqz"), &schema.classes);
    EXPECT_EQ(schema.find("root/Interop"), &schema.interop);
    EXPECT_EQ(schema.find("root"), nullptr);
}

TEST(Schema, NamesTheFolderThatHoldsNone) {
    TemporaryFolder folder;
    for (const std::string& path : {folder.path(), folder.file("missing")}) {
        try {
            Schema::load(path);
            FAIL() << path;
        } catch (const Error& error) {
            EXPECT_THAT(error.what(), HasSubstr(path));
        }
    }
    folder.write("broken.mof", "class");
    EXPECT_THROW(Schema::load(folder.path()), MofError);
}
