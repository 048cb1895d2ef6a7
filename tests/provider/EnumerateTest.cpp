// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <fstream>
#include <iterator>

#include "ProviderTest.h"
#include "SmBiosBuilder.h"

using namespace Pegasus;

namespace {

using Enumerate = ProviderTest;

// The names and CIM types of an instance's properties, in order.
std::vector<std::string> _shape(const CIMInstance& instance) {
    std::vector<std::string> shape;
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        const CIMConstProperty property = instance.getProperty(i);
        shape.push_back(
            std::string(static_cast<const char*>(property.getName().getString().getCString())) +
            " " + cimTypeToString(property.getType()));
    }
    return shape;
}

TEST_F(Enumerate, BuildsTheLease) {
    machine.writeAssetFile(
        "LEASE.LRF=3\nLEASE.Term=36\nLEASE.Buyout=-1\nLEASE.FMV=1200\nLEASE.Lessor=Acme\n"
        "LEASE.Payment=100\nLEASE.StartDate=2024-01-31\n"
        "LEASE.EndDate=2027-01-31T00:00:00+01:00\n");
    const auto leases = enumerate("TAVIRA_Lease");
    ASSERT_EQ(leases.size(), 1U);
    EXPECT_EQ(_shape(leases[0]),
              (std::vector<std::string>{
                  "Identifier string", "LRF uint8", "Term uint8", "Buyout uint32", "FMV uint32",
                  "Lessor string", "Payment string", "StartDate datetime", "EndDate datetime"}));
    EXPECT_EQ(valueText(leases[0], "Identifier"), "TAVIRA|CorvanaAgent|Lease");
    EXPECT_EQ(valueText(leases[0], "LRF"), "3");
    EXPECT_EQ(valueText(leases[0], "Buyout"), "4294967295");
    EXPECT_EQ(valueText(leases[0], "Lessor"), "Acme");
    EXPECT_EQ(valueText(leases[0], "EndDate"), "20270131000000.000000+060");
}

TEST_F(Enumerate, GivesADateWithoutATimeTheMachinesOffsetOfThatDay) {
    const ScopedEnvironment zone("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
    machine.writeAssetFile("LEASE.StartDate=2027-01-31\nLEASE.EndDate=2027-07-31\n");
    const auto leases = enumerate("TAVIRA_Lease");
    ASSERT_EQ(leases.size(), 1U);
    EXPECT_EQ(valueText(leases[0], "StartDate"), "20270131000000.000000+060");
    EXPECT_EQ(valueText(leases[0], "EndDate"), "20270731000000.000000+120");
}

TEST_F(Enumerate, LeavesADateThatIsNotSetOut) {
    machine.writeAssetFile("LEASE.StartDate=2024-01-31\n");
    const auto leases = enumerate("TAVIRA_Lease");
    ASSERT_EQ(leases.size(), 1U);
    EXPECT_EQ(valueText(leases[0], "EndDate"), "absent");
    EXPECT_NE(valueText(leases[0], "StartDate"), "absent");
}

TEST_F(Enumerate, BuildsTheWarranty) {
    machine.writeAssetFile(
        "WARRANTY.Duration=36\nWARRANTY.DurationUnit=2\n"
        "WARRANTY.EndDate=2028-06-30\nWARRANTY.Cost=included\n");
    const auto warranties = enumerate("TAVIRA_Warranty");
    ASSERT_EQ(warranties.size(), 1U);
    EXPECT_EQ(_shape(warranties[0]),
              (std::vector<std::string>{"Identifier string", "Duration uint8", "DurationUnit uint8",
                                        "EndDate datetime", "Cost string"}));
    EXPECT_EQ(valueText(warranties[0], "Identifier"), "TAVIRA|CorvanaAgent|Warranty");
    EXPECT_EQ(valueText(warranties[0], "Duration"), "36");
    EXPECT_EQ(valueText(warranties[0], "DurationUnit"), "2");
    EXPECT_EQ(valueText(warranties[0], "Cost"), "included");
}

TEST_F(Enumerate, BuildsTheComputerSystemDetailsInOrder) {
    machine.writeAssetFile(
        "USER.LastInventoried=2026-01-02\nUSER.PurchaseDate=2024-03-01\n"
        "USER.KELPUpdateTime=2026-05-06\n");
    const auto details = enumerate("TAVIRA_ComputerSystemDetails");
    ASSERT_EQ(details.size(), 1U);
    EXPECT_EQ(_shape(details[0]), (std::vector<std::string>{"IdentifyingNumber string",
                                                            "Name string",
                                                            "Vendor string",
                                                            "Version string",
                                                            "ProductName string",
                                                            "CSName string",
                                                            "Model string",
                                                            "SerialNumber string",
                                                            "SystemUUID string",
                                                            "AssetIDStringArea uint32",
                                                            "AssetNumber string",
                                                            "AssetIdTag string",
                                                            "PersonalizedLabel1 string",
                                                            "PersonalizedData1 string",
                                                            "PersonalizedLabel2 string",
                                                            "PersonalizedData2 string",
                                                            "PersonalizedLabel3 string",
                                                            "PersonalizedData3 string",
                                                            "PersonalizedLabel4 string",
                                                            "PersonalizedData4 string",
                                                            "PersonalizedLabel5 string",
                                                            "PersonalizedData5 string",
                                                            "PrimaryOwnerName string",
                                                            "PrimaryOwnerPhone string",
                                                            "PrimaryOwnerPosition string",
                                                            "PrimaryOwnerDepartment string",
                                                            "LastInventoried datetime",
                                                            "PurchaseDate datetime",
                                                            "SystemLocation string",
                                                            "LocalDateTime datetime",
                                                            "KELPProfile string",
                                                            "KELPUpdateTime datetime",
                                                            "DeploymentProfile string",
                                                            "DeploymentUpdateTime datetime"}));
}

TEST_F(Enumerate, FillsTheComputerSystemDetails) {
    SmBiosBuilder builder(SmBiosBuilder::EntryPoint::Version3, 3, 4);
    builder.add(1, 27)
        .text(5, "Example Server -[EX-1]-")
        .text(7, "S4711")
        .bytes(8, "0123456789abcdef");
    builder.addEnd().writeBelow(machine.folder().path());
    machine.folder().write("etc/hostname", "node17\n");
    machine.writeAssetFile(
        "USER.AssetNumber=A-1\nUSER.AssetIdTag=T-1\nUSER.Name=Owner\nUSER.Phone=1\n"
        "USER.Position=Boss\nUSER.Department=IT\nUSER.Location=Row 4\nUSER.KELPProfile=p\n"
        "USER.KELPUpdateTime=2026-05-06T00:00:00+00:00\n"
        "USER.PersonalizedLabel1=l1\nUSER.PersonalizedData5=d5\n");
    const auto all = enumerate("TAVIRA_ComputerSystemDetails");
    ASSERT_EQ(all.size(), 1U);
    const std::pair<const char*, const char*> expected[] = {
        {"IdentifyingNumber", "S4711"},
        {"Name", "Example Server"},
        {"Vendor", "TAV"},
        {"ProductName", "Example Server"},
        {"CSName", "node17"},
        {"Model", "EX-1"},
        {"SerialNumber", "S4711"},
        {"SystemUUID", "30313233-3435-3637-3839-616263646566"},
        {"AssetIDStringArea", "1024"},
        {"AssetNumber", "A-1"},
        {"AssetIdTag", "T-1"},
        {"PersonalizedLabel1", "l1"},
        {"PersonalizedData1", ""},
        {"PersonalizedData5", "d5"},
        {"PrimaryOwnerName", "Owner"},
        {"PrimaryOwnerPhone", "1"},
        {"PrimaryOwnerPosition", "Boss"},
        {"PrimaryOwnerDepartment", "IT"},
        {"LastInventoried", "absent"},
        {"PurchaseDate", "absent"},
        {"SystemLocation", "Row 4"},
        {"KELPProfile", "p"},
        {"KELPUpdateTime", "20260506000000.000000+000"},
        {"DeploymentProfile", "p"},
        {"DeploymentUpdateTime", "20260506000000.000000+000"}};
    for (const auto& [name, value] : expected) {
        EXPECT_EQ(valueText(all[0], name), value) << name;
    }
    EXPECT_NE(valueText(all[0], "LocalDateTime"), "absent");
    EXPECT_NE(valueText(all[0], "Version"), "");
}

TEST_F(Enumerate, ServesAClassInAnyLetterCaseAndEchoesTheSpelling) {
    const auto leases = enumerate("tavira_lease");
    ASSERT_EQ(leases.size(), 1U);
    EXPECT_TRUE(leases[0].getClassName().getString() == String("tavira_lease"));
}

TEST_F(Enumerate, CopiesThePathThatWasAskedFor) {
    const auto leases = enumerate("TAVIRA_Lease");
    ASSERT_EQ(leases.size(), 1U);
    EXPECT_TRUE(leases[0].getPath().toString() ==
                String("//server.example/root/tavqz:TAVIRA_Lease.Identifier="
                       "\"TAVIRA|CorvanaAgent|Lease\""));
}

TEST_F(Enumerate, KeysTheDetailsByFourProperties) {
    const auto details = enumerate("TAVIRA_ComputerSystemDetails");
    ASSERT_EQ(details.size(), 1U);
    const Array<CIMKeyBinding> keys = details[0].getPath().getKeyBindings();
    ASSERT_EQ(keys.size(), 4U);
    for (const char* name : {"IdentifyingNumber", "Name", "Vendor", "Version"}) {
        bool found = false;
        for (Uint32 i = 0; i < keys.size(); ++i) {
            const CString value = keys[i].getValue().getCString();
            found = found || (keys[i].getName().equal(CIMName(name)) &&
                              keys[i].getType() == CIMKeyBinding::STRING &&
                              valueText(details[0], name) == static_cast<const char*>(value));
        }
        EXPECT_TRUE(found) << name;
    }
}

TEST_F(Enumerate, RefusesAClassThatIsNotServed) {
    for (const char* name : {"TAVIRA_VigilVitalProductData", "TAVIRA_FRU", "CIM_Product"}) {
        Instances handler;
        const auto [status, message] = failure([&] {
            provider->enumerateInstances(OperationContext(), path(name), false, false,
                                         CIMPropertyList(), handler);
        });
        EXPECT_EQ(status, CIM_ERR_INVALID_CLASS) << name;
        EXPECT_EQ(message, "") << name;
        EXPECT_TRUE(handler.all.empty()) << name;
        EXPECT_EQ(failure([&] { names(name); }).first, CIM_ERR_INVALID_CLASS) << name;
        EXPECT_EQ(failure([&] { get(name); }).first, CIM_ERR_INVALID_CLASS) << name;
    }
}

TEST_F(Enumerate, HasNoServiceProcessorInstancesWithoutAServiceProcessor) {
    EXPECT_FALSE(provider->foundSP());
    for (const char* name :
         {"TAVIRA_VigilComponentVPD", "TAVIRA_VigilMachineLevelVPD",
          "TAVIRA_VigilManagementProcessorVPD", "TAVIRA_VigilPostBiosVPD", "TAVIRA_VigilPresent",
          "TAVIRA_VigilWatchdog", "TAVIRA_VigilSystemState"}) {
        EXPECT_TRUE(enumerate(name).empty()) << name;
        EXPECT_TRUE(names(name).empty()) << name;
    }
}

TEST_F(Enumerate, GetsTheInstanceWithTheKeysAsked) {
    const auto leases = get("TAVIRA_Lease.Identifier=\"TAVIRA|CorvanaAgent|Lease\"");
    ASSERT_EQ(leases.size(), 1U);
    EXPECT_EQ(valueText(leases[0], "Identifier"), "TAVIRA|CorvanaAgent|Lease");
    EXPECT_EQ(get("tavira_LEASE.identifier=\"TAVIRA|CorvanaAgent|Lease\"").size(), 1U);
}

TEST_F(Enumerate, GetsNothingForOtherKeysWithoutAnError) {
    EXPECT_TRUE(get("TAVIRA_Lease.Identifier=\"TAVIRA|CorvanaAgent|Warranty\"").empty());
    EXPECT_TRUE(get("TAVIRA_Lease.Identifier=\"tavira|corvanaagent|lease\"").empty());
    EXPECT_TRUE(get("TAVIRA_Lease").empty());
}

TEST_F(Enumerate, NamesWhatItEnumerates) {
    EXPECT_EQ(names("TAVIRA_Warranty"),
              (std::vector<std::string>{"//server.example/root/tavqz:TAVIRA_Warranty.Identifier="
                                        "\"TAVIRA|CorvanaAgent|Warranty\""}));
}

TEST_F(Enumerate, MakesAnyTextFitForXml) {
    machine.writeAssetFile("LEASE.Lessor=a\\x01\xFFz\n");
    const auto leases = enumerate("TAVIRA_Lease");
    ASSERT_EQ(leases.size(), 1U);
    EXPECT_EQ(valueText(leases[0], "Lessor"), "a\xEF\xBF\xBD\xC3\xBFz");
}

TEST_F(Enumerate, AnswersWhereTheRecordCannotBeSaved) {
    std::filesystem::remove_all(machine.folder().file("data"));
    EXPECT_EQ(enumerate("TAVIRA_Lease").size(), 1U);
    EXPECT_EQ(names("TAVIRA_Warranty").size(), 1U);
    EXPECT_EQ(enumerate("TAVIRA_ComputerSystemDetails").size(), 1U);
}

}  // namespace
