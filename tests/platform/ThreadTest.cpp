// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Thread.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace QZ;

namespace {

class Doubler : public Thread {
public:
    bool takesSignals = true;

protected:
    int run(void* argument) override {
        sigset_t blocked;
        pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
        takesSignals = sigismember(&blocked, SIGTERM) == 0;
        return 2 * *static_cast<int*>(argument);
    }
};

}  // namespace

TEST(Thread, RunsWithItsArgumentAndAnswersTheResult) {
    int argument = 21;
    Doubler thread;
    thread.start(&argument);
    EXPECT_EQ(42, thread.join());
}

TEST(Thread, LeavesSignalsToTheServersThreads) {
    int argument = 0;
    Doubler thread;
    thread.start(&argument);
    thread.join();
    EXPECT_FALSE(thread.takesSignals);
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(0, sigismember(&blocked, SIGTERM));
}

TEST(Thread, JoinsNothingWhereNothingWasStarted) {
    EXPECT_EQ(0, Doubler().join());
}
