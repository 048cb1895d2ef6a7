// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CheckPool.h"

#include <gtest/gtest.h>

#include <future>

namespace QZ {
namespace {

// Holds up whoever passes until it is opened.
class Gate {
public:
    void pass() const { _opened.wait(); }
    void open() { _promise.set_value(); }

private:
    std::promise<void> _promise;
    std::shared_future<void> _opened = _promise.get_future().share();
};

// A job that is waited for.
class Awaited {
public:
    CheckPool::Job job(const Gate* gate = nullptr) {
        return [this, gate] {
            _begun.set_value();
            if (gate) {
                gate->pass();
            }
            _ended.set_value();
        };
    }
    void awaitBegin() { _begun.get_future().wait(); }
    void awaitEnd() { _ended.get_future().wait(); }

private:
    std::promise<void> _begun;
    std::promise<void> _ended;
};

TEST(CheckPool, KeepsAPlaceForOthersThanWhoeverIsSlow) {
    Gate gate;
    Awaited first;
    Awaited second;
    Awaited waiting;
    Awaited other;
    CheckPool pool({4, 8});
    ASSERT_TRUE(pool.submit("bad", first.job(&gate)));
    ASSERT_TRUE(pool.submit("bad", second.job(&gate)));
    first.awaitBegin();
    second.awaitBegin();
    ASSERT_TRUE(pool.submit("bad", waiting.job()));
    ASSERT_TRUE(pool.submit("good", other.job()));
    other.awaitEnd();
    gate.open();
    waiting.awaitEnd();
}

TEST(CheckPool, RefusesWhatItHasNoPlaceFor) {
    Gate gate;
    Awaited running;
    CheckPool pool({1, 4});
    ASSERT_TRUE(pool.submit("one", running.job(&gate)));
    running.awaitBegin();
    const auto nothing = [] {};
    EXPECT_TRUE(pool.submit("bad", nothing));
    EXPECT_TRUE(pool.submit("bad", nothing));
    EXPECT_FALSE(pool.submit("bad", nothing)) << "more than half of the places";
    EXPECT_TRUE(pool.submit("good", nothing));
    EXPECT_TRUE(pool.submit("better", nothing));
    EXPECT_TRUE(pool.submit("best", nothing)) << "bad has two";
    EXPECT_FALSE(pool.submit("last", nothing)) << "more than there are";
    gate.open();
}

TEST(CheckPool, TakesPlacesFromThoseWhoHaveMost) {
    Gate gate;
    Awaited running;
    std::string forgotten;  // which the pool adds to until its end
    CheckPool pool({1, 4});
    ASSERT_TRUE(pool.submit("one", running.job(&gate)));
    running.awaitBegin();
    for (const char* const name : {"bad", "worse", "bad", "worse"}) {
        ASSERT_TRUE(pool.submit(
            name, [] {}, [&forgotten, name] { forgotten += name; }));
    }
    EXPECT_TRUE(pool.submit("good", [] {}));
    EXPECT_TRUE(pool.submit("better", [] {}));
    EXPECT_EQ("badworse", forgotten);
    EXPECT_FALSE(pool.submit("bad", [] {}));
    gate.open();
}

TEST(CheckPool, BeginsWithThoseWhoWaitForTheirFirstTurn) {
    Gate gate;
    Awaited running;
    Awaited last;
    std::string order;
    CheckPool pool({1, 8});
    ASSERT_TRUE(pool.submit("bad", running.job(&gate)));
    running.awaitBegin();
    ASSERT_TRUE(pool.submit("bad", [&order] { order += "b"; }));
    ASSERT_TRUE(pool.submit("bad", last.job()));
    ASSERT_TRUE(pool.submit("good", [&order] { order += "g"; }));
    gate.open();
    last.awaitEnd();
    EXPECT_EQ("gb", order);
}

TEST(CheckPool, SaysAtOnceWhatItForgets) {
    Gate gate;
    Awaited running;
    Awaited forgotten;
    auto pool = std::make_unique<CheckPool>(CheckPool::Limits{1, 4});
    ASSERT_TRUE(pool->submit("one", running.job(&gate)));
    running.awaitBegin();
    ASSERT_TRUE(pool->submit(
        "other", [] { ADD_FAILURE() << "it is done all the same"; }, forgotten.job()));
    const auto gone = std::async(std::launch::async, [&pool] { pool.reset(); });
    forgotten.awaitEnd();
    gate.open();
}

}  // namespace
}  // namespace QZ
