// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "File.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Error.h"
#include "TemporaryFolder.h"
#include "Text.h"

using namespace QZ;

namespace {

mode_t modeOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
}

}  // namespace

TEST(File, IsCreatedForItsOwnerOnly) {
    const TemporaryFolder folder;
    for (const int mode : {2, 3}) {
        const std::string path = folder.file(std::to_string(mode));
        File file(make_wstring(path));
        file.open(mode);
        file.close();
        EXPECT_EQ(0600U, modeOf(path));
    }
}

TEST(File, KeepsItsContentWhenOpened) {
    const TemporaryFolder folder;
    const std::string path = folder.write("asset.dat", "a=b\n");
    for (const int mode : {1, 2, 3}) {
        File file(make_wstring(path));
        file.open(mode);
        file.close();
        file.close();
        EXPECT_EQ("a=b\n", folder.read("asset.dat"));
    }
}

TEST(File, IsNotCreatedToRead) {
    const TemporaryFolder folder;
    File file(make_wstring(folder.file("none")));
    EXPECT_THROW(file.open(1), Error);
    EXPECT_FALSE(folder.contains("none"));
}

TEST(File, NamesItsPathAndTheReason) {
    const TemporaryFolder folder;
    const std::string path = folder.file("no/folder");
    try {
        File(make_wstring(path)).open(3);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ("Cannot open " + path + ": No such file or directory", error.what());
    }
}

TEST(File, RefusesModesThatAreNone) {
    const TemporaryFolder folder;
    File file(make_wstring(folder.file("file")));
    for (const int mode : {0, 4, -1})
        EXPECT_THROW(file.open(mode), Error);
    EXPECT_FALSE(folder.contains("file"));
}
