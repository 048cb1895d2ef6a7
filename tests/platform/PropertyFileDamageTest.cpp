// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

#include "Error.h"
#include "ManualClock.h"
#include "PropertyFile.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "Text.h"

using namespace QZ;

namespace {

// 2027-01-31T06:50:00+01:00
constexpr std::int64_t Moment = 1801374600;
constexpr const char* Aside = "asset.dat.damaged-20270131T065000";
const std::string _torn("LEASE.Term=36\nLEASE.Lessor=Ac\0\0\0\0", 33);

class PropertyFileDamageTest : public testing::Test {
protected:
    std::wstring read() const {
        PropertyFile file(make_wstring(folder.file("asset.dat")));
        file.open(1);
        return file.getProperty(L"LEASE.Term");
    }

    void save() const {
        PropertyFile file(make_wstring(folder.file("asset.dat")));
        file.open(3);
        file.setProperty(L"LEASE.LRF", L"7");
        file.close();
    }

    const TemporaryFolder folder;
    const ScopedEnvironment zone{"TZ", "CET-1"};
    const ManualClock clock{Moment};
};

}  // namespace

TEST_F(PropertyFileDamageTest, ReadsWhatIsSoundOfATornFile) {
    folder.write("asset.dat", _torn);
    EXPECT_EQ(L"36", read());
    EXPECT_EQ(_torn, folder.read("asset.dat"));
    EXPECT_FALSE(folder.contains(Aside));
}

TEST_F(PropertyFileDamageTest, SetsATornFileAsideBeforeItIsOverwritten) {
    folder.write("asset.dat", _torn);
    save();
    EXPECT_EQ("LEASE.Term=36\nLEASE.LRF=7\n", folder.read("asset.dat"));
    EXPECT_EQ(_torn, folder.read(Aside));
}

TEST_F(PropertyFileDamageTest, SetsEveryDamagedFileAsideUnderANameOfItsOwn) {
    for (int round = 0; round < 3; ++round) {
        folder.write("asset.dat", _torn + std::to_string(round));
        save();
    }
    EXPECT_EQ(_torn + "0", folder.read(Aside));
    EXPECT_EQ(_torn + "1", folder.read(std::string(Aside) + "-2"));
    EXPECT_EQ(_torn + "2", folder.read(std::string(Aside) + "-3"));
}

TEST_F(PropertyFileDamageTest, SetsASoundFileNeverAside) {
    folder.write("asset.dat", "LEASE.Term=36\n");
    save();
    EXPECT_FALSE(folder.contains(Aside));
}

TEST_F(PropertyFileDamageTest, SetsAFileAsideThatIsTooLarge) {
    const std::string line = "LEASE.Term=36\n";
    const std::string largest = line + std::string(PropertyFile::MaximumSize - line.size(), '#');
    folder.write("asset.dat", largest);
    EXPECT_EQ(L"36", read());
    folder.write("asset.dat", largest + "#");
    EXPECT_EQ(L"", read());
    save();
    EXPECT_EQ("LEASE.LRF=7\n", folder.read("asset.dat"));
    EXPECT_EQ(largest + "#", folder.read(Aside));
}

// It would read as no file of ours the next time.
TEST_F(PropertyFileDamageTest, RefusesToBecomeTooLarge) {
    folder.write("asset.dat", "LEASE.Term=36\n");
    const std::size_t rest = PropertyFile::MaximumSize - std::string("LEASE.Term=36\nA=\n").size();
    PropertyFile file(make_wstring(folder.file("asset.dat")));
    file.open(3);
    file.setProperty(L"A", std::wstring(rest + 1, L'x'));
    try {
        file.close();
        ADD_FAILURE() << "it was written";
    } catch (const Error& error) {
        EXPECT_EQ("Cannot save " + folder.file("asset.dat") + ": File too large",
                  std::string(error.what()));
    }
    EXPECT_EQ("LEASE.Term=36\n", folder.read("asset.dat"));
    file.open(3);
    file.setProperty(L"A", std::wstring(rest, L'x'));
    file.close();
    EXPECT_EQ(PropertyFile::MaximumSize, folder.read("asset.dat").size());
    EXPECT_EQ(L"36", read());
}

TEST_F(PropertyFileDamageTest, SetsAFolderAside) {
    folder.write("asset.dat/inside", "x");
    EXPECT_EQ(L"", read());
    save();
    EXPECT_EQ("LEASE.LRF=7\n", folder.read("asset.dat"));
    EXPECT_EQ("x", folder.read(std::string(Aside) + "/inside"));
}

TEST_F(PropertyFileDamageTest, SetsAPipeAsideWithoutWaitingForIt) {
    ASSERT_EQ(0, mkfifo(folder.file("asset.dat").c_str(), 0600));
    EXPECT_EQ(L"", read());
    save();
    EXPECT_EQ("LEASE.LRF=7\n", folder.read("asset.dat"));
    EXPECT_TRUE(std::filesystem::is_fifo(folder.file(Aside)));
}

TEST_F(PropertyFileDamageTest, LeavesEverythingInPlaceWhenTheSaveFails) {
    // In the way of what is written, so that it fails after the file was set aside.
    folder.write("asset.dat.new/inside", "x");
    folder.write("asset.dat", _torn);
    EXPECT_THROW(save(), Error);
    EXPECT_EQ(_torn, folder.read("asset.dat"));
    EXPECT_FALSE(folder.contains(Aside));

    std::filesystem::remove(folder.file("asset.dat"));
    folder.write("asset.dat/inside", "x");
    EXPECT_THROW(save(), Error);
    EXPECT_EQ("x", folder.read("asset.dat/inside"));
    EXPECT_FALSE(folder.contains(Aside));
}

TEST_F(PropertyFileDamageTest, LeavesATornFileAloneWhenNothingIsSet) {
    folder.write("asset.dat", _torn);
    PropertyFile file(make_wstring(folder.file("asset.dat")));
    file.open(3);
    file.close();
    EXPECT_EQ(_torn, folder.read("asset.dat"));
}
