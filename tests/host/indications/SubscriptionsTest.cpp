// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// From a subscription to the listener, over HTTP.

#include "Subscriptions.h"

#include <Pegasus/Common/CIMPropertyList.h>
#include <gmock/gmock.h>

#include <condition_variable>

#include "AlertListener.h"
#include "SteppedClock.h"
#include "SubscriptionParts.h"
#include "TestMachine.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// A listener, and the numbers of the alerts that it took.
class Listener {
public:
    std::vector<Uint32> await(std::size_t count) {
        std::unique_lock<std::mutex> lock(_mutex);
        _changed.wait_for(lock, std::chrono::seconds(20), [&] { return _taken.size() >= count; });
        return _taken;
    }
    const std::string& url() const { return _listener.url(); }

private:
    void _take(const CIMInstance& alert) {
        Uint32 number = 0;
        alert.getProperty(alert.findProperty(CIMName("Number"))).getValue().get(number);
        const std::lock_guard<std::mutex> lock(_mutex);
        _taken.push_back(number);
        _changed.notify_all();
    }

    std::mutex _mutex;
    std::condition_variable _changed;
    std::vector<Uint32> _taken;
    AlertListener _listener{[this](const CIMInstance& alert) { _take(alert); }};
};

const CIMNamespaceName _interop("root/interop");

class SubscriptionsTest : public testing::Test {
protected:
    SubscriptionsTest() { restart(); }

    void restart() {
        subscriptions.reset();
        subscriptions = std::make_unique<Subscriptions>(
            providers, machine.folder().file("data/indications.mof"),
            [this](const std::string& line) {
                const std::lock_guard<std::mutex> lock(mutex);
                log.push_back(line);
            });
        subscriptions->start();
    }

    CIMObjectPath subscribe(
        const char* name, const std::string& url,
        const std::string& query = "SELECT * FROM TEST_Alert WHERE Number > 0") {
        return subscriptions->create(
            _interop, subscription(subscriptions->create(_interop, filter(name, query)),
                                   subscriptions->create(_interop, destination(name, url))));
    }

    void ring(Uint32 number, const char* alert = "TEST_Alert") {
        CIMInstance bell = Parts("TEST_Bell")
                               .set("Id", alert)
                               .set("Number", number)
                               .set("PerceivedSeverity", Uint16(4));
        bell.setPath(CIMObjectPath(String(), "root/tavqz", "TEST_Bell"));
        providers.createInstance(bell);
    }

    TestMachine machine;
    InProcessServer providers{makeAlertSchema(), [](const std::string&) { return ALERT_MODULE; }};
    std::mutex mutex;
    std::vector<std::string> log;
    std::unique_ptr<Subscriptions> subscriptions;
};

}  // namespace

TEST_F(SubscriptionsTest, TellAListenerOfEachAlertOnce) {
    Listener listener;
    subscribe("a", listener.url());
    ring(1);
    EXPECT_THAT(listener.await(1), ElementsAre(1));
    ring(2);
    EXPECT_THAT(listener.await(2), ElementsAre(1, 2));
    subscriptions.reset();
    EXPECT_THAT(listener.await(0), ElementsAre(1, 2));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SubscriptionsTest, TellALivingListenerBesideADeadOne) {
    std::string dead;
    {
        const Listener gone;
        dead = gone.url();
    }
    Listener living;
    subscribe("dead", dead);
    subscribe("living", living.url());
    ring(1);
    ring(2);
    EXPECT_THAT(living.await(2), ElementsAre(1, 2));
    subscriptions.reset();
    EXPECT_THAT(log, ElementsAre(HasSubstr("given up: The server at 127.0.0.1:"),
                                 HasSubstr("given up: The server at 127.0.0.1:")));
}

TEST_F(SubscriptionsTest, TellWhatTheLastCheckFinds) {
    Listener listener;
    const CIMObjectPath path = subscribe("a", listener.url());
    ring(7, "at the end");
    subscriptions->remove(path);
    for (const char* const className : {FILTER_CLASS, DESTINATION_CLASS}) {
        subscriptions->remove(subscriptions->instances(_interop, className)[0].getPath());
    }
    EXPECT_THAT(listener.await(1), ElementsAre(7));
    subscribe("b", listener.url());
    subscriptions.reset();
    EXPECT_THAT(listener.await(2), ElementsAre(7, 7));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SubscriptionsTest, OutliveTheServer) {
    Listener listener;
    const CIMObjectPath path = subscribe("a", listener.url());
    restart();
    ring(1);
    EXPECT_THAT(listener.await(1), ElementsAre(1));
    subscriptions->remove(path);
    restart();
    ring(2);
    EXPECT_THAT(listener.await(0), ElementsAre(1));
}

TEST_F(SubscriptionsTest, AreDisabledAndEnabledAgain) {
    Listener listener;
    const CIMObjectPath path = subscribe("a", listener.url());
    const auto set = [&](Uint16 state) {
        subscriptions->modify(path,
                              Parts("CIM_IndicationSubscription").set("SubscriptionState", state),
                              CIMPropertyList());
    };
    set(4);
    ring(1);
    set(2);
    set(2);
    ring(2);
    EXPECT_THAT(listener.await(1), ElementsAre(2));
}

TEST_F(SubscriptionsTest, TellTheProviderOfAnotherPolicy) {
    const CIMObjectPath path = subscribe("a", "http://127.0.0.1:1/");
    const auto set = [&](Uint16 policy, Uint16 state) {
        subscriptions->modify(path,
                              Parts("CIM_IndicationSubscription")
                                  .set("RepeatNotificationPolicy", policy)
                                  .set("SubscriptionState", state),
                              CIMPropertyList());
    };
    calls(providers);
    set(3, 2);
    set(3, 2);
    EXPECT_THAT(calls(providers), ElementsAre("modify a TEST_Alert TEST_SpecialAlert 3"));
    EXPECT_EQ(refusal([&] { set(4, 2); }), "7 nothing is delayed");
    EXPECT_THAT(calls(providers), ElementsAre("modify a TEST_Alert TEST_SpecialAlert 4",
                                              "modify a TEST_Alert TEST_SpecialAlert 3"));
    EXPECT_EQ(numberOf(subscriptions->get(path), "RepeatNotificationPolicy"), 3);
    set(3, 4);
    calls(providers);
    set(4, 4);
    EXPECT_THAT(calls(providers), IsEmpty()) << "nobody knows of it";
    set(4, 2);
    EXPECT_THAT(
        calls(providers),
        ElementsAre(testing::StartsWith("create a TEST_Alert TEST_SpecialAlert 4 "), "enable"));
}

TEST_F(SubscriptionsTest, AreNotMadeWhereTheProviderRefuses) {
    EXPECT_EQ(refusal([&] { subscribe("a", "http://a/", "SELECT * FROM TEST_RefusedAlert"); }),
              "2 nobody may have that");
    EXPECT_TRUE(subscriptions->instances(_interop, SUBSCRIPTION_CLASS).empty());
    EXPECT_EQ(subscriptions->instances(_interop, FILTER_CLASS).size(), 1U);
    subscriptions->remove(subscriptions->instances(_interop, FILTER_CLASS)[0].getPath());
    subscriptions->remove(subscriptions->instances(_interop, DESTINATION_CLASS)[0].getPath());
    EXPECT_THAT(machine.folder().read("data/indications.mof"), testing::Not(HasSubstr("#pragma")));
}

TEST_F(SubscriptionsTest, GoAwayWhenTheirTimeIsOver) {
    SteppedClock clock;
    restart();
    Listener listener;
    const CIMObjectPath path = subscribe("a", listener.url());
    const auto last = [&](const CIMObjectPath& which, Uint64 seconds) {
        subscriptions->modify(which,
                              Parts("CIM_IndicationSubscription")
                                  .set("SubscriptionDuration", seconds)
                                  .set("SubscriptionState", Uint16(seconds > 5000 ? 4 : 2)),
                              CIMPropertyList());
    };
    last(path, 1000);
    clock.advance(999'000, 1);
    ring(1);
    EXPECT_THAT(listener.await(1), ElementsAre(1));
    last(path, 2000);
    // Disabled, it gives the thread something to wait for at the end.
    last(subscribe("b", listener.url()), 10'000);
    clock.advance(1'000'999, 1);
    ring(2);
    EXPECT_THAT(listener.await(2), ElementsAre(1, 2));
    calls(providers);
    clock.advance(1, 1);
    EXPECT_THAT(calls(providers), ElementsAre("delete a TEST_Alert TEST_SpecialAlert", "disable"));
    EXPECT_EQ(subscriptions->instances(_interop, SUBSCRIPTION_CLASS).size(), 1U);
    EXPECT_THAT(listener.await(0), ElementsAre(1, 2));
    EXPECT_THAT(log, IsEmpty());
    subscriptions.reset();  // its thread waits by this clock
}

TEST_F(SubscriptionsTest, ExpireWhileThereIsNoServer) {
    SteppedClock clock;
    const CIMObjectPath path = subscribe("a", "http://127.0.0.1:1/");
    subscriptions->modify(
        path, Parts("CIM_IndicationSubscription").set("SubscriptionDuration", Uint64(100)),
        CIMPropertyList());
    subscriptions.reset();
    calls(providers);
    clock.sleepMilliseconds(100'000);
    restart();
    EXPECT_THAT(calls(providers), IsEmpty()) << "no provider hears of it";
    EXPECT_TRUE(subscriptions->instances(_interop, SUBSCRIPTION_CLASS).empty());
    EXPECT_THAT(log, IsEmpty());
}
