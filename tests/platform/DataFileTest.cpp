// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DataFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Error.h"
#include "FileLock.h"
#include "ManualClock.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "Text.h"

using namespace QZ;

namespace {

// 2027-01-31T06:50:00+01:00
constexpr std::int64_t Moment = 1801374600;
constexpr const char* Aside = "notes.dat.damaged-20270131T065000";

// Lines, of which those with "?" are damaged.
class Notes : public DataFile {
public:
    using DataFile::DataFile;

    const std::string& text() const {
        _requireReader();
        return _text;
    }
    void write(const std::string& text) {
        _requireWriter();
        _text = text;
        _setChanged();
    }

protected:
    bool _load(const std::string& text) override {
        _text = text.substr(0, text.find('?'));
        return _text == text;
    }
    std::string _compose() const override { return _text; }
    void _forget() override { _text.clear(); }

private:
    std::string _text;
};

class DataFileTest : public testing::Test {
protected:
    const TemporaryFolder folder;
    const ScopedEnvironment zone{"TZ", "CET-1"};
    const ManualClock clock{Moment};
    Notes notes{make_wstring(folder.file("notes.dat"))};
};

}  // namespace

TEST_F(DataFileTest, ReadsAMissingFileAsEmpty) {
    notes.open(1);
    EXPECT_EQ("", notes.text());
    notes.close();
    EXPECT_FALSE(folder.contains("notes.dat"));
}

TEST_F(DataFileTest, SavesWhenItIsClosed) {
    notes.open(3);
    notes.write("one");
    EXPECT_FALSE(folder.contains("notes.dat"));
    notes.close();
    EXPECT_EQ("one", folder.read("notes.dat"));
    EXPECT_FALSE(folder.contains("notes.dat.new"));
}

TEST_F(DataFileTest, SavesNothingWhenNothingWasChanged) {
    folder.write("notes.dat", "one?");
    notes.open(3);
    notes.close();
    EXPECT_EQ("one?", folder.read("notes.dat"));
}

TEST_F(DataFileTest, IsItsOwnersAlone) {
    notes.open(3);
    notes.write("one");
    notes.close();
    struct stat status {};
    ASSERT_EQ(0, stat(folder.file("notes.dat").c_str(), &status));
    EXPECT_EQ(0600U, status.st_mode & 0777U);
}

TEST_F(DataFileTest, WritesAnewInModeTwo) {
    folder.write("notes.dat", "one");
    notes.open(2);
    EXPECT_THROW(notes.text(), Error);
    notes.close();
    EXPECT_TRUE(folder.contains("notes.dat"));
    EXPECT_EQ("", folder.read("notes.dat"));
}

TEST_F(DataFileTest, RefusesModesThatThereAreNot) {
    EXPECT_THROW(notes.open(0), Error);
    EXPECT_THROW(notes.open(4), Error);
}

TEST_F(DataFileTest, RefusesWhatItIsNotOpenFor) {
    EXPECT_THROW(notes.text(), Error);
    EXPECT_THROW(notes.write("x"), Error);
    notes.open(1);
    EXPECT_THROW(notes.write("x"), Error);
    notes.close();
    EXPECT_THROW(notes.text(), Error);
}

TEST_F(DataFileTest, OpensAgainWhileItIsOpen) {
    folder.write("notes.dat", "one");
    notes.open(3);
    notes.write("two");
    notes.open(1);
    EXPECT_EQ("one", notes.text());
    notes.open(3);
    EXPECT_EQ("one", notes.text());
    notes.write("three");
    notes.close();
    EXPECT_EQ("three", folder.read("notes.dat"));
}

TEST_F(DataFileTest, ExcludesEveryOtherWhileItIsOpenToWrite) {
    Notes other{make_wstring(folder.file("notes.dat"))};
    notes.open(3);
    EXPECT_THROW(other.open(1), Error);
    EXPECT_THROW(other.open(3), Error);
    notes.abandon();
    other.open(3);
    other.close();
    notes.open(1);  // a reader has what it needs, and holds nobody up
    other.open(3);
}

TEST_F(DataFileTest, ThrowsForAFileThatCannotBeRead) {
    // A name in the way of the folder's, since the tests may be root's.
    Notes unreadable{make_wstring(folder.file(std::string(300, 'x')))};
    EXPECT_THROW(unreadable.open(1), Error);
    EXPECT_THROW(unreadable.open(3), Error);
}

TEST_F(DataFileTest, SetsADamagedFileAsideBeforeItIsOverwritten) {
    for (int round = 0; round < 2; ++round) {
        folder.write("notes.dat", std::to_string(round) + "one?two");
        notes.open(3);
        EXPECT_FALSE(folder.contains(round == 0 ? Aside : std::string(Aside) + "-2"));
        notes.write(notes.text() + "!");
        notes.close();
        EXPECT_EQ(std::to_string(round) + "one!", folder.read("notes.dat"));
    }
    EXPECT_EQ("0one?two", folder.read(Aside));
    EXPECT_EQ("1one?two", folder.read(std::string(Aside) + "-2"));
}

TEST_F(DataFileTest, SetsADamagedFileAsideThatIsWrittenAnew) {
    folder.write("notes.dat", "one?");
    notes.open(2);
    notes.close();
    EXPECT_EQ("one?", folder.read(Aside));
}

TEST_F(DataFileTest, SetsWhatIsNoFileAside) {
    folder.write("notes.dat/inside", "x");
    notes.open(3);
    notes.write("one");
    notes.close();
    EXPECT_EQ("one", folder.read("notes.dat"));
    EXPECT_EQ("x", folder.read(std::string(Aside) + "/inside"));
}

TEST_F(DataFileTest, LeavesEverythingInPlaceWhenTheSaveFails) {
    // In the way of what is written.
    folder.write("notes.dat.new/inside", "x");
    folder.write("notes.dat", "one?");
    notes.open(3);
    notes.write("two");
    EXPECT_THROW(notes.close(), Error);
    EXPECT_EQ("one?", folder.read("notes.dat"));
    EXPECT_FALSE(folder.contains(Aside));
    EXPECT_THROW(notes.text(), Error);
    EXPECT_NO_THROW(QZ::FileLock(folder.file("notes.dat"), QZ::FileLock::Exclusive));
}
