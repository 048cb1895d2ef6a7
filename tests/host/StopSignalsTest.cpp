// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "StopSignals.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <pthread.h>
#include <unistd.h>

#include <thread>

using namespace QZ;

namespace {

bool _isReadable(int descriptor) {
    pollfd waited{descriptor, POLLIN, 0};
    return poll(&waited, 1, 0) == 1;
}

bool _isBlocked(int signal) {
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    return sigismember(&mask, signal) == 1;
}

}  // namespace

TEST(StopSignals, AreTakenInsteadOfEndingTheProcess) {
    for (const int signal : {SIGINT, SIGTERM}) {
        StopSignals signals;
        EXPECT_FALSE(_isReadable(signals.descriptor()));
        EXPECT_FALSE(signals.take());
        EXPECT_FALSE(signals.isToldToStop());
        (void)raise(signal);
        EXPECT_TRUE(_isReadable(signals.descriptor()));
        EXPECT_TRUE(signals.take());
        EXPECT_FALSE(signals.take()) << "taken once";
        EXPECT_TRUE(signals.isToldToStop()) << "for good";
    }
}

TEST(StopSignals, AreWaitedFor) {
    StopSignals signals;
    std::thread sender([] { EXPECT_EQ(kill(getpid(), SIGTERM), 0); });
    signals.wait();
    sender.join();
    EXPECT_TRUE(signals.isToldToStop());
    EXPECT_FALSE(signals.take());
}

TEST(StopSignals, LeaveTheMaskAsItWas) {
    sigset_t hangup;
    sigemptyset(&hangup);
    sigaddset(&hangup, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &hangup, nullptr);
    {
        const StopSignals signals;
        EXPECT_TRUE(_isBlocked(SIGTERM));
        EXPECT_EQ(sigismember(&signals.formerMask(), SIGTERM), 0);
        EXPECT_EQ(sigismember(&signals.formerMask(), SIGHUP), 1);
        (void)raise(SIGTERM);  // comes too late to be asked for, and ends nothing
    }
    EXPECT_FALSE(_isBlocked(SIGTERM));
    EXPECT_TRUE(_isBlocked(SIGHUP));
    pthread_sigmask(SIG_UNBLOCK, &hangup, nullptr);
}
