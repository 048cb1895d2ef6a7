// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DeliveryQueues.h"

#include <gmock/gmock.h>

#include <atomic>
#include <condition_variable>
#include <future>
#include <memory>
#include <vector>

#include "ExportMessage.h"
#include "ManualClock.h"
#include "SteppedClock.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

DeliveryQueues::Alert _alert(const std::string& url, unsigned number = 0) {
    CIMInstance instance{CIMName("TEST_Alert")};
    instance.addProperty(CIMProperty(CIMName("Number"), CIMValue(Uint32(number))));
    return {url, instance};
}

unsigned _number(const DeliveryQueues::Alert& alert) {
    Uint32 number = 0;
    alert.instance.getProperty(0).getValue().get(number);
    return number;
}

// What happened, from whatever thread.
template <class T>
class Record {
public:
    void add(const T& one) {
        const std::lock_guard<std::mutex> lock(_mutex);
        _all.push_back(one);
        _changed.notify_all();
    }
    std::vector<T> await(std::size_t count) {
        std::unique_lock<std::mutex> lock(_mutex);
        _changed.wait_for(lock, std::chrono::seconds(20), [&] { return _all.size() >= count; });
        return _all;
    }

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    std::vector<T> _all;
};

}  // namespace

TEST(DeliveryQueues, SendsEachAlertOnceAndInOrder) {
    Record<unsigned> sent;
    Record<std::string> log;
    {
        DeliveryQueues queues([&](const auto& alert) { sent.add(_number(alert)); },
                              [&](const std::string& line) { log.add(line); });
        queues.push("a", _alert("http://a/", 1));
        sent.await(1);
        queues.push("a", _alert("http://a/", 2));
        queues.push("a", _alert("http://a/", 3));
        sent.await(3);
    }
    EXPECT_THAT(sent.await(3), ElementsAre(1, 2, 3));
    EXPECT_TRUE(log.await(0).empty());
}

TEST(DeliveryQueues, TriesThreeTimesAndGivesUp) {
    ManualClock clock(0);
    Record<std::int64_t> attempts;
    Record<std::string> log;
    DeliveryQueues queues(
        [&](const auto&) {
            attempts.add(clock.milliseconds());
            throw Error("it sleeps");
        },
        [&](const std::string& line) { log.add(line); });
    queues.push("a", _alert("http://a/"));
    EXPECT_THAT(log.await(1), ElementsAre("alert TEST_Alert for http://a/: given up: it sleeps"));
    EXPECT_THAT(attempts.await(3), ElementsAre(0, 10'000, 70'000));
}

TEST(DeliveryQueues, SendsOnceTheListenerIsBack) {
    const ManualClock clock;
    Record<unsigned> sent;
    Record<std::string> log;
    bool isAway = true;
    DeliveryQueues queues(
        [&](const auto& alert) {
            if (std::exchange(isAway, false)) {
                throw Error("it sleeps");
            }
            sent.add(_number(alert));
        },
        [&](const std::string& line) { log.add(line); });
    queues.push("a", _alert("http://a/", 1));
    queues.push("a", _alert("http://a/", 2));
    EXPECT_THAT(sent.await(2), ElementsAre(1, 2));
    EXPECT_TRUE(log.await(0).empty());
}

TEST(DeliveryQueues, DoesNotInsistWhereAnAlertIsRefused) {
    Record<std::string> log;
    DeliveryQueues queues([](const auto&) { throw ExportRefused("CIM status 1"); },
                          [&](const std::string& line) { log.add(line); });
    queues.push("a", _alert("http://a/"));
    EXPECT_THAT(log.await(1), ElementsAre("alert TEST_Alert for http://a/: refused: CIM status 1"));
}

TEST(DeliveryQueues, LetsASlowListenerDelayNoOther) {
    Record<std::string> sent;
    std::promise<void> wakesUp;
    std::shared_future<void> awake(wakesUp.get_future());
    DeliveryQueues queues(
        [&](const auto& alert) {
            if (alert.url == "http://slow/") {
                awake.wait();
            }
            sent.add(alert.url);
        },
        [](const std::string&) {});
    queues.push("slow", _alert("http://slow/"));
    queues.push("quick", _alert("http://quick/"));
    EXPECT_THAT(sent.await(1), ElementsAre("http://quick/"));
    wakesUp.set_value();
    EXPECT_THAT(sent.await(2), ElementsAre("http://quick/", "http://slow/"));
}

TEST(DeliveryQueues, KeepsTheNewestAlertsOfAFullQueue) {
    Record<unsigned> begun;
    Record<std::string> log;
    std::promise<void> wakesUp;
    std::shared_future<void> awake(wakesUp.get_future());
    DeliveryQueues queues(
        [&](const auto& alert) {
            begun.add(_number(alert));
            awake.wait();
        },
        [&](const std::string& line) { log.add(line); });
    queues.push("a", _alert("http://a/", 0));
    begun.await(1);
    for (unsigned number = 1; number <= DeliveryQueues::LONGEST + 2; ++number) {
        queues.push("a", _alert("http://a/", number));
    }
    EXPECT_EQ(log.await(2).size(), 2U);
    EXPECT_THAT(log.await(2)[0], HasSubstr("given up: too many are waiting"));
    wakesUp.set_value();
    const std::vector<unsigned> all = begun.await(DeliveryQueues::LONGEST + 1);
    ASSERT_EQ(all.size(), DeliveryQueues::LONGEST + 1);
    EXPECT_EQ(all[1], 3U);
    EXPECT_EQ(all.back(), DeliveryQueues::LONGEST + 2);
}

// A listener that is away for the first alert, and keeps asleep or comes back. Time stands still,
// but for what an attempt takes.
class DeliveryQueuesEnd : public testing::Test {
protected:
    void push(unsigned count) {
        for (unsigned number = 1; number <= count; ++number) {
            queues->push("a", _alert("http://a/", number));
            attempts.await(1);
        }
    }
    std::vector<unsigned> attempted() { return attempts.await(0); }
    std::vector<std::string> logged() { return log.await(0); }

    SteppedClock clock;
    std::atomic<bool> isBack{false};
    std::atomic<unsigned> duration{0};
    Record<unsigned> attempts;
    Record<std::string> log;
    std::unique_ptr<DeliveryQueues> queues = std::make_unique<DeliveryQueues>(
        [this](const auto& alert) {
            attempts.add(_number(alert));
            if (_number(alert) == 1 || !isBack) {
                throw Error("it sleeps");
            }
            clock.sleepMilliseconds(duration);
        },
        [this](const std::string& line) { log.add(line); });
};

TEST_F(DeliveryQueuesEnd, WaitsForNoSecondAttempt) {
    push(3);
    queues.reset();
    EXPECT_THAT(attempted(), ElementsAre(1, 2));
    EXPECT_THAT(logged(),
                ElementsAre(HasSubstr("given up: it sleeps"), HasSubstr("given up: it sleeps"),
                            HasSubstr("given up: the server stops")));
}

TEST_F(DeliveryQueuesEnd, SendsWhatWasNeverTried) {
    push(3);
    isBack = true;
    queues.reset();
    EXPECT_THAT(attempted(), ElementsAre(1, 2, 3));
    EXPECT_THAT(logged(), ElementsAre(HasSubstr("given up: it sleeps")));
}

TEST_F(DeliveryQueuesEnd, BeginsAttemptsForFiveSeconds) {
    push(5);
    isBack = true;
    duration = 2500;
    queues.reset();
    EXPECT_THAT(attempted(), ElementsAre(1, 2, 3));
    EXPECT_THAT(logged(), ElementsAre(HasSubstr("given up: it sleeps"),
                                      HasSubstr("given up: the server stops"),
                                      HasSubstr("given up: the server stops")));
}

TEST_F(DeliveryQueuesEnd, ComesWithTheDestination) {
    push(3);
    queues->forget("a");
    EXPECT_THAT(log.await(3),
                ElementsAre(HasSubstr("given up: it sleeps"), HasSubstr("given up: it sleeps"),
                            HasSubstr("given up: the destination is deleted")));
    EXPECT_THAT(attempted(), ElementsAre(1, 2));
    // One of that name knows nothing of the other.
    isBack = true;
    queues->push("a", _alert("http://a/", 4));
    EXPECT_THAT(attempts.await(3), ElementsAre(1, 2, 4));
    queues->forget("unknown");
    queues.reset();
    EXPECT_EQ(logged().size(), 3U);
}

TEST_F(DeliveryQueuesEnd, IsNoReasonToDropWhatNobodyTried) {
    push(3);
    isBack = true;
    queues->forget("a");
    EXPECT_THAT(attempts.await(3), ElementsAre(1, 2, 3));
    queues.reset();
    EXPECT_THAT(logged(), ElementsAre(HasSubstr("given up: it sleeps")));
}
