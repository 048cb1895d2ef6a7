// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpWorkers.h"

#include <gtest/gtest.h>

#include <boost/asio/post.hpp>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "HttpLoop.h"

namespace QZ {
namespace {

constexpr std::chrono::seconds PATIENCE{20};

class Call : public HttpCall {
public:
    void expire(HttpReply::Late, bool) override {}
};

// A loop that three threads serve at a time, of which those are counted that are held up.
class HttpWorkersTest : public testing::Test {
protected:
    HttpWorkersTest() { workers->start(loop, 3); }
    ~HttpWorkersTest() override {
        letGo(100);
        loop->endWithoutWork();
        EXPECT_EQ(workers->waitForEnd(std::chrono::steady_clock::now() + PATIENCE), 0U);
    }

    // Tasks that hold their threads up until they are let go, in the handler or not.
    void post(int count, bool inHandler = false) {
        {
            const std::lock_guard<std::mutex> lock(_mutex);
            _posted += count;
        }
        for (int i = 0; i < count; ++i) {
            boost::asio::post(loop->io, [this, inHandler] {
                const auto call = inHandler ? std::make_shared<Call>() : nullptr;
                if (call) {
                    loop->enterHandler(call, std::chrono::steady_clock::now() + PATIENCE);
                }
                _holdUp();
                if (call) {
                    loop->leaveHandler(call);
                }
            });
        }
    }
    void letGo(int count) {
        const std::lock_guard<std::mutex> lock(_mutex);
        _mayGo += count;
        _changed.notify_all();
    }
    void waitUntilDone(int count) {
        std::unique_lock<std::mutex> lock(_mutex);
        EXPECT_TRUE(_changed.wait_for(lock, PATIENCE, [&] { return _done == count; }));
    }
    void waitForAll() { waitUntilDone(_posted); }
    // As many serve as if nothing had happened, when all that were held up came back. Which tasks
    // are let go first is chance.
    void expectThreePlacesAgain() {
        letGo(22);
        waitForAll();
        post(20);
        EXPECT_EQ(heldUp(3), 3);
        letGo(20);
        waitForAll();
    }
    // How many are held up, when it is so many or time is over. More may come a moment later, which
    // is waited for and cannot be ruled out.
    int heldUp(int expected) {
        std::unique_lock<std::mutex> lock(_mutex);
        _changed.wait_for(lock, PATIENCE, [&] { return _heldUp == expected; });
        _changed.wait_for(lock, std::chrono::milliseconds(5), [&] { return _heldUp > expected; });
        return _heldUp;
    }

    const std::shared_ptr<HttpWorkers> workers = std::make_shared<HttpWorkers>(9, 2);
    const std::shared_ptr<HttpLoop> loop = std::make_shared<HttpLoop>(workers);

private:
    void _holdUp() {
        std::unique_lock<std::mutex> lock(_mutex);
        ++_heldUp;
        _changed.notify_all();
        _changed.wait(lock, [this] { return _mayGo > 0; });
        --_mayGo;
        --_heldUp;
        ++_done;
        _changed.notify_all();
    }

    std::mutex _mutex;
    std::condition_variable _changed;
    int _posted = 0;
    int _heldUp = 0;
    int _mayGo = 0;
    int _done = 0;
};

TEST_F(HttpWorkersTest, ServesByAsManyThreadsAsHaveAPlace) {
    post(20);
    EXPECT_EQ(heldUp(3), 3);
    workers->offerPlace();
    EXPECT_EQ(heldUp(4), 4);
    letGo(8);
    waitUntilDone(8);
    EXPECT_EQ(heldUp(4), 4);
}

TEST_F(HttpWorkersTest, PutsAnotherInThePlaceOfOneThatIsHeldUpInTheHandler) {
    for (int round = 0; round < 3; ++round) {
        post(2, true);
        EXPECT_EQ(heldUp(2), 2);
        // Seen twice, they are replaced, once.
        for (int look = 0; look < 4; ++look) {
            EXPECT_TRUE(loop->watch(std::chrono::steady_clock::now()));
        }
        post(20);
        EXPECT_EQ(heldUp(5), 5);
        expectThreePlacesAgain();
    }
}

TEST_F(HttpWorkersTest, KeepsItsPlacesWhereThreadsAreLost) {
    for (int round = 0; round < 3; ++round) {
        post(2, true);
        EXPECT_EQ(heldUp(2), 2);
        loop->watch(std::chrono::steady_clock::now() + 2 * PATIENCE);
        EXPECT_EQ(workers->lostThreads(), 2U);
        post(20);
        EXPECT_EQ(heldUp(5), 5);
        expectThreePlacesAgain();
        while (workers->lostThreads() != 0) {
            std::this_thread::yield();
        }
    }
}

}  // namespace
}  // namespace QZ
