// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertQueue.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <thread>

#include "TestAlert.h"

using namespace QZ;
using namespace Pegasus;

namespace {

bool _isReadable(int descriptor) {
    pollfd waited{descriptor, POLLIN, 0};
    return poll(&waited, 1, 0) == 1;
}

std::string _take(AlertQueue& queue) {
    const auto alert = queue.take();
    return alert ? make_string(alert->getProperty(0).getValue().toString()) : "none";
}

}  // namespace

TEST(AlertQueue, IsReadableUntilAllIsTaken) {
    AlertQueue queue;
    EXPECT_FALSE(_isReadable(queue.descriptor()));
    EXPECT_EQ(_take(queue), "none");
    queue.put(testAlert("first"));
    queue.put(testAlert("second"));
    EXPECT_TRUE(_isReadable(queue.descriptor()));
    EXPECT_EQ(_take(queue), "first");
    EXPECT_TRUE(_isReadable(queue.descriptor()));
    EXPECT_EQ(_take(queue), "second");
    EXPECT_EQ(_take(queue), "none");
    EXPECT_FALSE(_isReadable(queue.descriptor()));
}

TEST(AlertQueue, LosesNothingBetweenThreads) {
    AlertQueue queue;
    constexpr int each = 2000;
    const auto fill = [&queue] {
        for (int i = 0; i < each; ++i) {
            queue.put(testAlert("one"));
        }
    };
    std::thread first(fill);
    std::thread second(fill);
    int taken = 0;
    while (taken < 2 * each) {
        pollfd waited{queue.descriptor(), POLLIN, 0};
        ASSERT_EQ(poll(&waited, 1, 10000), 1) << "after " << taken;
        taken += queue.take() ? 1 : 0;
    }
    first.join();
    second.join();
    EXPECT_EQ(_take(queue), "none");
}
