// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "EventJournal.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "TestMachine.h"

using namespace QZ;

namespace {

class EventJournalTest : public ::testing::Test {
protected:
    bool isRedundant(int type, int state) {
        return journal.checkForRedundantEvent(type, 0, 0, state);
    }
    std::string file() const { return machine.folder().read("data/assetidprv.evt"); }
    void write(const std::string& text) const {
        machine.folder().write("data/assetidprv.evt", text);
    }

    TestMachine machine;
    EventJournal journal;
};

}  // namespace

TEST_F(EventJournalTest, TakesAnUnseenSourceForZero) {
    EXPECT_TRUE(isRedundant(1, 0));
    EXPECT_FALSE(machine.folder().contains("data/assetidprv.evt"));
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_EQ("typ1|nod0|ind0 1\n", file());
}

TEST_F(EventJournalTest, TellsASecondTimeFromAFirst) {
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_TRUE(isRedundant(1, 1));
    EXPECT_FALSE(isRedundant(1, 0));
    EXPECT_EQ("typ1|nod0|ind0 0\n", file());
}

TEST_F(EventJournalTest, KeepsItsSourcesInOrder) {
    EXPECT_FALSE(isRedundant(2, 1));
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_EQ("typ1|nod0|ind0 1\ntyp2|nod0|ind0 1\n", file());
    EXPECT_FALSE(journal.checkForRedundantEvent(1, 2, 3, -4));
    EXPECT_EQ("typ1|nod0|ind0 1\ntyp1|nod2|ind3 -4\ntyp2|nod0|ind0 1\n", file());
}

TEST_F(EventJournalTest, RemembersAcrossRestarts) {
    EXPECT_FALSE(isRedundant(1, 1));
    EventJournal next;
    EXPECT_TRUE(next.checkForRedundantEvent(1, 0, 0, 1));
    EXPECT_FALSE(next.checkForRedundantEvent(2, 0, 0, 1));
}

TEST_F(EventJournalTest, ReadsTheFileOnce) {
    EXPECT_TRUE(isRedundant(1, 0));
    write("typ1|nod0|ind0 1\n");
    EXPECT_TRUE(isRedundant(1, 0));
}

TEST_F(EventJournalTest, KeepsTheFirstOfTwoLinesAndLinesOfOthers) {
    write("typ1|nod0|ind0 1\ntyp1|nod0|ind0 0\ntyp9|nod0|ind0 7\n");
    EXPECT_TRUE(isRedundant(1, 1));
    EXPECT_FALSE(isRedundant(2, 1));
    EXPECT_EQ("typ1|nod0|ind0 1\ntyp2|nod0|ind0 1\ntyp9|nod0|ind0 7\n", file());
}

TEST_F(EventJournalTest, SkipsLinesThatAreNone) {
    write(
        "\n \nword\n 1\ntyp1|nod0|ind0\ntyp1|nod0|ind0 \ntyp1|nod0|ind0 one\n"
        "typ1|nod0|ind0 +-1\ntyp1|nod0|ind0 + 1\ntyp1|nod0|ind0 99999999999\n" +
        std::string(300, 'x') + " 1\n" + std::string("\0\xFF 5 5\n", 7) + "typ2|nod0|ind0 1");
    EXPECT_TRUE(isRedundant(2, 1));
    EXPECT_TRUE(isRedundant(1, 0));
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_EQ("typ1|nod0|ind0 1\ntyp2|nod0|ind0 1\n", file());
}

TEST_F(EventJournalTest, ReadsLinesAsPeopleAndOtherEditorsWriteThem) {
    for (const char* const line :
         {"typ1|nod0|ind0 7", "typ1|nod0|ind0  7", "typ1|nod0|ind0\t7", " \ttyp1|nod0|ind0 7",
          "typ1|nod0|ind0 +7", "typ1|nod0|ind0 007", "typ1|nod0|ind0 7\r", "typ1|nod0|ind0 7 \t",
          "typ1|nod0|ind0 7x", "typ1|nod0|ind0 7 8", "typ1|nod0|ind0 7.5"}) {
        write(std::string(line) + "\n");
        EventJournal fresh;
        EXPECT_TRUE(fresh.checkForRedundantEvent(1, 0, 0, 7)) << line;
    }
    write("typ1|nod0|ind0 -2147483648\r\ntyp2|nod0|ind0 2147483647\r\n");
    EXPECT_TRUE(isRedundant(1, -2147483647 - 1));
    EXPECT_TRUE(isRedundant(2, 2147483647));
}

TEST_F(EventJournalTest, ReadsAFileOfAnyLengthToItsEnd) {
    std::string text = std::string(1000000, '\n') + "typ1|nod0|ind0 1\n";
    for (int node = 1; node <= 10000; ++node) {
        text += "typ3|nod" + std::to_string(node) + "|ind0 5\n";
    }
    write(text + std::string(1000000, 'x') + " 1\ntyp2|nod0|ind0 1\n");
    EXPECT_TRUE(isRedundant(1, 1));
    EXPECT_TRUE(isRedundant(2, 1));
    EXPECT_TRUE(journal.checkForRedundantEvent(3, 10000, 0, 5));
    EXPECT_FALSE(isRedundant(1, 0));
    const std::string written = file();
    EXPECT_EQ(10002, std::count(written.begin(), written.end(), '\n'));
}

TEST_F(EventJournalTest, TakesLinesOf255CharactersAtMost) {
    const std::string longest = std::string(253, 'k') + " 1";
    write(longest + "\nk" + longest + "\n");
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_EQ(longest + "\ntyp1|nod0|ind0 1\n", file());
}

TEST_F(EventJournalTest, WaitsForNoPipe) {
    ASSERT_EQ(0, mkfifo(machine.folder().file("data/assetidprv.evt").c_str(), 0600));
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_EQ("typ1|nod0|ind0 1\n", file());
}

TEST_F(EventJournalTest, CatchesUpWhereItCouldNotBeWritten) {
    const std::string path = machine.folder().file("data/assetidprv.evt");
    std::filesystem::create_directory(path);
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_TRUE(isRedundant(1, 1));
    std::filesystem::remove(path);
    EXPECT_FALSE(isRedundant(2, 1));
    EXPECT_EQ("typ1|nod0|ind0 1\ntyp2|nod0|ind0 1\n", file());
}

// What a folder does that may not be written to.
TEST_F(EventJournalTest, WritesInPlaceWhereTheFileCannotBeReplaced) {
    write("typ1|nod0|ind0 -100\n");
    machine.folder().write("data/assetidprv.evt.new/taken", "");
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_EQ("typ1|nod0|ind0 1\n", file());
    EXPECT_FALSE(isRedundant(2, 1));
    EXPECT_EQ("typ1|nod0|ind0 1\ntyp2|nod0|ind0 1\n", file());
    EventJournal next;
    EXPECT_TRUE(next.checkForRedundantEvent(2, 0, 0, 1));
}

TEST_F(EventJournalTest, WritesInAFolderThatIsReadOnly) {
    namespace fs = std::filesystem;
    write("typ1|nod0|ind0 0\n");
    const std::string folder = machine.folder().file("data");
    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
    if (::access(folder.c_str(), W_OK) == 0) {
        GTEST_SKIP() << "every folder can be written to by root";
    }
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_EQ("typ1|nod0|ind0 1\n", file());
    fs::permissions(folder, fs::perms::owner_all);
}

// Nothing is written through a link: who made it may not be who owns what it names.
TEST_F(EventJournalTest, WritesNothingInPlaceThroughALink) {
    const std::string other = machine.folder().write("other", "kept");
    std::filesystem::create_symlink(other, machine.folder().file("data/assetidprv.evt"));
    machine.folder().write("data/assetidprv.evt.new/taken", "");
    EXPECT_FALSE(isRedundant(1, 1));
    EXPECT_EQ("kept", machine.folder().read("other"));
}
