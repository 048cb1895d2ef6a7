// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PropertyFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <random>

#include "ChildProcess.h"
#include "Error.h"
#include "FileLock.h"
#include "ManualClock.h"
#include "RepeatableRandom.h"
#include "TemporaryFolder.h"
#include "Text.h"

using namespace QZ;

namespace {

// A property file in a folder of its own.
class PropertyFileTest : public testing::Test {
protected:
    std::wstring get(const std::wstring& key) const {
        PropertyFile file(wide());
        file.open(1);
        return file.getProperty(key);
    }

    void set(const std::wstring& key, const std::wstring& value, int mode = 3) const {
        PropertyFile file(wide());
        file.open(mode);
        file.setProperty(key, value);
        file.close();
    }

    void write(const std::string& content) const { folder.write("asset.dat", content); }
    std::string content() const { return folder.read("asset.dat"); }
    std::string path() const { return folder.file("asset.dat"); }
    std::wstring wide() const { return make_wstring(path()); }

    ino_t inode() const {
        struct stat status {};
        return stat(path().c_str(), &status) == 0 ? status.st_ino : 0;
    }

    const TemporaryFolder folder;
};

bool isNumber(const std::wstring& stored) {
    return stored.find_first_not_of(L"0123456789") == std::wstring::npos;
}

}  // namespace

TEST_F(PropertyFileTest, ReadsAMissingFileAsEmpty) {
    EXPECT_EQ(L"", get(L"LEASE.Lessor"));
    EXPECT_FALSE(folder.contains("asset.dat"));
}

TEST_F(PropertyFileTest, ReadsAFileInAMissingFolderAsEmpty) {
    PropertyFile file(make_wstring(folder.file("none/asset.dat")));
    file.open(1);
    EXPECT_EQ(L"", file.getProperty(L"LEASE.Lessor"));
}

TEST_F(PropertyFileTest, GivesBackWhatWasSaved) {
    set(L"LEASE.Lessor", L"Gr\u00FC\u00DFe = \u20AC\n");
    EXPECT_EQ(L"Gr\u00FC\u00DFe = \u20AC\n", get(L"LEASE.Lessor"));
    EXPECT_EQ(
        "LEASE.Lessor=Gr\xC3\xBC\xC3\x9F"
        "e = \xE2\x82\xAC\\n\n",
        content());
}

TEST_F(PropertyFileTest, StartsFromTheEntriesThatAreThere) {
    write("# mine\nLEASE.Term=36\nOTHER=1\n");
    set(L"LEASE.Lessor", L"Acme");
    EXPECT_EQ("# mine\nLEASE.Term=36\nOTHER=1\nLEASE.Lessor=Acme\n", content());
}

TEST_F(PropertyFileTest, StartsAnewInModeTwo) {
    write("LEASE.Term=36\n");
    set(L"LEASE.Lessor", L"Acme", 2);
    EXPECT_EQ("LEASE.Lessor=Acme\n", content());
}

TEST_F(PropertyFileTest, KeepsChangesToItselfUntilClosed) {
    write("LEASE.Term=36\n");
    PropertyFile file(wide());
    file.open(3);
    file.setProperty(L"LEASE.Term", L"48");
    EXPECT_EQ(L"48", file.getProperty(L"LEASE.Term"));
    EXPECT_EQ("LEASE.Term=36\n", content());
    file.close();
    EXPECT_EQ("LEASE.Term=48\n", content());
    EXPECT_EQ(L"", file.getProperty(L"LEASE.Term"));
}

TEST_F(PropertyFileTest, AbandonsChangesThatAreNotClosed) {
    write("LEASE.Term=36\n");
    {
        PropertyFile file(wide());
        file.open(3);
        file.setProperty(L"LEASE.Term", L"48");
    }
    EXPECT_EQ("LEASE.Term=36\n", content());
    set(L"LEASE.Term", L"60");  // the lock is free again
    EXPECT_EQ("LEASE.Term=60\n", content());
}

TEST_F(PropertyFileTest, IsNotWrittenWhenNothingChanges) {
    write("LEASE.Term = 36 \r\n");
    const ino_t before = inode();
    set(L"LEASE.Term", std::wstring(L"36\0\0", 4));
    EXPECT_EQ(before, inode());
    set(L"LEASE.Term", L"37");
    EXPECT_NE(before, inode());
}

TEST_F(PropertyFileTest, IsComparedWithWhatStandsOnDiskAtTheEnd) {
    write("LEASE.Term=36\n");
    PropertyFile file(wide());
    file.open(3);
    file.setProperty(L"LEASE.Term", L"36");
    write("LEASE.Term=an editor knows no locks\n");
    file.close();
    EXPECT_EQ("LEASE.Term=36\n", content());
}

TEST_F(PropertyFileTest, IsComparedWithWhatStandsOnDiskHoweverLongTheFileWasThere) {
    const ManualClock later(ManualClock::inAMinute());  // its times tell of every change
    write("LEASE.Term=36\n");
    PropertyFile file(wide());
    for (const wchar_t* term : {L"36", L"48"}) {
        file.open(3);
        file.setProperty(L"LEASE.Term", term);
        write("LEASE.Term=an editor knows no locks\n");
        file.close();
        EXPECT_EQ("LEASE.Term=" + make_string(term) + "\n", content());
    }
}

TEST_F(PropertyFileTest, LetsTheLastOfTwoSavesWin) {
    write("LEASE.Term=36\n");
    const std::wstring loadedByB = get(L"LEASE.Term");
    set(L"LEASE.Term", L"48");
    set(L"LEASE.Term", loadedByB);
    EXPECT_EQ("LEASE.Term=36\n", content());
}

TEST_F(PropertyFileTest, IsWrittenOnlyWhenOpenToWrite) {
    PropertyFile file(wide());
    EXPECT_THROW(file.setProperty(L"a", L"b"), Error);
    file.open(1);
    EXPECT_THROW(file.setProperty(L"a", L"b"), Error);
    file.close();
    EXPECT_FALSE(folder.contains("asset.dat"));
    for (const int mode : {0, 4, -1})
        EXPECT_THROW(file.open(mode), Error);
}

TEST_F(PropertyFileTest, KeepsAHandWrittenValueThatItsFieldCannotGiveBack) {
    write("LEASE.Term=three years\nLEASE.LRF=7\nLEASE.FMV=\n");
    PropertyFile file(wide());
    file.open(3);
    file.setProperty(L"LEASE.Term", L"0", isNumber);
    file.setProperty(L"LEASE.LRF", L"8", isNumber);
    file.setProperty(L"LEASE.FMV", L"0", [](const std::wstring&) { return false; });
    file.close();
    const std::string expected =
        "# kept, not understood: LEASE.Term=three years\nLEASE.Term=0\nLEASE.LRF=8\nLEASE.FMV=0\n";
    EXPECT_EQ(expected, content());
    file.open(3);
    file.setProperty(L"LEASE.Term", L"0", isNumber);
    file.close();
    EXPECT_EQ(expected, content());
}

TEST_F(PropertyFileTest, KeepsAHandWrittenValueOnceWhenItIsSetTwice) {
    write("LEASE.Term=three years\n");
    PropertyFile file(wide());
    file.open(3);
    file.setProperty(L"LEASE.Term", L"0", isNumber);
    file.setProperty(L"LEASE.Term", L"1", isNumber);
    file.close();
    EXPECT_EQ("# kept, not understood: LEASE.Term=three years\nLEASE.Term=1\n", content());
}

TEST_F(PropertyFileTest, DoesNotOverwriteWhatItCannotRead) {
    write("LEASE.Term=36\n");
    ASSERT_EQ(0, chmod(path().c_str(), 0));
    EXPECT_TRUE(succeedsAsOrdinaryUser(folder.path(), [&] {
        PropertyFile file(wide());
        file.open(1);
        if (!file.getProperty(L"LEASE.Term").empty())
            return false;
        try {
            file.open(3);
            return false;
        } catch (const Error& error) {
            return error.what() == "Cannot read " + path() + ": Permission denied";
        }
    }));
    ASSERT_EQ(0, chmod(path().c_str(), 0600));
    EXPECT_EQ("LEASE.Term=36\n", content());
}

TEST_F(PropertyFileTest, GivesUpTheLockWhenASaveFails) {
    PropertyFile file(wide());
    file.open(3);
    file.setProperty(L"LEASE.Term", L"36");
    std::filesystem::create_directories(folder.file("asset.dat.new/in-the-way"));
    EXPECT_THROW(file.close(), Error);
    EXPECT_FALSE(folder.contains("asset.dat"));
    std::filesystem::remove_all(folder.file("asset.dat.new"));
    const ManualClock clock;
    set(L"LEASE.Term", L"48");
    EXPECT_EQ("LEASE.Term=48\n", content());
}

TEST_F(PropertyFileTest, SeesWhatAnEditorWroteSinceTheLastTime) {
    const ManualClock later(ManualClock::inAMinute());
    write("LEASE.Term=36\n");
    EXPECT_EQ(L"36", get(L"LEASE.Term"));
    write("LEASE.Term=4711\n");
    EXPECT_EQ(L"4711", get(L"LEASE.Term"));
    std::filesystem::remove(folder.file("asset.dat"));
    EXPECT_EQ(L"", get(L"LEASE.Term"));
}

TEST_F(PropertyFileTest, NeedsNoLockForWhatIsAsItWasRead) {
    const ManualClock later(ManualClock::inAMinute());
    write("LEASE.Term=36\n");
    EXPECT_EQ(L"36", get(L"LEASE.Term"));
    const FileLock another(path(), FileLock::Exclusive);
    EXPECT_EQ(L"36", get(L"LEASE.Term"));
    PropertyFile file(wide());
    EXPECT_TRUE(file.openToCompare());
    write("LEASE.Term=4711\n");
    EXPECT_THROW(get(L"LEASE.Term"), Error);
}

TEST_F(PropertyFileTest, TellsWhetherASaveWouldChangeAnything) {
    const ManualClock later(ManualClock::inAMinute());
    write("LEASE.Term = 36\nLEASE.FMV=many\n");
    EXPECT_EQ(L"36", get(L"LEASE.Term"));
    PropertyFile file(wide());
    ASSERT_TRUE(file.openToCompare());
    file.setProperty(L"LEASE.Term", std::wstring(L"36\0\0", 4));
    EXPECT_FALSE(file.isChanged());
    file.setProperty(L"LEASE.FMV", L"0", isNumber);
    EXPECT_TRUE(file.isChanged());
    file.close();
    EXPECT_FALSE(file.isChanged());
    EXPECT_EQ("LEASE.Term = 36\nLEASE.FMV=many\n", content());
    ASSERT_TRUE(file.openToCompare());
    EXPECT_FALSE(file.isChanged());
    file.setProperty(L"LEASE.Lessor", L"");  // a key that is not there
    EXPECT_TRUE(file.isChanged());
}

TEST_F(PropertyFileTest, IsNotComparedWithWhatMayHaveChanged) {
    const ManualClock now(Clock::current().seconds());
    PropertyFile file(wide());
    EXPECT_FALSE(file.openToCompare());  // no file
    write("LEASE.Term=36\n");
    EXPECT_EQ(L"36", get(L"LEASE.Term"));
    EXPECT_FALSE(file.openToCompare());  // written in this very moment
    const ManualClock later(ManualClock::inAMinute());
    EXPECT_FALSE(file.openToCompare());  // not read since
    EXPECT_EQ(L"36", get(L"LEASE.Term"));
    write("LEASE.Term=4711\n");
    EXPECT_FALSE(file.openToCompare());  // another file
    EXPECT_EQ(L"4711", get(L"LEASE.Term"));
    EXPECT_TRUE(file.openToCompare());
    write(std::string("LEASE.Term=600\n\0\n", 17));
    EXPECT_EQ(L"600", get(L"LEASE.Term"));
    EXPECT_FALSE(file.openToCompare());  // a save would mend it
    EXPECT_THROW(file.setProperty(L"LEASE.Term", L"60"), Error);
}

TEST_F(PropertyFileTest, ExcludesReadersAndWritersWhileOpenToWrite) {
    PropertyFile file(wide());
    file.open(3);
    const ManualClock clock;
    EXPECT_THROW(get(L"LEASE.Term"), Error);
    EXPECT_THROW(set(L"LEASE.Term", L"1"), Error);
    file.close();
    EXPECT_EQ(L"", get(L"LEASE.Term"));
}

TEST_F(PropertyFileTest, DoesNotExcludeAnyoneAfterItIsRead) {
    PropertyFile file(wide());
    file.open(1);
    const ManualClock clock;
    set(L"LEASE.Term", L"36");
    EXPECT_EQ(L"", file.getProperty(L"LEASE.Term"));
}

TEST_F(PropertyFileTest, GivesBackRandomTexts) {
    std::mt19937 random = repeatableRandom(20270131);
    std::vector<std::wstring> values(25);
    for (std::wstring& value : values) {
        value.resize(random() % 40);
        for (wchar_t& character : value)
            character = static_cast<wchar_t>(1 + random() % 0xD7FE);
    }
    PropertyFile file(wide());
    file.open(3);
    for (std::size_t index = 0; index < values.size(); ++index)
        file.setProperty(std::to_wstring(index), values[index]);
    file.close();
    file.open(1);
    for (std::size_t index = 0; index < values.size(); ++index)
        EXPECT_EQ(values[index], file.getProperty(std::to_wstring(index)));
}
