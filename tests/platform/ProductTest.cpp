// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Product.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "ChildProcess.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "Text.h"

using namespace QZ;
using testing::HasSubstr;

namespace {

constexpr const char* MachineId = "0123456789abcdef0123456789abcdef";

std::wstring uidOf(const std::string& machineId) {
    const TemporaryFolder folder;
    folder.write("etc/machine-id", machineId);
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", folder.path());
    return Product::getUid();
}

}  // namespace

TEST(Product, HasTheBuildsVersion) {
    EXPECT_EQ(make_wstring(TAVQZ_VERSION), Product::getVersion());
}

TEST(Product, HasADataDirectoryThatEndsInASlash) {
    const ScopedEnvironment data("TAVQZ_DATA_DIR", "/some/data");
    EXPECT_EQ(L"/some/data/", Product::getDataDirectory());
}

TEST(Product, HasAnUidThatIsStableForTheMachine) {
    // Computed independently: HMAC-SHA256 with the machine id as the key, cut to 16 bytes.
    EXPECT_EQ(L"99D1048A-025F-8057-B0E6-0F2F19FBAE4F", uidOf(std::string(MachineId) + "\n"));
    EXPECT_EQ(uidOf(MachineId), uidOf(std::string(MachineId) + "\n"));
    EXPECT_NE(uidOf(MachineId), uidOf("0123456789abcdef0123456789abcdee\n"));
}

TEST(Product, HasNoUidWithoutAMachineId) {
    for (const char* text :
         {"", "\n", "uninitialized\n", "0123456789abcdef0123456789abcde\n",
          "0123456789abcdef0123456789abcdef0\n", "0123456789abcdef0123456789abcdeg\n"})
        EXPECT_EQ(L"", uidOf(text)) << text;
    const TemporaryFolder folder;
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", folder.path());
    EXPECT_EQ(L"", Product::getUid());
}

TEST(Product, MakesItsDataDirectoryForItsOwnerOnly) {
    const TemporaryFolder folder;
    const ScopedEnvironment data("TAVQZ_DATA_DIR", folder.file("above/data"));
    std::string reason = "stale";
    EXPECT_TRUE(Product::makeDataDirectory(reason));
    EXPECT_EQ("", reason);
    for (const char* name : {"above", "above/data"}) {
        struct stat status {};
        ASSERT_EQ(0, stat(folder.file(name).c_str(), &status));
        EXPECT_TRUE(S_ISDIR(status.st_mode));
        EXPECT_EQ(0700U, status.st_mode & 0777U);
    }
    EXPECT_TRUE(Product::makeDataDirectory(reason));
}

TEST(Product, MakesADataFileOnceAndLeavesItAlone) {
    const TemporaryFolder folder;
    const ScopedEnvironment data("TAVQZ_DATA_DIR", folder.file("data"));
    EXPECT_TRUE(Product::makeDataFile(L"new.dat"));
    EXPECT_EQ("", folder.read("data/new.dat"));
    folder.write("data/new.dat", "kept");
    EXPECT_TRUE(Product::makeDataFile(L"new.dat"));
    EXPECT_EQ("kept", folder.read("data/new.dat"));
}

TEST(Product, SaysThatThereIsNoDataFileWithoutItsFolder) {
    const TemporaryFolder folder;
    folder.write("file", "");
    const ScopedEnvironment data("TAVQZ_DATA_DIR", folder.file("file/data"));
    EXPECT_FALSE(Product::makeDataFile(L"new.dat"));
}

TEST(Product, SaysWhyItHasNoDataDirectory) {
    const TemporaryFolder folder;
    folder.write("file", "");
    std::string reason;
    {
        const ScopedEnvironment data("TAVQZ_DATA_DIR", folder.file("file"));
        EXPECT_FALSE(Product::makeDataDirectory(reason));
        EXPECT_THAT(reason, HasSubstr(folder.file("file")));
    }
    {
        const ScopedEnvironment data("TAVQZ_DATA_DIR", folder.file("file/data"));
        EXPECT_FALSE(Product::makeDataDirectory(reason));
        EXPECT_THAT(reason, HasSubstr(folder.file("file")));
    }
    const ScopedEnvironment data("TAVQZ_DATA_DIR", folder.file("data"));
    EXPECT_TRUE(succeedsAsOrdinaryUser(folder.path(), [&] {
        return chmod(folder.path().c_str(), 0555) == 0 && !Product::makeDataDirectory(reason) &&
               reason == "Cannot make the folder " + folder.file("data") + ": Permission denied";
    }));
}
