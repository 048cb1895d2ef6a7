// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiSession.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Clock.h"
#include "Descriptor.h"
#include "FileLock.h"
#include "ManualClock.h"
#include "TestBmc.h"
#include "TestMachine.h"

namespace QZ {
namespace {

constexpr const char* _replies = "dev/ipmi0.replies";
const IpmiRequest _deviceId{IpmiFunction::Application, 0x01, {}};

class AnIpmiSession : public testing::Test {
protected:
    std::int64_t now() { return Clock::current().milliseconds(); }

    ManualClock clock;
    TestBmc bmc;
};

TEST_F(AnIpmiSession, BringsRepliesWhateverTheirCompletion) {
    bmc.reply("06 01", "00 20 01").reply("06 08", "d4 01");
    IpmiSession session(bmc, now() + 5000);
    EXPECT_EQ(session.ask(_deviceId)->data, "\x20\x01");
    EXPECT_EQ(session.ask({IpmiFunction::Application, 0x08, {}})->completion, 0xD4);
    EXPECT_EQ(session.askForData(_deviceId), "\x20\x01");
    EXPECT_FALSE(session.askForData({IpmiFunction::Application, 0x08, {}}));
    EXPECT_FALSE(session.hasTimedOut());
}

TEST_F(AnIpmiSession, AsksABusyControllerAgain) {
    for (const unsigned char busy :
         {IpmiNodeBusy, IpmiControllerTimeout, IpmiDuplicate, IpmiInInitialisation}) {
        unsigned times = 3;
        bmc.reply("06 01", "00 20").trouble([&](const IpmiRequest&, IpmiReply& reply) {
            reply = {busy, {}};
            return times-- > 0;
        });
        IpmiSession session(bmc, now() + 5000);
        EXPECT_EQ(session.ask(_deviceId)->data, "\x20") << static_cast<unsigned>(busy);
    }
}

TEST_F(AnIpmiSession, LeavesAControllerThatStaysBusy) {
    bmc.reply("06 01", "c0");
    const std::int64_t start = now();
    IpmiSession session(bmc, now() + 5000);
    EXPECT_EQ(session.ask(_deviceId)->completion, IpmiNodeBusy);
    EXPECT_EQ(bmc.asked().size(), IpmiSession::MostRetries + 1);
    EXPECT_LT(now() - start, 2000);
    EXPECT_FALSE(session.hasTimedOut());
}

TEST_F(AnIpmiSession, TakesABusyUnitForBusyOnlyWhenItIsRead) {
    bmc.reply("06 01", "81").reply("0a 11 00 00 00 20", "81");
    IpmiSession session(bmc, now() + 5000);
    EXPECT_EQ(session.ask(_deviceId)->completion, IpmiFruBusy);
    EXPECT_EQ(bmc.asked().size(), 1U);
    static_cast<void>(session.ask({IpmiFunction::Storage, 0x11, std::string("\0\0\0\x20", 4)}));
    EXPECT_EQ(bmc.asked().size(), 2U + IpmiSession::MostRetries);
}

TEST_F(AnIpmiSession, EndsAtItsDeadlineForAllCommandsTogether) {
    bmc.reply("06 01", "00 20");
    bmc.takeMilliseconds(1500);
    const std::int64_t start = now();
    IpmiSession session(bmc, start + 5000);
    unsigned replies = 0;
    while (session.ask(_deviceId))
        ++replies;
    EXPECT_EQ(replies, 3U);
    EXPECT_EQ(now() - start, 5000);
    EXPECT_TRUE(session.hasTimedOut());
}

TEST_F(AnIpmiSession, AsksNothingMoreAfterATimeOut) {
    bmc.hang();
    IpmiSession session(bmc, now() + 5000);
    EXPECT_FALSE(session.ask(_deviceId));
    EXPECT_TRUE(session.hasTimedOut() && session.isOver());
    bmc.wake();
    EXPECT_FALSE(session.ask(_deviceId));
    EXPECT_EQ(bmc.asked().size(), 1U);
}

TEST_F(AnIpmiSession, IsNoneWithoutAController) {
    bmc.vanish();
    IpmiSession session(bmc, now() + 5000);
    EXPECT_FALSE(session.isOver());
    EXPECT_FALSE(session.ask(_deviceId));
    EXPECT_TRUE(session.isOver());
    EXPECT_FALSE(session.hasTimedOut());
}

TEST(RecordedController, RepliesAsItWasRecorded) {
    const TestMachine machine;
    machine.folder().write(_replies, "06 01 = 00 20 01\n");
    IpmiSession session(IpmiTransport::current(), Clock::current().milliseconds() + 5000);
    EXPECT_EQ(session.askForData(_deviceId), "\x20\x01");
    EXPECT_EQ(session.ask({IpmiFunction::Chassis, 0x01, {}})->completion, IpmiInvalidCommand);
}

TEST(RecordedController, MayHang) {
    const ManualClock clock;
    const TestMachine machine;
    machine.folder().write(_replies, "06 01 = none\n");
    IpmiSession session(IpmiTransport::current(), Clock::current().milliseconds() + 5000);
    EXPECT_FALSE(session.ask(_deviceId));
    EXPECT_TRUE(session.hasTimedOut());
    EXPECT_EQ(clock.sleptMilliseconds(), 5000);
}

TEST(RecordedController, IsMissingWhereTheMachineHasNone) {
    const TestMachine machine;
    EXPECT_EQ(IpmiTransport::current().open(0), nullptr);
    std::filesystem::create_directories(machine.folder().file(_replies));
    EXPECT_EQ(IpmiTransport::current().open(0), nullptr);
    std::filesystem::remove(machine.folder().file(_replies));
    ASSERT_EQ(mkfifo(machine.folder().file(_replies).c_str(), 0600), 0);
    EXPECT_EQ(IpmiTransport::current().open(0), nullptr);
}

TEST(RecordedController, IsOneCallersAtATime) {
    const ManualClock clock;
    const TestMachine machine;
    const std::string path = machine.folder().write(_replies, "06 01 = 00\n");
    {
        const auto first = IpmiTransport::current().open(1000);
        EXPECT_NE(first, nullptr);
        EXPECT_EQ(IpmiTransport::current().open(1000), nullptr);
        EXPECT_GE(clock.sleptMilliseconds(), 1000);
    }
    EXPECT_NE(IpmiTransport::current().open(0), nullptr);
    const Descriptor other(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(lockFile(other, FileLock::Exclusive, 0), 0);
    EXPECT_EQ(IpmiTransport::current().open(1000), nullptr);
}

}  // namespace
}  // namespace QZ
