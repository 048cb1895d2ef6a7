// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertRouter.h"

#include <gmock/gmock.h>

#include "SubscriptionParts.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// A router with the provider of the tests; what it delivers as "destination number".
class AlertRouterTest : public testing::Test {
protected:
    AlertRouterTest() { restart(); }

    void restart() {
        router.reset();
        router = std::make_unique<AlertRouter>(
            providers,
            [this](const std::string& destination, const DeliveryQueues::Alert& alert) {
                const Uint32 at = alert.instance.findProperty(CIMName("Number"));
                delivered.push_back(
                    destination + " " +
                    (at == PEG_NOT_FOUND
                         ? "-"
                         : make_string(alert.instance.getProperty(at).getValue().toString())));
            },
            [this](const std::string& line) { log.push_back(line); });
    }

    static SubscriptionTerms terms(const char* name, const std::string& query,
                                   bool isEnabled = true) {
        const SubscriptionRules rules(alertSchema());
        const CIMNamespaceName interop("root/interop");
        const CIMInstance wanted = rules.made(interop, filter(name, query));
        SubscriptionTerms made;
        made.subscription = rules.made(
            interop,
            subscription(wanted.getPath(), rules.made(interop, destination(name)).getPath()));
        made.wanted = rules.filterTerms(wanted);
        made.destination = name;
        made.isEnabled = isEnabled;
        return made;
    }

    void ring(const char* alert, Uint32 number, Uint16 severity = 0) {
        CIMInstance bell = Parts("TEST_Bell")
                               .set("Id", alert)
                               .set("Number", number)
                               .set("PerceivedSeverity", severity);
        bell.setPath(CIMObjectPath(String(), "root/tavqz", "TEST_Bell"));
        providers.createInstance(bell);
    }

    InProcessServer providers{makeAlertSchema(), [](const std::string&) { return ALERT_MODULE; }};
    std::vector<std::string> delivered;
    std::vector<std::string> log;
    std::unique_ptr<AlertRouter> router;
};

constexpr const char* _all = "SELECT * FROM TEST_Alert";

}  // namespace

TEST_F(AlertRouterTest, EnablesWithTheFirstAndDisablesWithTheLast) {
    const SubscriptionTerms a = terms("a", _all);
    const SubscriptionTerms b = terms("b", "SELECT * FROM TEST_SpecialAlert");
    router->connect(a);
    EXPECT_THAT(calls(providers), ElementsAre("create a TEST_Alert TEST_SpecialAlert 2", "enable"));
    router->connect(b);
    EXPECT_THAT(calls(providers), ElementsAre("create b TEST_SpecialAlert 2"));
    router->disconnect(a);
    EXPECT_THAT(calls(providers), ElementsAre("delete a TEST_Alert TEST_SpecialAlert"));
    router->disconnect(b);
    EXPECT_THAT(calls(providers), ElementsAre("delete b TEST_SpecialAlert", "disable"));
    router->connect(b);
    EXPECT_THAT(calls(providers), ElementsAre("create b TEST_SpecialAlert 2", "enable"));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(AlertRouterTest, TellsProvidersOfTheFilter) {
    router->connect(terms("a", "select  Number from TEST_SpecialAlert where Number=1 or Number=2"));
    EXPECT_THAT(
        calls(providers),
        ElementsAre("create a TEST_SpecialAlert 2 if Number = 1 OR Number = 2 of select  "
                    "Number from TEST_SpecialAlert where Number=1 or Number=2 in root/tavqz "
                    "by WQL and WQL",
                    "enable"));
}

TEST_F(AlertRouterTest, CreatesAllKeptSubscriptionsBeforeItEnables) {
    router->start({terms("a", _all), terms("off", _all, false), terms("b", _all)});
    EXPECT_THAT(calls(providers), ElementsAre("create a TEST_Alert TEST_SpecialAlert 2",
                                              "create b TEST_Alert TEST_SpecialAlert 2", "enable"));
    EXPECT_THAT(delivered, ElementsAre("a 0", "b 0")) << "what was sent as soon as enabled";
    router.reset();
    EXPECT_THAT(calls(providers), ElementsAre("disable")) << "the subscriptions stay";
}

TEST_F(AlertRouterTest, DeliversOnceToEachSubscriptionThatWants) {
    router->connect(terms("all", _all));
    router->connect(terms("severe", "SELECT * FROM TEST_Alert WHERE PerceivedSeverity >= 4"));
    router->connect(terms("special", "SELECT PerceivedSeverity FROM TEST_SpecialAlert"));
    router->connect(terms("off", _all, false));
    delivered.clear();
    ring("TEST_Alert", 1, 2);
    EXPECT_THAT(delivered, ElementsAre("all 1"));
    delivered.clear();
    ring("TEST_Alert", 2, 4);
    EXPECT_THAT(delivered, testing::UnorderedElementsAre("all 2", "severe 2"));
    delivered.clear();
    ring("TEST_SpecialAlert", 3, 7);
    EXPECT_THAT(delivered, testing::UnorderedElementsAre("all 3", "severe 3", "special -"));
    delivered.clear();
    ring("TEST_RefusedAlert", 4);
    EXPECT_THAT(delivered, IsEmpty());
}

TEST_F(AlertRouterTest, DeliversWhatTheLastCheckFinds) {
    const SubscriptionTerms a = terms("a", _all);
    router->connect(a);
    ring("at the end", 7);
    delivered.clear();
    router->disconnect(a);
    EXPECT_THAT(delivered, ElementsAre("a 7"));
    router->connect(a);
    delivered.clear();
    router.reset();
    EXPECT_THAT(delivered, ElementsAre("a 7"));
}

TEST_F(AlertRouterTest, ForgetsASubscriptionThatAProviderRefuses) {
    EXPECT_THAT(refusal([&] { router->connect(terms("a", "SELECT * FROM TEST_RefusedAlert")); }),
                "2 nobody may have that");
    EXPECT_THAT(calls(providers), ElementsAre("create a TEST_RefusedAlert 2"));
    router->start({terms("b", "SELECT * FROM TEST_RefusedAlert"), terms("c", _all)});
    EXPECT_THAT(log, ElementsAre(HasSubstr("nobody may have that")));
    EXPECT_THAT(delivered, ElementsAre("c 0"));
}

TEST_F(AlertRouterTest, AsksNobodyForWhatIsDisabled) {
    const SubscriptionTerms off = terms("off", _all, false);
    router->connect(off);
    router->disconnect(off);
    EXPECT_THAT(calls(providers), IsEmpty());
}
