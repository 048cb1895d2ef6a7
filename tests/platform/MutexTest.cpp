// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Mutex.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace QZ;

namespace {

Mutex _staticMutex;

// Runs before main: the mutex must be ready whatever the order of initialisation.
const bool _wasReady = [] {
    const MutexLock lock(_staticMutex);
    return true;
}();

bool isLocked(Mutex& mutex, int timeoutMilliseconds) {
    bool isFree = false;
    std::thread([&] {
        isFree = mutex.lock(timeoutMilliseconds);
        if (isFree)
            mutex.unlock();
    }).join();
    return !isFree;
}

}  // namespace

TEST(Mutex, IsReadyBeforeAnyInitialiser) {
    EXPECT_TRUE(_wasReady);
    static_assert(std::is_trivially_destructible_v<Mutex>, "works until the process is gone");
}

TEST(Mutex, GivesUpWhenTheTimeIsOver) {
    Mutex mutex;
    ASSERT_TRUE(mutex.lock());
    EXPECT_TRUE(isLocked(mutex, 0));
    EXPECT_TRUE(isLocked(mutex, 20));
    mutex.unlock();
    EXPECT_FALSE(isLocked(mutex, 0));
    EXPECT_FALSE(isLocked(mutex, 20));
}

TEST(Mutex, WaitsForItsHolder) {
    Mutex mutex;
    ASSERT_TRUE(mutex.lock());
    std::thread other([&] {
        EXPECT_TRUE(mutex.lock(60000));
        mutex.unlock();
    });
    mutex.unlock();
    other.join();
}

TEST(MutexLock, ExcludesOtherThreads) {
    Mutex mutex;
    int count = 0;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < 10000; ++round) {
                const MutexLock lock(mutex);
                ++count;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(40000, count);
}

TEST(MutexLock, ReleasesAtItsEnd) {
    Mutex mutex;
    {
        const MutexLock lock(mutex);
        EXPECT_TRUE(isLocked(mutex, 0));
    }
    EXPECT_FALSE(isLocked(mutex, 0));
}
