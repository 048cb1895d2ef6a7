// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FileLock.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "ChildProcess.h"
#include "Clock.h"
#include "Error.h"
#include "ManualClock.h"
#include "TemporaryFolder.h"

using namespace QZ;

namespace {

bool timesOut(const std::string& path, FileLock::Kind kind) {
    const ManualClock clock;
    try {
        const FileLock lock(path, kind);
        return false;
    } catch (const Error&) {
        return clock.sleptMilliseconds() >= 10000 && clock.sleptMilliseconds() < 10100;
    }
}

}  // namespace

TEST(FileLock, SharesWithReaders) {
    const TemporaryFolder folder;
    const std::string path = folder.file("asset.dat");
    const FileLock first(path, FileLock::Shared);
    EXPECT_TRUE(first.isHeld());
    EXPECT_FALSE(timesOut(path, FileLock::Shared));
    EXPECT_TRUE(timesOut(path, FileLock::Exclusive));
}

TEST(FileLock, ExcludesAllOthersForTenSeconds) {
    const TemporaryFolder folder;
    const std::string path = folder.file("asset.dat");
    {
        const FileLock first(path, FileLock::Exclusive);
        EXPECT_TRUE(first.isHeld());
        EXPECT_TRUE(timesOut(path, FileLock::Shared));
        EXPECT_TRUE(timesOut(path, FileLock::Exclusive));
    }
    EXPECT_FALSE(timesOut(path, FileLock::Exclusive));
}

TEST(FileLock, IsWaitedForAsLongAsTheCallerSays) {
    const TemporaryFolder folder;
    const std::string path = folder.write("device", "");
    const auto open = [&path] { return Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC)); };
    const Descriptor first = open();
    const Descriptor second = open();
    const ManualClock clock;
    EXPECT_EQ(lockFile(first, FileLock::Exclusive, 0), 0);
    EXPECT_EQ(lockFile(second, FileLock::Exclusive, 300), ETIMEDOUT);
    EXPECT_GE(clock.sleptMilliseconds(), 300);
    EXPECT_LT(clock.sleptMilliseconds(), 330);
    EXPECT_EQ(lockFile(Descriptor(), FileLock::Exclusive, 300), EBADF);
}

TEST(FileLock, SaysWhoseLockIsNotHad) {
    const TemporaryFolder folder;
    const std::string path = folder.file("asset.dat");
    const FileLock first(path, FileLock::Exclusive);
    const ManualClock clock;
    try {
        const FileLock second(path, FileLock::Exclusive);
        FAIL();
    } catch (const Error& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr(path + ".lock"));
    }
}

TEST(FileLock, EndsWithItsProcess) {
    const TemporaryFolder folder;
    const std::string path = folder.file("asset.dat");
    ChildProcess holder([&] {
        const FileLock lock(path, FileLock::Exclusive);
        folder.write("held", "");
        for (;;)
            Clock::current().sleepMilliseconds(1000);
        return true;
    });
    while (!folder.contains("held"))
        Clock::current().sleepMilliseconds(1);
    EXPECT_TRUE(timesOut(path, FileLock::Shared));
    holder.kill();
    EXPECT_FALSE(timesOut(path, FileLock::Exclusive));
}

TEST(FileLock, WaitsForAnotherProcess) {
    const TemporaryFolder folder;
    const std::string path = folder.file("asset.dat");
    ChildProcess holder([&] {
        const FileLock lock(path, FileLock::Exclusive);
        folder.write("held", "");
        Clock::current().sleepMilliseconds(50);
        folder.write("released", "");
        return true;
    });
    while (!folder.contains("held"))
        Clock::current().sleepMilliseconds(1);
    const FileLock lock(path, FileLock::Exclusive);
    EXPECT_TRUE(folder.contains("released"));
    EXPECT_TRUE(holder.succeeds());
}

TEST(FileLock, StandsInACompanionThatStays) {
    const TemporaryFolder folder;
    const std::string path = folder.write("asset.dat", "a=b\n");
    struct stat first {};
    struct stat second {};
    {
        const FileLock lock(path, FileLock::Exclusive);
        ASSERT_EQ(0, stat((path + ".lock").c_str(), &first));
    }
    {
        const FileLock lock(path, FileLock::Shared);
        ASSERT_EQ(0, stat((path + ".lock").c_str(), &second));
    }
    EXPECT_EQ(first.st_ino, second.st_ino);
    EXPECT_EQ(0600U, first.st_mode & 0777U);
    EXPECT_EQ("a=b\n", folder.read("asset.dat"));
}

TEST(FileLock, IsNeededToWriteButNotToRead) {
    const TemporaryFolder folder;
    const std::string path = folder.file("none/asset.dat");
    EXPECT_FALSE(FileLock(path, FileLock::Shared).isHeld());
    EXPECT_THROW(FileLock(path, FileLock::Exclusive), Error);
}

TEST(FileLock, DoesNotStopAReaderWithoutPermission) {
    const TemporaryFolder folder;
    const std::string path = folder.write("asset.dat", "a=b\n");
    folder.write("asset.dat.lock", "");
    ASSERT_EQ(0, chmod((path + ".lock").c_str(), 0));
    EXPECT_TRUE(succeedsAsOrdinaryUser(folder.path(), [&] {
        if (FileLock(path, FileLock::Shared).isHeld())
            return false;
        try {
            const FileLock lock(path, FileLock::Exclusive);
            return false;
        } catch (const Error& error) {
            return std::string(error.what()).find("Permission denied") != std::string::npos;
        }
    }));
}

TEST(FileLock, IsNotTakenThroughALink) {
    const TemporaryFolder folder;
    folder.write("victim", "");
    std::filesystem::create_symlink("victim", folder.file("asset.dat.lock"));
    EXPECT_THROW(FileLock(folder.file("asset.dat"), FileLock::Exclusive), Error);
}
