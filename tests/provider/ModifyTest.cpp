// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>

#include "ManualClock.h"
#include "ProviderTest.h"

using namespace Pegasus;

namespace {

class Modify : public ProviderTest {
protected:
    // The value that an enumeration then shows.
    std::string shown(const std::string& className, const std::string& name) {
        const auto instances = enumerate(className);
        return instances.size() == 1 ? valueText(instances[0], name) : "no instance";
    }
};

constexpr const char* _lease = "TAVIRA_Lease";
constexpr const char* _warranty = "TAVIRA_Warranty";
constexpr const char* _details = "TAVIRA_ComputerSystemDetails";

TEST_F(Modify, AppliesEveryWritablePropertyOfTheLease) {
    CIMInstance modified = instance(_lease);
    add(modified, "LRF", Uint8(7));
    add(modified, "Term", Uint8(36));
    add(modified, "Buyout", Uint32(4294967295U));
    add(modified, "FMV", Uint32(5));
    add(modified, "Lessor", text("Acme \xC3\xA9"));
    add(modified, "Payment", text("100"));
    add(modified, "StartDate", date("20240131000000.000000+060"));
    add(modified, "EndDate", date("20270131120000.250000-300"));
    modify(_lease, modified);
    EXPECT_EQ(machine.assetFile(),
              "LEASE.LRF=7\nLEASE.Term=36\nLEASE.Buyout=-1\nLEASE.FMV=5\n"
              "LEASE.Lessor=Acme \xC3\xA9\nLEASE.Payment=100\n"
              "LEASE.StartDate=2024-01-31T00:00:00+01:00\n"
              "LEASE.EndDate=2027-01-31T12:00:00.250-05:00\n");
}

TEST_F(Modify, AppliesEveryWritablePropertyOfTheWarranty) {
    CIMInstance modified = instance(_warranty);
    add(modified, "Duration", Uint8(36));
    add(modified, "DurationUnit", Uint8(2));
    add(modified, "EndDate", date("20280630000000.000000+000"));
    add(modified, "Cost", text("included"));
    modify(_warranty, modified);
    EXPECT_EQ(machine.assetFile(),
              "WARRANTY.Duration=36\nWARRANTY.DurationUnit=2\n"
              "WARRANTY.EndDate=2028-06-30T00:00:00+00:00\nWARRANTY.Cost=included\n");
}

TEST_F(Modify, AppliesEveryWritablePropertyOfTheDetails) {
    CIMInstance modified = instance(_details);
    for (const char* name :
         {"AssetNumber", "PersonalizedLabel1", "PersonalizedData1", "PersonalizedLabel2",
          "PersonalizedData2", "PersonalizedLabel3", "PersonalizedData3", "PersonalizedLabel4",
          "PersonalizedData4", "PersonalizedLabel5", "PersonalizedData5", "PrimaryOwnerName",
          "PrimaryOwnerPhone", "PrimaryOwnerPosition", "PrimaryOwnerDepartment", "SystemLocation",
          "KELPProfile"}) {
        add(modified, name, text(std::string("new ") + name));
    }
    add(modified, "LastInventoried", date("20260102030405.000000+000"));
    add(modified, "PurchaseDate", date("20240301000000.000000+060"));
    add(modified, "KELPUpdateTime", date("20260506070809.000000-300"));
    modify(_details, modified);
    EXPECT_EQ(machine.assetFile(),
              "USER.AssetNumber=new AssetNumber\nUSER.AssetIdTag=\nUSER.Name=new PrimaryOwnerName\n"
              "USER.Phone=new PrimaryOwnerPhone\nUSER.Position=new PrimaryOwnerPosition\n"
              "USER.Department=new PrimaryOwnerDepartment\n"
              "USER.LastInventoried=2026-01-02T03:04:05+00:00\n"
              "USER.PurchaseDate=2024-03-01T00:00:00+01:00\nUSER.Location=new SystemLocation\n"
              "USER.KELPProfile=new KELPProfile\nUSER.KELPUpdateTime=2026-05-06T07:08:09-05:00\n"
              "USER.PersonalizedLabel1=new PersonalizedLabel1\n"
              "USER.PersonalizedData1=new PersonalizedData1\n"
              "USER.PersonalizedLabel2=new PersonalizedLabel2\n"
              "USER.PersonalizedData2=new PersonalizedData2\n"
              "USER.PersonalizedLabel3=new PersonalizedLabel3\n"
              "USER.PersonalizedData3=new PersonalizedData3\n"
              "USER.PersonalizedLabel4=new PersonalizedLabel4\n"
              "USER.PersonalizedData4=new PersonalizedData4\n"
              "USER.PersonalizedLabel5=new PersonalizedLabel5\n"
              "USER.PersonalizedData5=new PersonalizedData5\n");
    EXPECT_EQ(shown(_details, "DeploymentProfile"), "new KELPProfile");
    EXPECT_EQ(shown(_details, "LastInventoried"), "20260102030405.000000+000");
    EXPECT_EQ(shown(_details, "PurchaseDate"), "20240301000000.000000+060");
}

TEST_F(Modify, ChangesOnlyWhatIsCarried) {
    machine.writeAssetFile("LEASE.Term=12\nLEASE.Lessor=Acme\nLEASE.StartDate=2020-01-01\n");
    CIMInstance modified = instance(_lease);
    add(modified, "EndDate", date("20210131000000.000000+000"));
    modify(_lease, modified);
    EXPECT_EQ(shown(_lease, "Term"), "12");
    EXPECT_EQ(shown(_lease, "Lessor"), "Acme");
    EXPECT_NE(machine.assetFile().find("LEASE.StartDate=2020-01-01\n"), std::string::npos);
    EXPECT_EQ(shown(_lease, "EndDate"), "20210131000000.000000+000");
}

TEST_F(Modify, ClearsADateThatIsSentAsAnInterval) {
    machine.writeAssetFile("LEASE.StartDate=2024-01-31\nLEASE.EndDate=2027-01-31\n");
    CIMInstance modified = instance(_lease);
    add(modified, "EndDate", date("00000000000000.000000:000"));
    modify(_lease, modified);
    EXPECT_EQ(shown(_lease, "EndDate"), "absent");
    EXPECT_NE(shown(_lease, "StartDate"), "absent");
}

TEST_F(Modify, ClearsADateThatIsSentAsNull) {
    machine.writeAssetFile("LEASE.EndDate=2027-01-31\n");
    CIMInstance modified = instance(_lease);
    modified.addProperty(CIMProperty(CIMName("EndDate"), CIMValue(CIMTYPE_DATETIME, false)));
    modify(_lease, modified);
    EXPECT_EQ(shown(_lease, "EndDate"), "absent");
}

TEST_F(Modify, TakesNullForEmptyTextAndZero) {
    machine.writeAssetFile("LEASE.Term=12\nLEASE.Buyout=9\nLEASE.Lessor=Acme\n");
    CIMInstance modified = instance(_lease);
    modified.addProperty(CIMProperty(CIMName("Term"), CIMValue(CIMTYPE_UINT8, false)));
    modified.addProperty(CIMProperty(CIMName("Buyout"), CIMValue(CIMTYPE_UINT32, false)));
    modified.addProperty(CIMProperty(CIMName("Lessor"), CIMValue(CIMTYPE_STRING, false)));
    modify(_lease, modified);
    EXPECT_EQ(shown(_lease, "Term"), "0");
    EXPECT_EQ(shown(_lease, "Buyout"), "0");
    EXPECT_EQ(shown(_lease, "Lessor"), "");
}

TEST_F(Modify, IgnoresAnIntervalForTheTwoTimesThatAreNotCleared) {
    machine.writeAssetFile("USER.KELPUpdateTime=2026-05-06T00:00:00+00:00\n");
    CIMInstance modified = instance(_details);
    add(modified, "LocalDateTime", date("00000000000000.000000:000"));
    add(modified, "KELPUpdateTime", date("00000000000000.000000:000"));
    modify(_details, modified);
    EXPECT_EQ(shown(_details, "KELPUpdateTime"), "20260506000000.000000+000");
}

TEST_F(Modify, SetsTheClockButNotToAnInterval) {
    const ScopedEnvironment thisMachine("TAVQZ_HOST_ROOT", nullptr);
    ManualClock clock;
    CIMInstance modified = instance(_details);
    add(modified, "LocalDateTime", date("20270131120000.000000+060"));
    modify(_details, modified);
    EXPECT_EQ(clock.seconds(), 1801393200);
    CIMInstance interval = instance(_details);
    add(interval, "LocalDateTime", date("00000000000000.000000:000"));
    modify(_details, interval);
    EXPECT_EQ(clock.seconds(), 1801393200);
}

TEST_F(Modify, EmptiesThePersonalizedPairsThatAreNotCarried) {
    std::vector<std::string> names;
    std::string stored;
    for (const char* number : {"1", "2", "3", "4", "5"}) {
        for (const char* kind : {"PersonalizedLabel", "PersonalizedData"}) {
            names.push_back(std::string(kind) + number);
            stored.append("USER.").append(names.back()).append("=kept?\n");
        }
    }
    machine.writeAssetFile(stored);
    CIMInstance modified = instance(_details);
    add(modified, "PrimaryOwnerName", text("Owner"));
    modify(_details, modified);
    for (const std::string& name : names) {
        EXPECT_EQ(shown(_details, name), "") << name;
    }
    EXPECT_EQ(shown(_details, "PrimaryOwnerName"), "Owner");
}

TEST_F(Modify, IgnoresWhatIsReadOnly) {
    machine.writeAssetFile("USER.AssetIdTag=T-1\nUSER.KELPProfile=p\n");
    CIMInstance modified = instance(_details);
    for (const char* name :
         {"SerialNumber", "SystemUUID", "AssetIdTag", "DeploymentProfile", "CSName", "Vendor"}) {
        add(modified, name, text("forged"));
    }
    add(modified, "DeploymentUpdateTime", date("20260102030405.000000+000"));
    modify(_details, modified);
    EXPECT_EQ(machine.assetFile().find("forged"), std::string::npos);
    EXPECT_EQ(shown(_details, "AssetIdTag"), "T-1");
    EXPECT_EQ(shown(_details, "KELPProfile"), "p");
    EXPECT_EQ(shown(_details, "KELPUpdateTime"), "absent");
}

TEST_F(Modify, LooksAtNeitherKeysNorThePropertyList) {
    CIMInstance modified = instance(_lease);
    add(modified, "Lessor", text("Acme"));
    Acknowledgement handler;
    provider->modifyInstance(OperationContext(), path("tavira_lease.Identifier=\"other\""),
                             modified, false, CIMPropertyList(Array<CIMName>()), handler);
    EXPECT_EQ(shown(_lease, "Lessor"), "Acme");
}

TEST_F(Modify, RefusesTheSerialNumbers) {
    const auto [status, message] = failure([&] {
        modify("TAVIRA_SerialNumberInformation", instance("TAVIRA_SerialNumberInformation"));
    });
    EXPECT_EQ(status, CIM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(message, "");
    EXPECT_FALSE(machine.folder().contains("data/asset.dat"));
}

TEST_F(Modify, RefusesEveryOtherClass) {
    for (const char* name : {"TAVIRA_VigilPresent", "TAVIRA_VigilVitalProductData",
                             "TAVIRA_VigilWatchdog", "TAVIRA_FRU"}) {
        const auto [status, message] = failure([&] { modify(name, instance(name)); });
        EXPECT_EQ(status, CIM_ERR_INVALID_CLASS) << name;
        EXPECT_EQ(message, "") << name;
    }
}

TEST_F(Modify, SavesWhatWasSetBeforeAValueOfAnotherType) {
    machine.writeAssetFile("LEASE.LRF=1\nLEASE.Lessor=old\n");
    CIMInstance modified = instance(_lease);
    add(modified, "Lessor", text("new"));
    add(modified, "Term", text("36"));
    add(modified, "LRF", Uint8(2));
    EXPECT_THROW(modify(_lease, modified), TypeMismatchException);
    EXPECT_EQ(shown(_lease, "LRF"), "2");
    EXPECT_EQ(shown(_lease, "Lessor"), "old");
}

TEST_F(Modify, LeavesThePairsWholeWhereOneOfThemHasAnotherType) {
    machine.writeAssetFile("USER.PersonalizedLabel1=l\nUSER.PersonalizedData1=d\n");
    CIMInstance modified = instance(_details);
    add(modified, "AssetNumber", text("A-2"));
    add(modified, "PersonalizedLabel1", text("new"));
    add(modified, "PersonalizedData3", Uint32(3));
    EXPECT_THROW(modify(_details, modified), TypeMismatchException);
    EXPECT_EQ(shown(_details, "AssetNumber"), "A-2");
    EXPECT_EQ(shown(_details, "PersonalizedLabel1"), "l");
    EXPECT_EQ(shown(_details, "PersonalizedData1"), "d");
}

TEST_F(Modify, RefusesADayThatIsLeftOpenBeforeAnythingIsSet) {
    machine.writeAssetFile("LEASE.Lessor=old\nLEASE.EndDate=2027-01-31\n");
    CIMInstance modified = instance(_lease);
    add(modified, "Lessor", text("new"));
    add(modified, "EndDate", date("202701********.******+000"));
    const auto [status, message] = failure([&] { modify(_lease, modified); });
    EXPECT_EQ(status, CIM_ERR_INVALID_PARAMETER);
    EXPECT_NE(message.find("EndDate"), std::string::npos) << message;
    EXPECT_EQ(shown(_lease, "Lessor"), "old");
    EXPECT_NE(shown(_lease, "EndDate"), "absent");
}

TEST_F(Modify, TakesATimeLeftOpenForADayWithoutATime) {
    CIMInstance modified = instance(_lease);
    add(modified, "EndDate", date("20270131******.******+000"));
    modify(_lease, modified);
    EXPECT_NE(machine.assetFile().find("LEASE.EndDate=2027-01-31\n"), std::string::npos);
}

TEST_F(Modify, SaysWhyItCouldNotSave) {
    std::filesystem::remove_all(machine.folder().file("data"));
    CIMInstance modified = instance(_lease);
    add(modified, "Lessor", text("Acme"));
    const auto [status, message] = failure([&] { modify(_lease, modified); });
    EXPECT_EQ(status, CIM_ERR_FAILED);
    EXPECT_NE(message.find("asset.dat"), std::string::npos) << message;
    EXPECT_NE(message.find("No such file or directory"), std::string::npos) << message;
}

TEST_F(Modify, SurvivesAnyTextOfAClient) {
    const std::string hostile = "=#\\\n\r\t \xF0\x9F\x92\xBB \xEF\xBF\xBD \"<&> ";
    CIMInstance modified = instance(_lease);
    add(modified, "Lessor", text(hostile));
    modify(_lease, modified);
    EXPECT_EQ(shown(_lease, "Lessor"), hostile);
}

}  // namespace
