// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// From a subscription to the listener, over HTTP.

#include "Subscriptions.h"

#include <Pegasus/Common/CIMPropertyList.h>
#include <gmock/gmock.h>

#include <condition_variable>

#include "AlertListener.h"
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

    void ring(Uint32 number) {
        CIMInstance bell = Parts("TEST_Bell")
                               .set("Id", "TEST_Alert")
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
                                 HasSubstr("given up: the server stops")));
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

TEST_F(SubscriptionsTest, AreNotMadeWhereTheProviderRefuses) {
    EXPECT_EQ(refusal([&] { subscribe("a", "http://a/", "SELECT * FROM TEST_RefusedAlert"); }),
              "2 nobody may have that");
    EXPECT_TRUE(subscriptions->instances(_interop, SUBSCRIPTION_CLASS).empty());
    EXPECT_EQ(subscriptions->instances(_interop, FILTER_CLASS).size(), 1U);
    subscriptions->remove(subscriptions->instances(_interop, FILTER_CLASS)[0].getPath());
    subscriptions->remove(subscriptions->instances(_interop, DESTINATION_CLASS)[0].getPath());
    EXPECT_THAT(machine.folder().read("data/indications.mof"), testing::Not(HasSubstr("#pragma")));
}
