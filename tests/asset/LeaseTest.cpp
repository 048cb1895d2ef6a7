// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Lease.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <stdexcept>

#include "Error.h"
#include "FileLock.h"
#include "ManualClock.h"
#include "TestMachine.h"

namespace QZ {
namespace {

TEST(Lease, ReadsAnEmptyFileAsNothing) {
    const TestMachine machine;
    machine.writeAssetFile("");
    const Lease lease;
    EXPECT_EQ(lease.getLRF(), 0);
    EXPECT_EQ(lease.getTerm(), 0);
    EXPECT_EQ(lease.getBuyout(), 0U);
    EXPECT_EQ(lease.getFMV(), 0U);
    EXPECT_EQ(lease.getLessor(), "");
    EXPECT_EQ(lease.getPayment(), "");
    EXPECT_EQ(lease.getStartDate(), DateTime());
    EXPECT_EQ(lease.getEndDate(), DateTime());
}

TEST(Lease, GivesBackWhatItSaved) {
    const TestMachine machine;
    {
        Lease lease;
        lease.setLRF(7);
        lease.setTerm(255);
        lease.setBuyout(4294967295U);
        lease.setFMV(2147483648U);
        lease.setLessor("Acme = \"Leasing\" ");
        lease.setPayment("1,000 a month");
        lease.setStartDate(DateTime::fromDay(2024, 2, 29));
        lease.setEndDate(DateTime::fromParts(2027, 1, 31, 23, 59, 59, 0, -300));
    }
    const Lease lease;
    EXPECT_EQ(lease.getLRF(), 7);
    EXPECT_EQ(lease.getTerm(), 255);
    EXPECT_EQ(lease.getBuyout(), 4294967295U);
    EXPECT_EQ(lease.getFMV(), 2147483648U);
    EXPECT_EQ(lease.getLessor(), "Acme = \"Leasing\" ");
    EXPECT_EQ(lease.getPayment(), "1,000 a month");
    EXPECT_EQ(lease.getStartDate(), DateTime::fromDay(2024, 2, 29));
    EXPECT_EQ(lease.getEndDate(), DateTime::fromParts(2027, 1, 31, 23, 59, 59, 0, -300));
}

TEST(Lease, SavesEveryFieldInTheTablesOrder) {
    const TestMachine machine;
    { const Lease lease; }
    EXPECT_EQ(machine.assetFile(),
              "LEASE.LRF=0\nLEASE.Term=0\nLEASE.Buyout=0\nLEASE.FMV=0\n"
              "LEASE.Lessor=\nLEASE.Payment=\nLEASE.StartDate=\nLEASE.EndDate=\n");
}

TEST(Lease, LetsTheLastOneDestroyedWin) {
    const TestMachine machine;
    machine.writeAssetFile("LEASE.Lessor=old\n");
    {
        const Lease b;
        {
            Lease a;
            a.setLessor("new");
        }
        EXPECT_NE(machine.assetFile().find("LEASE.Lessor=new\n"), std::string::npos);
    }
    EXPECT_NE(machine.assetFile().find("LEASE.Lessor=old\n"), std::string::npos);
}

TEST(Lease, LeavesAnUnchangedFileAlone) {
    const TestMachine machine;
    { const Lease lease; }
    const auto file = machine.folder().file("data/asset.dat");
    const auto before = std::filesystem::last_write_time(file);
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    { const Lease lease; }
    EXPECT_EQ(std::filesystem::last_write_time(file), before);
    // A replacement would have made it writable again.
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms::owner_read);
}

TEST(Lease, NeedsNoLockToBeReadAndLeftAsItWas) {
    const TestMachine machine;
    const ManualClock later(ManualClock::inAMinute());
    { const Lease first; }
    const Lease lease;
    const FileLock another(machine.folder().file("data/asset.dat"), FileLock::Exclusive);
    EXPECT_NO_THROW({ const Lease second; });
    EXPECT_THROW(
        {
            Lease changed;
            changed.setTerm(12);
        },
        Error);
}

TEST(Lease, OverwritesWhatWasSavedSinceItWasRead) {
    const TestMachine machine;
    const ManualClock later(ManualClock::inAMinute());
    {
        Lease first;
        first.setTerm(36);
    }
    const std::string saved = machine.assetFile();
    {
        const Lease lease;
        machine.writeAssetFile("OTHER=1\n" + saved + "LEASE.Term=48\n");
        { const Lease another; }  // changes nothing, and what stands there is remembered
        EXPECT_EQ(machine.assetFile(), "OTHER=1\n" + saved + "LEASE.Term=48\n");
    }
    EXPECT_EQ(machine.assetFile(), "OTHER=1\n" + saved + "LEASE.Term=36\n");
}

TEST(Lease, SaysThatSavingFailed) {
    const TestMachine machine;
    const auto construct = [&] {
        Lease lease;
        lease.setLessor("Acme");
        std::filesystem::remove_all(machine.folder().file("data"));
    };
    try {
        construct();
        FAIL() << "a save into a missing folder succeeded";
    } catch (const Error& failure) {
        EXPECT_NE(std::string(failure.what()).find("asset.dat"), std::string::npos)
            << failure.what();
    }
}

TEST(Lease, LeavesTheFirstExceptionTheOneToReport) {
    const TestMachine machine;
    EXPECT_THROW(
        {
            Lease lease;
            lease.setLessor("Acme");
            std::filesystem::remove_all(machine.folder().file("data"));
            throw std::logic_error("first");
        },
        std::logic_error);
}

TEST(Lease, ReleasesTheMutexWhenSavingFailed) {
    const TestMachine machine;
    try {
        const Lease lease;
        std::filesystem::remove_all(machine.folder().file("data"));
    } catch (const Error&) {
        // The mutex is what counts here.
    }
    ASSERT_TRUE(_fileMutex.lock(0));
    _fileMutex.unlock();
}

}  // namespace
}  // namespace QZ
