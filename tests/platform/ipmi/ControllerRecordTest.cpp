// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ControllerRecord.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Bmc.h"
#include "FruBuilder.h"
#include "IpmiReplies.h"
#include "MachineSanitizer.h"
#include "ManualClock.h"
#include "SdrBuilder.h"
#include "SmBiosBuilder.h"
#include "TestBmc.h"
#include "TestMachine.h"

namespace QZ {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* _replies = "dev/ipmi0.replies";

std::string _secretFru() {
    return FruBuilder()
        .chassis(FruAreaBuilder::chassis(23).text("CH-PART").text("CH-SERIAL").text("00:1A:2B"))
        .board(FruAreaBuilder::board(25)
                   .text("Maker")
                   .text("Board")
                   .text("SIXBIT12", IpmiEncoding::SixBitAscii)
                   .text("B-PART")
                   .text(""))
        .product(FruAreaBuilder::product(25)
                     .text("Maker")
                     .text("Server")
                     .text("P-PART")
                     .text("1.0")
                     .text("98765432", IpmiEncoding::BcdPlus)
                     .text("  ASSET-77 ")
                     .spoilChecksum())
        .multiRecord("secret MAC addr.")
        .build(256);
}

class ARecordedController : public testing::Test {
protected:
    ARecordedController() {
        simulated->reply("06 01", "00 20 01 02 45 02 8f 00 00 00 34 12")
            .reply("00 01", "00 01 00 00")
            .reply("06 37", "00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10")
            .fru(0, _secretFru())
            .records({fruLocatorRecord(fruLocator(1, 1, 10, "Absent"))});
    }

    // What another machine's controller says of its unit that replies as recorded.
    FruInventory replay(const MachineFiles& files) {
        simulated.reset();
        const TestMachine machine;
        machine.folder().write(_replies, files.at(_replies));
        const std::vector<BmcFru> frus = Bmc().getFrus();
        return frus.empty() ? FruInventory() : frus[0].inventory;
    }

    ManualClock clock;
    std::unique_ptr<TestBmc> simulated = std::make_unique<TestBmc>();
};

TEST_F(ARecordedController, RepliesAsTheMachinesDid) {
    MachineRecord record;
    recordController(record);
    EXPECT_TRUE(record.problems.empty());
    const FruInventory fru = replay(record.files);
    ASSERT_TRUE(fru.product && fru.board && fru.chassis);
    EXPECT_EQ(fru.product->serialNumber.text, "98765432");
    EXPECT_EQ(fru.board->serialNumber.text, "SIXBIT12");
}

TEST_F(ARecordedController, IsNoneWhereThereIsNone) {
    simulated->vanish();
    MachineRecord record;
    recordController(record);
    EXPECT_TRUE(record.files.empty());
}

TEST_F(ARecordedController, IsTakenAsFarAsItAnswered) {
    simulated->reply("06 25", "none");
    MachineRecord record;
    recordController(record);
    EXPECT_THAT(record.files.at(_replies), HasSubstr("00 01 = 00 01 00 00\n"));
    ASSERT_EQ(record.problems.size(), 1U);
    EXPECT_THAT(record.problems[0], HasSubstr("stopped answering"));
}

TEST_F(ARecordedController, TellsNoSecretsWhenItIsSanitized) {
    MachineRecord record;
    recordController(record);
    sanitizeController(record.files, "key");
    std::string all;
    IpmiReplies replies = IpmiReplies::parse(record.files.at(_replies));
    for (const auto& [request, reply] : replies.entries()) {
        all += reply->data.substr(std::min<std::size_t>(1, reply->data.size()));
    }
    for (const char* secret : {"CH-SERIAL", "00:1A:2B", "ASSET-77", "secret", "\x98\x76\x54"}) {
        EXPECT_THAT(all, Not(HasSubstr(secret)));
    }
    const FruInventory fru = replay(record.files);
    ASSERT_TRUE(fru.product && fru.board && fru.chassis);
    EXPECT_FALSE(fru.chassis->isDamaged || fru.board->isDamaged);
    EXPECT_TRUE(fru.product->isDamaged) << "a wrong checksum stays wrong";
    EXPECT_THAT(fru.chassis->serialNumber.text, testing::MatchesRegex("[A-Z]{2}-[A-Z]{6}"));
    EXPECT_THAT(fru.chassis->custom[0].text,
                testing::MatchesRegex("[0-9]{2}:[0-9][A-Z]:[0-9][A-Z]"));
    EXPECT_THAT(fru.board->serialNumber.text, testing::MatchesRegex("[A-Z]{6}[0-9]{2}"));
    EXPECT_THAT(fru.product->serialNumber.text, testing::MatchesRegex("[0-9]{8}"));
    EXPECT_THAT(fru.product->assetTag.text, testing::MatchesRegex("  [A-Z]{5}-[0-9]{2} "));
    EXPECT_NE(fru.product->serialNumber.text, "98765432");
    EXPECT_NE(fru.board->serialNumber.text, "SIXBIT12");
    EXPECT_EQ(fru.product->name.text, "Server");
    EXPECT_EQ(fru.chassis->partNumber.text, "CH-PART");
}

TEST_F(ARecordedController, HasTheFirmwaresOtherUuidInItsOwnOrder) {
    std::string uuid;
    for (char byte = 16; byte >= 1; --byte) {
        uuid += byte;
    }
    SmBiosBuilder firmware(SmBiosBuilder::EntryPoint::Version3, 3, 0);
    firmware.add(1, 0x1B).bytes(8, uuid);
    MachineRecord record;
    recordController(record);
    record.files["sys/firmware/dmi/tables/DMI"] = firmware.table();
    sanitizeController(record.files, "key");
    sanitizeMachine(record.files, "key");
    const std::string changed = record.files["sys/firmware/dmi/tables/DMI"].substr(8, 16);
    const auto guid =
        IpmiReplies::parse(record.files.at(_replies)).find({IpmiFunction::Application, 0x37, {}});
    EXPECT_NE(changed, uuid);
    EXPECT_EQ(guid->data, std::string(changed.rbegin(), changed.rend()));
}

TEST(SanitizeController, TakesAnyFileAndNone) {
    for (const char* text :
         {"", "nonsense\n", "0a 11 00 00 00 20 = 00\n06 37 = 00\n",
          "0a 11 00 ff ff 20 = 00 01 55\n", "0a 11 = 00 01 55\n", "06 01 = none\n"}) {
        MachineFiles files = {{_replies, text}};
        sanitizeController(files, "key");
        EXPECT_EQ(files.size(), 1U);
    }
    MachineFiles none;
    sanitizeController(none, "key");
    EXPECT_TRUE(none.empty());
}

}  // namespace
}  // namespace QZ
