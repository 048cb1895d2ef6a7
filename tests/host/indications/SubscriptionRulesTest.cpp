// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SubscriptionRules.h"

#include <Pegasus/Common/CIMPropertyList.h>
#include <gmock/gmock.h>

#include "ManualClock.h"
#include "SubscriptionParts.h"
#include "SubscriptionTime.h"

using namespace QZ;
using namespace Pegasus;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

CIMInstance _made(const CIMInstance& given, const char* nameSpace = "root/interop") {
    return SubscriptionRules(alertSchema()).made(CIMNamespaceName(nameSpace), given);
}

std::string _refusal(const CIMInstance& given, const char* nameSpace = "root/interop") {
    return refusal([&] { _made(given, nameSpace); });
}

std::string _refusedQuery(const std::string& query) {
    return _refusal(filter("f", query));
}

}  // namespace

TEST(SubscriptionRules, FillsInWhatAClientLeavesOut) {
    const CIMInstance made = _made(filter("f"));
    EXPECT_EQ(textOf(made, "SystemCreationClassName"), "CIM_ComputerSystem");
    EXPECT_NE(textOf(made, "SystemName"), "");
    EXPECT_EQ(textOf(made, "CreationClassName"), "CIM_IndicationFilter");
    EXPECT_EQ(made.getPath().getNameSpace().getString(), String("root/interop"));
    EXPECT_EQ(made.getPath().getKeyBindings().size(), 4U);
    EXPECT_EQ(made.getPropertyCount(),
              alertSchema().interop.find("CIM_IndicationFilter")->properties.size());
    EXPECT_EQ(textOf(made, "SourceNamespaces"), "");
    EXPECT_EQ(numberOf(_made(destination("d")), "PersistenceType"), 2);
    const CIMInstance subscribed = _made(
        subscription(made.getPath(), CIMObjectPath("CIM_ListenerDestinationCIMXML.Name=\"d\"")));
    EXPECT_EQ(numberOf(subscribed, "SubscriptionState"), 2);
    EXPECT_EQ(numberOf(subscribed, "OnFatalErrorPolicy"), 2);
    EXPECT_EQ(numberOf(subscribed, "RepeatNotificationPolicy"), 2);
    EXPECT_NE(textOf(subscribed, "SubscriptionStartTime"), "");
    EXPECT_EQ(referenceOf(subscribed, "Handler").getNameSpace().getString(),
              String("root/interop"));
}

TEST(SubscriptionRules, TakesAValueThatIsWrittenAsText) {
    EXPECT_EQ(numberOf(_made(destination("d").set("PersistenceType", "3")), "PersistenceType"), 3);
    EXPECT_THAT(_refusal(destination("d").set("PersistenceType", "soon")),
                StartsWith("4 PersistenceType: "));
    EXPECT_THAT(_refusal(destination("d").set("PersistenceType", "70000")),
                StartsWith("4 PersistenceType: "));
    EXPECT_THAT(_refusal(destination("d").set("PersistenceType", "4")),
                StartsWith("4 PersistenceType: the server knows no value 4"));
    EXPECT_THAT(_refusal(filter("f").set("SourceNamespaces", "root/tavqz")),
                StartsWith("4 SourceNamespaces: "));
}

TEST(SubscriptionRules, RefusesWhatIsIncomplete) {
    EXPECT_THAT(_refusal(Parts("CIM_IndicationFilter")),
                StartsWith("4 CIM_IndicationFilter needs a value of Name"));
    EXPECT_THAT(
        _refusal(Parts("CIM_IndicationFilter").set("Name", "f").set("QueryLanguage", "WQL")),
        HasSubstr("needs a value of Query"));
    EXPECT_THAT(_refusal(Parts("CIM_ListenerDestinationCIMXML").set("Name", "d")),
                HasSubstr("needs a value of Destination"));
    EXPECT_THAT(_refusal(Parts("CIM_IndicationSubscription")), HasSubstr("needs a value of"));
    EXPECT_THAT(_refusal(filter("f").set("Colour", "red")),
                StartsWith("4 CIM_IndicationFilter has no property Colour"));
    EXPECT_THAT(_refusal(filter("f").set("CreationClassName", "Other")),
                StartsWith("4 CreationClassName: "));
    EXPECT_THAT(_refusal(Parts("CIM_ListenerDestination").set("Name", "d")), StartsWith("5 "));
    EXPECT_THAT(_refusal(filter("f"), "root/other"), StartsWith("3 "));
}

TEST(SubscriptionRules, BeginASubscriptionNow) {
    const ManualClock clock;
    const CIMObjectPath of("CIM_IndicationFilter.Name=\"f\"");
    const CIMObjectPath to("CIM_ListenerDestinationCIMXML.Name=\"d\"");
    Parts given = subscription(of, to);
    given.set("SubscriptionStartTime", CIMDateTime("20200101000000.000000+000"))
        .set("TimeOfLastStateChange", CIMDateTime("20200101000000.000000+000"))
        .set("SubscriptionTimeRemaining", Uint64(7))
        .set("SubscriptionDuration", Uint64(9));
    const CIMInstance made = _made(given);
    for (const char* const property : {"SubscriptionStartTime", "TimeOfLastStateChange"}) {
        EXPECT_EQ(textOf(made, property), make_string(currentTime().toString())) << property;
    }
    EXPECT_EQ(textOf(made, "SubscriptionDuration"), "9");
    EXPECT_EQ(textOf(made, "SubscriptionTimeRemaining"), "") << "which is no thing to keep";
    const CIMInstance restored =
        SubscriptionRules(alertSchema()).restored(CIMNamespaceName("root/interop"), given);
    EXPECT_EQ(textOf(restored, "SubscriptionStartTime"), "20200101000000.000000+000");
    EXPECT_THAT(_refusal(subscription(of, to).set("SubscriptionDuration", Uint64(0))),
                StartsWith("4 SubscriptionDuration: that time is over already"));
}

TEST(SubscriptionRules, HoldAQueryAgainstTheModel) {
    EXPECT_EQ(_refusedQuery("SELECT * FROM CIM_AlertIndication"), "accepted");
    EXPECT_EQ(_refusedQuery("SELECT * FROM test_specialalert WHERE Number = 1"), "accepted");
    EXPECT_THAT(_refusedQuery("SELECT"), StartsWith("15 "));
    EXPECT_THAT(_refusedQuery("SELECT * FROM TEST_Alert WHERE Colour = 1"),
                StartsWith("15 the class TEST_Alert has no property Colour"));
    EXPECT_THAT(_refusedQuery("SELECT * FROM TEST_None"),
                StartsWith("7 root/tavqz has no indication class TEST_None"));
    EXPECT_THAT(_refusedQuery("SELECT * FROM TEST_Bell"),
                StartsWith("7 root/tavqz has no indication class TEST_Bell"));
    EXPECT_THAT(_refusedQuery("SELECT * FROM TEST_UnsentAlert"),
                StartsWith("7 nobody sends indications of TEST_UnsentAlert"));
    const auto in = [](const char* source) {
        return Parts("CIM_IndicationFilter")
            .set("Name", "f")
            .set("SourceNamespace", source)
            .set("Query", "SELECT * FROM TEST_Alert")
            .set("QueryLanguage", "WQL");
    };
    EXPECT_THAT(_refusal(in("root/other")), StartsWith("4 SourceNamespaces: the server has no"));
    EXPECT_THAT(_refusal(in("")), StartsWith("7 root/interop has no indication class"));
    EXPECT_EQ(_refusal(in(""), "root/tavqz"), "accepted") << "the filter's own namespace";
    const auto spoken = [](const char* language) {
        return Parts("CIM_IndicationFilter")
            .set("Name", "f")
            .set("Query", "SELECT * FROM TEST_Alert")
            .set("QueryLanguage", language);
    };
    EXPECT_THAT(_refusal(spoken("DMTF:CQL"), "root/tavqz"), StartsWith("14 "));
    EXPECT_EQ(_refusal(spoken("wql"), "root/tavqz"), "accepted");
}

TEST(SubscriptionRules, TakeSeveralNamespaces) {
    Array<String> names;
    names.append("root/tavqz");
    Parts several("CIM_IndicationFilter");
    several.set("Name", "f").set("Query", "SELECT * FROM TEST_Alert").set("QueryLanguage", "WQL");
    several.set("SourceNamespaces", names);
    EXPECT_EQ(_refusal(several), "accepted");
    EXPECT_EQ(SubscriptionRules(alertSchema()).filterTerms(_made(several)).nameSpaces,
              std::vector<std::string>{"root/tavqz"});
}

TEST(SubscriptionRules, RefusesADestinationThatCannotBeReached) {
    EXPECT_THAT(_refusal(destination("d", "listener")), StartsWith("4 Destination: "));
    EXPECT_EQ(_refusal(destination("d", "https://listener/")), "accepted");
}

TEST(SubscriptionRules, ChangesWhatMayBeWritten) {
    const SubscriptionRules rules(alertSchema());
    const CIMInstance kept = _made(filter("f"));
    const CIMInstance given = filter("other", "SELECT * FROM TEST_SpecialAlert")
                                  .set("SystemName", "other")
                                  .set("ElementName", "e");
    const CIMInstance changed = rules.changed(kept, given, CIMPropertyList());
    EXPECT_EQ(textOf(changed, "Query"), "SELECT * FROM TEST_SpecialAlert");
    EXPECT_EQ(textOf(changed, "Name"), "f");
    EXPECT_TRUE(changed.getPath().identical(kept.getPath()));
    EXPECT_EQ(textOf(kept, "Query"), "SELECT * FROM TEST_Alert");
    Array<CIMName> names;
    names.append(CIMName("QueryLanguage"));
    EXPECT_EQ(textOf(rules.changed(kept, given, CIMPropertyList(names)), "Query"),
              "SELECT * FROM TEST_Alert");
    EXPECT_THAT(refusal([&] { rules.changed(kept, filter("f", "nonsense"), CIMPropertyList()); }),
                StartsWith("15 "));
}

TEST(SubscriptionRules, KnowsAPathHoweverItIsWritten) {
    const SubscriptionRules rules(alertSchema());
    const auto id = [&](const char* path) { return rules.identity(CIMObjectPath(path)); };
    const char* const keys =
        "CreationClassName=\"c\",Name=\"TEST_X.A=\\\"1\\\"\",SystemName=\"s\","
        "SystemCreationClassName=\"t\"";
    const std::string text = std::string("root/interop:CIM_IndicationFilter.") + keys;
    EXPECT_EQ(id(text.c_str()),
              id(("//host/ROOT/interop:cim_indicationfilter." + std::string(keys)).c_str()));
    EXPECT_NE(id(text.c_str()),
              id(("root/tavqz:CIM_IndicationFilter." + std::string(keys)).c_str()));
    EXPECT_THAT(refusal([&] { id("root/interop:CIM_IndicationFilter.Name=\"f\""); }),
                StartsWith("4 the path lacks the key "));
    EXPECT_THAT(refusal([&] { id("root/interop:CIM_Namespace.Name=\"f\""); }), StartsWith("5 "));
}
