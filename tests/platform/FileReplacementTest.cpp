// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FileReplacement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

#include "ChildProcess.h"
#include "Error.h"
#include "TemporaryFolder.h"

using namespace QZ;
using testing::HasSubstr;

namespace {

// The message of the Error, or nothing when there was none.
std::string failure(const std::string& path, const std::string& content) {
    try {
        replaceFile(path, content);
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

}  // namespace

TEST(FileReplacement, CreatesAFileForItsOwnerOnly) {
    const TemporaryFolder folder;
    replaceFile(folder.file("asset.dat"), "a=b\n");
    EXPECT_EQ("a=b\n", folder.read("asset.dat"));
    struct stat status {};
    ASSERT_EQ(0, stat(folder.file("asset.dat").c_str(), &status));
    EXPECT_EQ(0600U, status.st_mode & 0777U);
    EXPECT_FALSE(folder.contains("asset.dat.new"));
}

TEST(FileReplacement, PutsANewFileInTheOldOnesPlace) {
    const TemporaryFolder folder;
    const std::string path = folder.write("asset.dat", "old");
    std::filesystem::create_hard_link(path, folder.file("witness"));
    replaceFile(path, "new");
    EXPECT_EQ("new", folder.read("asset.dat"));
    EXPECT_EQ("old", folder.read("witness"));
}

TEST(FileReplacement, WorksInTheWorkingFolder) {
    const TemporaryFolder folder;
    EXPECT_TRUE(ChildProcess([&] {
                    if (chdir(folder.path().c_str()) != 0)
                        return false;
                    replaceFile("asset.dat", "new");
                    return true;
                }).succeeds());
    EXPECT_EQ("new", folder.read("asset.dat"));
}

TEST(FileReplacement, DoesNotWriteThroughWhatWasLeftBehind) {
    const TemporaryFolder folder;
    folder.write("victim", "untouched");
    std::filesystem::create_symlink("victim", folder.file("asset.dat.new"));
    replaceFile(folder.file("asset.dat"), "new");
    EXPECT_EQ("untouched", folder.read("victim"));
    EXPECT_EQ("new", folder.read("asset.dat"));
}

TEST(FileReplacement, LeavesTheOldFileWhenTheNewOneDoesNotFit) {
    const TemporaryFolder folder;
    const std::string path = folder.write("asset.dat", "old");
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(0, getrlimit(RLIMIT_FSIZE, &limit));
    rlimit small = limit;
    small.rlim_cur = 100;
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &small));
    const std::string message = failure(path, std::string(200, 'x'));
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &limit));
    ASSERT_NE(SIG_ERR, std::signal(SIGXFSZ, old));
    EXPECT_EQ("Cannot save " + path + ": File too large", message);
    EXPECT_EQ("old", folder.read("asset.dat"));
    EXPECT_FALSE(folder.contains("asset.dat.new"));
}

TEST(FileReplacement, NamesAFolderThatIsMissing) {
    const TemporaryFolder folder;
    const std::string path = folder.file("none/asset.dat");
    EXPECT_EQ("Cannot save " + path + ": No such file or directory", failure(path, "new"));
}

TEST(FileReplacement, LeavesNothingBehindWhenTheLastStepFails) {
    const TemporaryFolder folder;
    folder.write("asset.dat/inside", "old");
    EXPECT_THAT(failure(folder.file("asset.dat"), "new"), HasSubstr("Is a directory"));
    EXPECT_EQ("old", folder.read("asset.dat/inside"));
    EXPECT_FALSE(folder.contains("asset.dat.new"));
}

TEST(FileReplacement, SaysThatPermissionIsMissing) {
    const TemporaryFolder folder;
    const std::string path = folder.write("asset.dat", "old");
    EXPECT_TRUE(succeedsAsOrdinaryUser(folder.path(), [&] {
        return chmod(folder.path().c_str(), 0555) == 0 &&
               failure(path, "new") == "Cannot save " + path + ": Permission denied";
    }));
    ASSERT_EQ(0, chmod(folder.path().c_str(), 0755));
    EXPECT_EQ("old", folder.read("asset.dat"));
}
