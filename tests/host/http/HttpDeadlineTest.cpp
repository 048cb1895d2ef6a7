// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpDeadline.h"

#include <gtest/gtest.h>

#include <boost/asio/post.hpp>
#include <thread>

namespace QZ {
namespace {

using std::chrono::milliseconds;

// Asio's timers go by the steady clock, which nothing stands in for: a few milliseconds pass.
class HttpDeadlineTest : public testing::Test {
protected:
    boost::asio::io_context io;
    int over = 0;
    HttpDeadline deadline{HttpStrand(io.get_executor()), [this] { ++over; }};
    std::shared_ptr<int> owner = std::make_shared<int>();
};

TEST_F(HttpDeadlineTest, IsOverOnce) {
    deadline.set(milliseconds(1), owner);
    io.run();
    EXPECT_EQ(over, 1);
    EXPECT_EQ(owner.use_count(), 1);
}

TEST_F(HttpDeadlineTest, IsMovedBothWays) {
    deadline.set(milliseconds(60'000), owner);
    deadline.set(milliseconds(1), owner);
    io.run();
    EXPECT_EQ(over, 1);
    deadline.set(milliseconds(1), owner);
    deadline.set(milliseconds(20), owner);
    io.restart();
    io.run();
    EXPECT_EQ(over, 2);
}

TEST_F(HttpDeadlineTest, IsSetAgainOnceItWasCancelled) {
    deadline.set(milliseconds(1), owner);
    deadline.cancel();
    deadline.set(milliseconds(5), owner);
    io.run();
    EXPECT_EQ(over, 1);
    EXPECT_EQ(owner.use_count(), 1);
}

TEST_F(HttpDeadlineTest, LetsItsOwnerGoWhenCancelled) {
    deadline.set(milliseconds(60'000), owner);
    deadline.cancel();
    io.run();
    EXPECT_EQ(over, 0);
    EXPECT_EQ(owner.use_count(), 1);
}

TEST_F(HttpDeadlineTest, LetsItsOwnerGoWhenCancelledAsTheTimerEnds) {
    deadline.set(milliseconds(1), owner);
    deadline.set(milliseconds(60'000), owner);
    std::this_thread::sleep_for(milliseconds(2));  // it ended, and has not been heard
    boost::asio::post(io, [this] { deadline.cancel(); });
    io.run_for(std::chrono::seconds(5));
    EXPECT_TRUE(io.stopped());  // nothing is left to wait for
    EXPECT_EQ(over, 0);
    EXPECT_EQ(owner.use_count(), 1);
}

}  // namespace
}  // namespace QZ
