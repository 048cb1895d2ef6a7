// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/cThreadLib.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <thread>

#include "ManualClock.h"
#include "NoRoomForThreads.h"
#include "tavqz/AccessHelpers.h"

namespace {

int cancelError = 0;
int cancels = 0;

}  // namespace

// In the place of the C library's, to let it fail.
extern "C" int pthread_cancel(pthread_t thread) {
    ++cancels;
    if (cancelError != 0) {
        return cancelError;
    }
    static const auto real =
        reinterpret_cast<int (*)(pthread_t)>(dlsym(RTLD_NEXT, "pthread_cancel"));
    return real(thread);
}

namespace {

// What a thread of the tests is given, and what it does until it is cancelled or let go.
struct Work {
    std::atomic<bool> running{false};
    std::atomic<bool> ended{false};
    std::atomic<bool> mayEnd{false};
    pthread_t thread{};

    void waitUntilRunning() const {
        while (!running) {
            std::this_thread::yield();
        }
    }

    void letEnd() {
        mayEnd = true;
        while (!ended) {
            std::this_thread::yield();
        }
    }
};

struct EndMark {
    Work& work;
    ~EndMark() { work.ended = true; }
};

void* sleepUntilCancelled(void* arg) {
    Work& work = *static_cast<Work*>(arg);
    const EndMark mark{work};
    work.thread = pthread_self();
    work.running = true;
    while (!work.mayEnd) {
        usleep(1000);
    }
    return nullptr;
}

void* detachAndRefuseToBeCancelled(void* arg) {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    pthread_detach(pthread_self());
    return sleepUntilCancelled(arg);
}

class Threads : public testing::Test {
protected:
    void SetUp() override {
        cancelError = 0;
        cancels = 0;
    }
    void TearDown() override { cancelError = 0; }

    Work _work;
    cThreadLib _threads;
};

TEST_F(Threads, CloseWithoutAThreadDoesNothing) {
    EXPECT_EQ(_threads.threadClose(), 0);
    EXPECT_EQ(cancels, 0);
}

TEST_F(Threads, CloseCancelsAndJoins) {
    ASSERT_EQ(_threads.threadStart(sleepUntilCancelled, &_work), 0);
    _work.waitUntilRunning();
    EXPECT_EQ(_threads.threadClose(), 0);
    EXPECT_TRUE(_work.ended);
    EXPECT_EQ(cancels, 1);
    EXPECT_EQ(_threads.threadClose(), 0);
    EXPECT_EQ(cancels, 1) << "the thread was not forgotten";
}

TEST_F(Threads, CloseJoinsAThreadThatEndedByItself) {
    ASSERT_EQ(_threads.threadStart(sleepUntilCancelled, &_work), 0);
    _work.waitUntilRunning();
    _work.letEnd();
    EXPECT_EQ(_threads.threadClose(), 0);
}

TEST_F(Threads, CloseDoesNotJoinWhatItCouldNotCancel) {
    ASSERT_EQ(_threads.threadStart(sleepUntilCancelled, &_work), 0);
    _work.waitUntilRunning();
    cancelError = ESRCH;
    EXPECT_EQ(_threads.threadClose(), ESRCH);
    EXPECT_FALSE(_work.ended);
    EXPECT_EQ(_threads.threadClose(), 0) << "the thread was not forgotten";
    _work.letEnd();
    EXPECT_EQ(pthread_join(_work.thread, nullptr), 0);
}

TEST_F(Threads, CloseReturnsTheJoinsError) {
    ASSERT_EQ(_threads.threadStart(detachAndRefuseToBeCancelled, &_work), 0);
    _work.waitUntilRunning();
    EXPECT_EQ(_threads.threadClose(), EINVAL);
    EXPECT_EQ(_threads.threadClose(), 0) << "the thread was not forgotten";
    _work.letEnd();
}

TEST_F(Threads, ReleaseLetsTheThreadRunOn) {
    ASSERT_EQ(_threads.threadStart(sleepUntilCancelled, &_work), 0);
    _work.waitUntilRunning();
    _threads.releaseHandle();
    EXPECT_EQ(_threads.threadClose(), 0);
    EXPECT_EQ(cancels, 0);
    EXPECT_FALSE(_work.ended);
    _work.letEnd();
    EXPECT_EQ(pthread_join(_work.thread, nullptr), 0);
}

TEST_F(Threads, DestructorCloses) {
    {
        cThreadLib threads;
        ASSERT_EQ(threads.threadStart(sleepUntilCancelled, &_work), 0);
        _work.waitUntilRunning();
    }
    EXPECT_TRUE(_work.ended);
}

TEST_F(Threads, StartSaysTwoWhenThereIsNoThread) {
    const NoRoomForThreads full;
    EXPECT_EQ(_threads.threadStart(sleepUntilCancelled, &_work), 2);
    EXPECT_EQ(_threads.threadClose(), 0);
    EXPECT_EQ(cancels, 0);
}

TEST_F(Threads, PlainStartSaysOneForSuccessAndZeroForFailure) {
    pthread_t thread{};
    const auto routine = reinterpret_cast<void*>(sleepUntilCancelled);
    {
        const NoRoomForThreads full;
        EXPECT_EQ(StartThread(routine, &_work, 0, &thread), 0);
    }
    ASSERT_EQ(StartThread(routine, &_work, 0, &thread), 1);
    _work.waitUntilRunning();
    EXPECT_NE(pthread_equal(thread, _work.thread), 0);

    cancelError = ESRCH;
    EXPECT_EQ(endThreadProcess(thread), ESRCH);
    EXPECT_FALSE(_work.ended);

    cancelError = 0;
    EXPECT_EQ(endThreadProcess(thread), 0);
    EXPECT_TRUE(_work.ended);
}

TEST_F(Threads, WaitSleepsTheSecondsWhateverTheFlag) {
    const ManualClock clock;
    bool flag = true;
    _threads.wait(&flag, 3);
    EXPECT_EQ(clock.sleptMilliseconds(), 3000);
    _threads.wait(nullptr, 5000000);
    EXPECT_EQ(clock.sleptMilliseconds(), 5000003000);
    EXPECT_TRUE(flag);
}

TEST_F(Threads, WaitDoesNotSleepForNoSeconds) {
    const ManualClock clock;
    _threads.wait(nullptr, 0);
    _threads.wait(nullptr, -1);
    EXPECT_EQ(clock.sleptMilliseconds(), 0);
}

TEST_F(Threads, SendEventDoesNothing) {
    ASSERT_EQ(_threads.threadStart(sleepUntilCancelled, &_work), 0);
    _work.waitUntilRunning();
    _threads.sendEvent();
    EXPECT_FALSE(_work.ended);
}

}  // namespace
