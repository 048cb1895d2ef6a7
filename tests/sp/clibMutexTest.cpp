// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/clibMutex.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

TEST(LibMutex, AnswersOneWhenTakenAndZeroWhenReleased) {
    clibMutex mutex;
    EXPECT_EQ(mutex.getMutex(), 1);
    EXPECT_EQ(mutex.releaseMutex(), 0);
}

TEST(LibMutex, ExcludesOtherThreads) {
    clibMutex mutex;
    long count = 0;
    const auto work = [&] {
        for (int i = 0; i < 50000; ++i) {
            mutex.getMutex();
            // Two steps: without exclusion the threads lose each other's.
            const volatile long before = count;
            count = before + 1;
            mutex.releaseMutex();
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(count, 100000);
}

TEST(LibMutex, CreatingItAgainChangesNothing) {
    clibMutex mutex;
    char name[] = "name";
    mutex.getMutex();
    mutex.createMutex(name);
    mutex.createMutex(nullptr);
    EXPECT_EQ(mutex.releaseMutex(), 0);
    EXPECT_STREQ(name, "name");
}

TEST(LibMutex, HasOneForTheLogs) {
    EXPECT_EQ(loggingMutex.getMutex(), 1);
    EXPECT_EQ(loggingMutex.releaseMutex(), 0);
}

}  // namespace
