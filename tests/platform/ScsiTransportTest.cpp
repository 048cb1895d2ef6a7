// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ScsiTransport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>

#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

class RecordedReplies : public testing::Test {
protected:
    RecordedReplies() {
        request.outputLength = 16;
        std::memcpy(request.data, "\x12\x01\x80\x00\xFF\x00", 6);
    }

    std::unique_ptr<ScsiDevice> open() const {
        return ScsiTransport::current().open(folder.file("dev/sda"));
    }

    TemporaryFolder folder;
    ScopedEnvironment root{"TAVQZ_HOST_ROOT", folder.path()};
    ScsiRequest request;
};

TEST(RecordedReplyName, IsTheCommandInHexadecimal) {
    const unsigned char command[] = {0x12, 0x01, 0x80, 0x00, 0xFF, 0x0A};
    EXPECT_EQ(recordedReplyName(command), "12018000ff0a");
}

TEST_F(RecordedReplies, AnswerTheirCommand) {
    folder.write("dev/sda/12018000ff00", "reply");
    const auto device = open();
    ASSERT_NE(device, nullptr);
    request.data[16] = 'x';
    EXPECT_EQ(device->sendCommand(request), 0);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(request.data), 17),
              "reply" + std::string(11, '\0') + "x");
}

TEST_F(RecordedReplies, RefuseACommandThatWasNotAnswered) {
    folder.write("dev/sda/12000000ff00", "reply");
    const auto device = open();
    ASSERT_NE(device, nullptr);
    EXPECT_NE(device->sendCommand(request), 0);
    EXPECT_EQ(request.data[0], 0x12) << "the request is as it was";
}

TEST_F(RecordedReplies, RefuseAReplyThatThereIsNoRoomFor) {
    folder.write("dev/sda/12018000ff00", std::string(17, 'x'));
    const auto device = open();
    ASSERT_NE(device, nullptr);
    EXPECT_NE(device->sendCommand(request), 0);
}

TEST_F(RecordedReplies, AreOfOtherMachinesOnly) {
    folder.write("dev/sda/12018000ff00", "reply");
    const ScopedEnvironment thisMachine("TAVQZ_HOST_ROOT", nullptr);
    EXPECT_EQ(open(), nullptr);
}

TEST_F(RecordedReplies, AreNotThereOfAMissingDisk) {
    EXPECT_EQ(open(), nullptr);
}

TEST_F(RecordedReplies, AreNotWaitedForWhereADiskIsNone) {
    folder.write("dev/sda", "a file");
    EXPECT_EQ(open(), nullptr);
    std::filesystem::remove(folder.file("dev/sda"));
    ASSERT_EQ(mkfifo(folder.file("dev/sda").c_str(), 0600), 0);
    EXPECT_EQ(open(), nullptr);
}

class NoDevices final : public ScsiTransport {
public:
    std::unique_ptr<ScsiDevice> open(const std::string&) override { return nullptr; }
};

TEST_F(RecordedReplies, GiveWayToAReplacement) {
    folder.write("dev/sda/12018000ff00", "reply");
    {
        NoDevices none;
        const ScsiTransportReplacement replacement(none);
        EXPECT_EQ(&ScsiTransport::current(), &none);
        EXPECT_EQ(open(), nullptr);
    }
    EXPECT_NE(open(), nullptr);
}

}  // namespace
}  // namespace QZ
