// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertText.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "AlertFields.h"
#include "MofParser.h"
#include "TestAlert.h"

using namespace QZ;
using namespace Pegasus;

TEST(AlertFields, SayWhatTheAlertSays) {
    const AlertFields fields = alertFields(testAlert("It ran out."), testClasses());
    EXPECT_EQ(fields.className, "TEST_First");
    EXPECT_EQ(fields.description, "It ran out.");
    EXPECT_EQ(fields.eventId, "TEST_Record.Id=\"1\"");
    EXPECT_EQ(fields.provider, "The provider");
    EXPECT_EQ(fields.severity, "4");
    EXPECT_EQ(fields.severityName, "Minor");
    EXPECT_EQ(fields.system, "asset-host");
    EXPECT_EQ(fields.systemId, "4711");
    EXPECT_EQ(fields.time, "2027-01-31T12:03:05.250+01:00");
}

TEST(AlertFields, AreEmptyForWhatItDoesNotSay) {
    CIMInstance alert(CIMName("TEST_Unheard"));
    alert.addProperty(CIMProperty(CIMName("PerceivedSeverity"), CIMValue(Uint16(4))));
    alert.addProperty(CIMProperty(CIMName("EventTime"), CIMValue(String("yesterday"))));
    alert.addProperty(CIMProperty(CIMName("Description"), CIMValue(CIMTYPE_STRING, false)));
    const AlertFields fields = alertFields(alert, testClasses());
    EXPECT_EQ(fields.className, "TEST_Unheard");
    EXPECT_EQ(fields.severity, "4");
    for (const std::string& text :
         {fields.description, fields.eventId, fields.severityName, fields.time, fields.system}) {
        EXPECT_EQ(text, "");
    }
}

TEST(AlertText, IsALineForPeople) {
    AlertText text("table", testClasses());
    EXPECT_EQ(text.next(testAlert("It ran out.")),
              "2027-01-31T12:03:05.250+01:00 Minor: It ran out.\n");
    EXPECT_EQ(text.next(testAlert("a\n\x7F b")),
              "2027-01-31T12:03:05.250+01:00 Minor: a\\n\\x7F b\n");
}

TEST(AlertText, NamesTheClassWhereTheAlertSaysLittle) {
    CIMInstance alert(CIMName("TEST_Unheard"));
    alert.addProperty(CIMProperty(CIMName("EventID"), CIMValue(String("17"))));
    EXPECT_EQ(AlertText("table", testClasses()).next(alert), "TEST_Unheard: 17\n");
}

TEST(AlertText, IsAJsonObjectOnALine) {
    AlertText text("json", testClasses());
    for (const char* description : {"first", "second\nline"}) {
        const std::string line = text.next(testAlert(description));
        EXPECT_EQ(line.find('\n'), line.size() - 1);
        const auto json = nlohmann::json::parse(line);
        EXPECT_EQ(json["path"], "root/tavqz:TEST_First");
        EXPECT_EQ(json["properties"]["Description"], description);
        EXPECT_EQ(json["properties"]["PerceivedSeverity"], 4);
    }
}

TEST(AlertText, HasAHeaderInCsvWhereTheLastDoesNotFit) {
    AlertText text("csv", testClasses());
    const std::string header =
        "path,Description,PerceivedSeverity,EventTime,EventID,SystemName,ProviderName,"
        "UniqueSystemID\r\n";
    const std::string row =
        ",4,20270131120305.250000+060,\"TEST_Record.Id=\"\"1\"\"\",asset-host,The "
        "provider,4711\r\n";
    EXPECT_EQ(text.next(testAlert("a")), header + "root/tavqz:TEST_First,a" + row);
    EXPECT_EQ(text.next(testAlert("b,c")), "root/tavqz:TEST_First,\"b,c\"" + row);
    CIMInstance other(CIMName("TEST_Second"));
    other.addProperty(CIMProperty(CIMName("EventID"), CIMValue(String("17"))));
    EXPECT_EQ(text.next(other), "path,EventID\r\nTEST_Second,17\r\n");
    EXPECT_EQ(text.next(testAlert("d")), header + "root/tavqz:TEST_First,d" + row);
}

TEST(AlertText, IsMofThatCanBeReadBack) {
    AlertText text("mof", testClasses());
    const std::string both = text.next(testAlert("first")) + text.next(testAlert("second"));
    EXPECT_EQ(parseMof(both, "out").instances.size(), 2U);
}
