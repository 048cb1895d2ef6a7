// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ExpiryCheck.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <vector>

#include "CimText.h"
#include "ManualClock.h"
#include "Product.h"
#include "TestMachine.h"
#include "Text.h"

using namespace QZ;
using namespace Pegasus;

namespace {

class ExpiryCheckTest : public ::testing::Test {
protected:
    ExpiryCheckTest() { machine.folder().write("etc/hostname", "asset-host\n"); }

    void setDates(const std::string& lease, const std::string& warranty) const {
        machine.writeAssetFile("LEASE.EndDate=" + lease + "\nWARRANTY.EndDate=" + warranty + "\n");
    }
    std::vector<CIMInstance> check() {
        std::vector<CIMInstance> alerts;
        expiry.check(nullptr, [&](const CIMInstance& alert) { alerts.push_back(alert); });
        return alerts;
    }
    // Class and severity of what one check tells.
    std::vector<std::string> told() {
        std::vector<std::string> told;
        for (const CIMInstance& alert : check())
            told.push_back(make_string(alert.getClassName().getString()) + " " +
                           properties(alert)["PerceivedSeverity"]);
        return told;
    }
    static std::map<std::string, std::string> properties(const CIMInstance& alert) {
        std::map<std::string, std::string> properties;
        for (Uint32 i = 0; i < alert.getPropertyCount(); ++i) {
            const CIMConstProperty property = alert.getProperty(i);
            properties[make_string(property.getName().getString())] =
                make_string(property.getValue().toString());
        }
        return properties;
    }

    ScopedEnvironment zone{"TZ", "UTC"};
    ScopedEnvironment language{"LC_ALL", "C"};
    TestMachine machine;
    ManualClock clock;  // 2027-01-15T08:00:00Z
    ExpiryCheck expiry;
};

const std::vector<std::string> _nothing;
const std::vector<std::string> _leaseExpired = {"TAVIRA_LeaseExpirationEvent 4"};
const std::vector<std::string> _leaseValid = {"TAVIRA_LeaseExpirationEvent 2"};

}  // namespace

TEST_F(ExpiryCheckTest, TellsNothingWithoutEndDates) {
    EXPECT_EQ(_nothing, told());
    EXPECT_FALSE(machine.folder().contains("data/assetidprv.evt"));
}

TEST_F(ExpiryCheckTest, TellsEachChangeOnce) {
    setDates("2020-01-01", "");
    EXPECT_EQ(_leaseExpired, told());
    EXPECT_EQ(_nothing, told());
    setDates("2030-01-01", "");
    EXPECT_EQ(_leaseValid, told());
    EXPECT_EQ(_nothing, told());
    setDates("2020-01-01", "2020-01-01");
    EXPECT_EQ((std::vector<std::string>{"TAVIRA_LeaseExpirationEvent 4",
                                        "TAVIRA_WarrantyExpirationEvent 4"}),
              told());
    setDates("", "2020-01-01");
    EXPECT_EQ(_leaseValid, told());
}

TEST_F(ExpiryCheckTest, TellsNothingTwiceAcrossARestart) {
    setDates("2020-01-01", "");
    EXPECT_EQ(_leaseExpired, told());
    expiry = ExpiryCheck();
    EXPECT_EQ(_nothing, told());
    setDates("", "");
    EXPECT_EQ(_leaseValid, told());
}

TEST_F(ExpiryCheckTest, GivesItsPropertiesInOrderAndOfTheirTypes) {
    setDates("2020-01-31", "");
    const CIMInstance alert = check().at(0);
    std::vector<std::string> shape;
    for (Uint32 i = 0; i < alert.getPropertyCount(); ++i) {
        const CIMConstProperty property = alert.getProperty(i);
        shape.push_back(make_string(property.getName().getString()) + " " +
                        cimTypeToString(property.getType()));
    }
    EXPECT_EQ((std::vector<std::string>{"SystemCreationClassName string", "SystemName string",
                                        "AlertType uint16", "PerceivedSeverity uint16",
                                        "ProbableCause uint16", "Trending uint16", "EventID string",
                                        "EventTime datetime", "ProviderName string",
                                        "UniqueSystemID string", "Description string"}),
              shape);
}

TEST_F(ExpiryCheckTest, SaysWhatRanOutWhereAndWhen) {
    machine.folder().write("etc/machine-id", std::string(32, 'a') + "\n");
    setDates("", "2020-01-31");
    const std::vector<CIMInstance> alerts = check();
    ASSERT_EQ(1U, alerts.size());
    std::map<std::string, std::string> said = properties(alerts[0]);
    EXPECT_EQ(25U, said["EventTime"].size());
    said.erase("EventTime");
    const std::map<std::string, std::string> expected = {
        {"SystemCreationClassName", "CIM_AlertIndication"},
        {"SystemName", "asset-host"},
        {"AlertType", "1"},
        {"PerceivedSeverity", "4"},
        {"ProbableCause", "1"},
        {"Trending", "1"},
        {"EventID", "TAVIRA_Warranty.Identifier=\"TAVIRA|CorvanaAgent|Warranty\""},
        {"ProviderName", "Corvana|Agent|AssetIDProvider"},
        {"UniqueSystemID", make_string(Product::getUid())},
        {"Description",
         "The warranty of the system asset-host has expired. Its end date was 2020-01-31."}};
    EXPECT_EQ(expected, said);
    EXPECT_NE("", said["UniqueSystemID"]);
    const CIMObjectPath path = alerts[0].getPath();
    EXPECT_EQ("root/tavqz", make_string(path.getNameSpace().getString()));
    EXPECT_TRUE(path.getClassName().equal(CIMName("TAVIRA_WarrantyExpirationEvent")));
    EXPECT_EQ(0U, path.getKeyBindings().size());
}

TEST_F(ExpiryCheckTest, NamesTheLeaseAndAnAbsentDate) {
    setDates("2020-01-31", "");
    EXPECT_EQ("TAVIRA_Lease.Identifier=\"TAVIRA|CorvanaAgent|Lease\"",
              properties(check().at(0))["EventID"]);
    setDates("", "");
    EXPECT_EQ("The lease of the system asset-host is valid. Its end date is <not available>.",
              properties(check().at(0))["Description"]);
}

TEST_F(ExpiryCheckTest, SpeaksTheEnvironmentsLanguage) {
    const ScopedEnvironment german("LC_ALL", "de_AT.UTF-8");
    setDates("2020-01-31", "");
    EXPECT_EQ(
        "Der Leasingvertrag für das System asset-host ist abgelaufen. Er endete am 2020-01-31.",
        properties(check().at(0))["Description"]);
}

TEST_F(ExpiryCheckTest, CutsTheDescriptionAt511Characters) {
    machine.folder().write("etc/hostname", std::string(600, 'h') + "\n");
    setDates("2020-01-31", "");
    EXPECT_EQ(511U, properties(check().at(0))["Description"].size());
}

TEST_F(ExpiryCheckTest, CountsTheEndDayInEveryZone) {
    struct Case {
        const char* zone;
        const char* endDate;
        std::int64_t lastSecond;  // of the end day, where the machine is
    };
    for (const Case& row : {
             Case{"UTC", "2027-01-31", 1801439999},
             Case{"Pacific/Auckland", "2027-01-31", 1801439999 - 13 * 3600},
             Case{"America/Los_Angeles", "2027-01-31", 1801439999 + 8 * 3600},
             // The clocks go forward that night, and back.
             Case{"Europe/Berlin", "2027-03-28", 1806271199},
             Case{"Europe/Berlin", "2027-10-31", 1825023599},
             // The day is taken as it is written, whatever its offset.
             Case{"America/Los_Angeles", "2027-01-31T23:30:00+13:00", 1801439999 + 8 * 3600},
             Case{"Pacific/Auckland", "2027-01-31T00:30:00-08:00", 1801439999 - 13 * 3600},
         }) {
        const ScopedEnvironment zoneOfCase("TZ", row.zone);
        machine.folder().write("data/assetidprv.evt", "");
        expiry = ExpiryCheck();
        setDates(row.endDate, "");
        clock.setSeconds(row.lastSecond);
        EXPECT_EQ(_nothing, told()) << row.zone << " " << row.endDate;
        clock.setSeconds(row.lastSecond + 1);
        EXPECT_EQ(_leaseExpired, told()) << row.zone << " " << row.endDate;
    }
}

TEST_F(ExpiryCheckTest, DoesNotRepeatWhatCouldNotBeDelivered) {
    setDates("2020-01-01", "2020-01-01");
    const auto refuse = [](const CIMInstance&) { throw std::runtime_error("no listener"); };
    EXPECT_THROW(expiry.check(nullptr, refuse), std::runtime_error);
    EXPECT_EQ(std::vector<std::string>{"TAVIRA_WarrantyExpirationEvent 4"}, told());
    EXPECT_EQ(_nothing, told());
}
