// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FileContent.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cerrno>
#include <cstring>

#include "ChildProcess.h"
#include "Descriptor.h"
#include "TemporaryFolder.h"

using namespace QZ;

TEST(FileContent, IsTheWholeFile) {
    const TemporaryFolder folder;
    for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 100000U}) {
        const std::string content(size, 'x');
        const FileContent file = readWholeFile(folder.write("file", content), 100000);
        EXPECT_EQ(FileContent::Read, file.state);
        EXPECT_EQ(content, file.text);
    }
}

TEST(FileContent, KeepsZeroBytes) {
    const TemporaryFolder folder;
    const std::string content("a\0b", 3);
    EXPECT_EQ(content, readWholeFile(folder.write("file", content), 3).text);
}

TEST(FileContent, DoesNotTrustTheAnnouncedSize) {
    // The kernel announces 0 bytes for this one.
    const FileContent file = readWholeFile("/proc/self/status", 1000000);
    EXPECT_EQ(FileContent::Read, file.state);
    EXPECT_NE(std::string::npos, file.text.find("Pid:"));
    EXPECT_EQ(FileContent::TooLarge, readWholeFile("/proc/self/status", 10).state);
}

TEST(FileContent, IsLimited) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file", std::string(101, 'x'));
    EXPECT_EQ(FileContent::Read, readWholeFile(path, 101).state);
    EXPECT_EQ(FileContent::TooLarge, readWholeFile(path, 100).state);
    EXPECT_EQ("", readWholeFile(path, 100).text);
    EXPECT_EQ(FileContent::TooLarge, readWholeFile(path, 0).state);
}

TEST(FileContent, IsTheStartOfAFileWhateverFollows) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "abcdef");
    for (const std::size_t length : {0U, 1U, 5U, 6U, 7U, 100U}) {
        const FileContent file = readFileStart(path, length);
        EXPECT_EQ(FileContent::Read, file.state);
        EXPECT_EQ(std::string("abcdef").substr(0, length), file.text);
        EXPECT_TRUE(isStillThere(path, file));
    }
    EXPECT_EQ(10U, readFileStart("/proc/self/status", 10).text.size());
    EXPECT_EQ(FileContent::Missing, readFileStart(folder.file("none"), 10).state);
    EXPECT_EQ(FileContent::NotRegular, readFileStart(folder.path(), 10).state);
}

TEST(FileContent, TellsAMissingFile) {
    const TemporaryFolder folder;
    folder.write("file", "");
    EXPECT_EQ(FileContent::Missing, readWholeFile(folder.file("none"), 10).state);
    EXPECT_EQ(FileContent::Missing, readWholeFile(folder.file("no/folder"), 10).state);
    EXPECT_EQ(FileContent::Missing, readWholeFile(folder.file("file/below"), 10).state);
}

TEST(FileContent, TellsAFileThatMayNotBeRead) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "secret");
    ASSERT_EQ(0, chmod(path.c_str(), 0));
    EXPECT_TRUE(succeedsAsOrdinaryUser(folder.path(), [&] {
        const FileContent file = readWholeFile(path, 10);
        return file.state == FileContent::Unreadable && file.error == EACCES;
    }));
}

TEST(FileContent, DoesNotWaitForWhatIsNoFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(FileContent::NotRegular, readWholeFile(folder.path(), 10).state);
    EXPECT_EQ(FileContent::NotRegular, readWholeFile("/dev/zero", 10).state);
    ASSERT_EQ(0, mkfifo(folder.file("pipe").c_str(), 0600));
    EXPECT_EQ(FileContent::NotRegular, readWholeFile(folder.file("pipe"), 10).state);

    const Descriptor listener(socket(AF_UNIX, SOCK_STREAM, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder.file("socket");
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    ASSERT_EQ(0, bind(listener.get(), reinterpret_cast<sockaddr*>(&address), sizeof address));
    EXPECT_EQ(FileContent::NotRegular, readWholeFile(path, 10).state);
}
