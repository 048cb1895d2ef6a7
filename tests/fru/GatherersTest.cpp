// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Gatherers.h"

#include <gtest/gtest.h>

#include "FruList.h"
#include "SourceServer.h"
#include "TestIpmi.h"
#include "TestMachine.h"
#include "Units.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

IpmiFru _ipmi(const char* number, const char* name = "Fan") {
    return IpmiFru({number, "M1", "Acme", name, "A fan", 0});
}

CIMInstance _disk(const char* fru, const char* name = "Disk 1") {
    return unitOf("TAVIRA_PhysicalDiskDrive", {{"Name", name},
                                               {"FRU", fru},
                                               {"Model", "  ST 4 "},
                                               {"Manufacturer", " Acme "},
                                               {"Description", " A disk "},
                                               {"Slot", "5"}});
}

class GatherersTest : public testing::Test {
protected:
    GatherersTest() { machine.folder().write("etc/hostname", "rack-1\n"); }
    ~GatherersTest() override {
        testIpmiUnits.clear();
        isTestIpmiFailing = false;
    }

    const TestMachine machine;
    SourceServer server;
};

std::string _keys(const CIMInstance& unit) {
    return make_string(unit.getPath().toString());
}

}  // namespace

TEST_F(GatherersTest, TakesIpmiTextsAsTheyAre) {
    testIpmiUnits = {_ipmi(" 39M4 "), _ipmi("", "")};
    const std::vector<CIMInstance> units = _getIpmiFruInstances();
    ASSERT_EQ(2U, units.size());
    EXPECT_THAT(propertiesOf(units[0]),
                ElementsAre("ElementName=IPMI", "FRUNumber= 39M4 ", "IdentifyingNumber=M1",
                            "Vendor=Acme", "Name=Fan", "Description=A fan"));
    EXPECT_THAT(propertiesOf(units[1]),
                ElementsAre("ElementName=IPMI", "FRUNumber=", "IdentifyingNumber=M1", "Vendor=Acme",
                            "Name=", "Description=A fan"));
    EXPECT_EQ(
        "//rack-1/root/tavqz:TAVIRA_FRU.FRUNumber=\" 39M4 \",IdentifyingNumber=\"M1\","
        "Vendor=\"Acme\"",
        _keys(units[0]));
}

TEST_F(GatherersTest, AsksTheServerForEverythingOfAClass) {
    _getMpaFruInstances();
    _getRaidFruInstances();
    EXPECT_THAT(server.asked, ElementsAre("root/tavqz:TAVIRA_VigilComponentVPD",
                                          "root/tavqz:TAVIRA_PhysicalDiskDrive",
                                          "root/tavqz:TAVIRA_RAIDController"));
}

TEST_F(GatherersTest, MakesUnitsOfComponents) {
    server.sources["TAVIRA_VigilComponentVPD"] = {
        unitOf("TAVIRA_VigilComponentVPD", {{"ManufacturerId", " Acme "},
                                            {"ModelNumber", " M1"},
                                            {"FieldReplaceableUnitNumber", "  39M4 "},
                                            {"Description", " DIMM 1 "}})};
    const std::vector<CIMInstance> units = _getMpaFruInstances();
    ASSERT_EQ(1U, units.size());
    EXPECT_THAT(propertiesOf(units[0]),
                ElementsAre("Description= DIMM 1 ", "ElementName=MPA", "FRUNumber=39M4",
                            "IdentifyingNumber=M1", "Name= DIMM 1 ", "Vendor=Acme"));
    EXPECT_EQ(
        "//rack-1/root/tavqz:TAVIRA_FRU.FRUNumber=\"39M4\",IdentifyingNumber=\"M1\","
        "Vendor=\"Acme\"",
        _keys(units[0]));
}

TEST_F(GatherersTest, LeavesOutWhatASourceDoesNotTell) {
    server.sources["TAVIRA_VigilComponentVPD"] = {
        unitOf("TAVIRA_VigilComponentVPD",
               {{"FieldReplaceableUnitNumber", nullptr}, {"Description", "DIMM 1"}})};
    const std::vector<CIMInstance> units = _getMpaFruInstances();
    ASSERT_EQ(1U, units.size());
    EXPECT_THAT(propertiesOf(units[0]),
                ElementsAre("Description=DIMM 1", "ElementName=MPA", "Name=DIMM 1"));
    FruList list;
    EXPECT_FALSE(_insert(list, units[0]));
}

TEST_F(GatherersTest, MakesUnitsOfDisksThenOfControllers) {
    server.sources["TAVIRA_PhysicalDiskDrive"] = {_disk("  39M4  "), _disk("   ")};
    server.sources["TAVIRA_RAIDController"] = {
        unitOf("TAVIRA_RAIDController", {{"FRU", " 46C8 "},
                                         {"Model", " 5015 "},
                                         {"Manufacturer", "Acme"},
                                         {"Name", "Controller 1"},
                                         {"Description", "SAS"}})};
    const std::vector<CIMInstance> units = _getRaidFruInstances();
    ASSERT_EQ(3U, units.size());
    EXPECT_THAT(propertiesOf(units[0]),
                ElementsAre("Description= A disk ", "ElementName=RAID", "FRUNumber=39M4",
                            "IdentifyingNumber=ST 4", "Name=Disk 1", "Vendor=Acme"));
    EXPECT_EQ("", textOf(units[1], "FRUNumber"));
    EXPECT_THAT(propertiesOf(units[2]),
                ElementsAre("Description=SAS", "ElementName=RAID", "FRUNumber=46C8", "Vendor=Acme",
                            "IdentifyingNumber=5015", "Name=Controller 1"));
}

TEST_F(GatherersTest, GathersControllersWhereNobodyServesDisks) {
    server.sources["TAVIRA_RAIDController"] = {
        unitOf("TAVIRA_RAIDController", {{"Name", "Controller 1"}})};
    EXPECT_THAT(textsOf(_getRaidFruInstances(), "Name"), ElementsAre("Controller 1"));
}

TEST_F(GatherersTest, KeepsTheDisksWhereNobodyServesControllers) {
    server.sources["TAVIRA_PhysicalDiskDrive"] = {_disk("39M4")};
    EXPECT_THAT(textsOf(_getRaidFruInstances(), "Name"), ElementsAre("Disk 1"));
}

TEST_F(GatherersTest, ThrowsNothing) {
    isTestIpmiFailing = true;
    EXPECT_THAT(_getIpmiFruInstances(), IsEmpty());
    EXPECT_THAT(_getMpaFruInstances(), IsEmpty());
    EXPECT_THAT(_getRaidFruInstances(), IsEmpty());
}

TEST_F(GatherersTest, GathersNothingFromNoServer) {
    _fruServer = nullptr;
    EXPECT_THAT(_getMpaFruInstances(), IsEmpty());
    EXPECT_THAT(_getRaidFruInstances(), IsEmpty());
}

TEST_F(GatherersTest, FindsUnitsOfAMachineWhoseNameNoPathCanHave) {
    machine.folder().write("etc/hostname", "rack 1!\n");
    testIpmiUnits = {_ipmi("39M4")};
    const std::vector<CIMInstance> units = _getIpmiFruInstances();
    ASSERT_EQ(1U, units.size());
    EXPECT_EQ("", make_string(units[0].getPath().getHost()));
}
