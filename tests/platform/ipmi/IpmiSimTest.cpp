// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiSim.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "Bmc.h"
#include "Clock.h"
#include "FruBuilder.h"
#include "IpmiFru.h"
#include "SdrBuilder.h"

namespace QZ {
namespace {

using testing::HasSubstr;

// A unit as ipmitool prints it: what it says under which name, in its order. It leaves the areas'
// file identifiers out.
using Sheet = std::vector<std::pair<std::string, std::string>>;

void _say(Sheet& sheet, const char* name, const FruField& field) {
    // It shows Latin-1 as it is stored.
    const std::string text = field.encoding == IpmiEncoding::Latin1
                                 ? encodeIpmiText(IpmiEncoding::Latin1, field.text)
                                 : field.text;
    if (!text.empty())
        sheet.emplace_back(name, text);
}

void _sayAll(Sheet& sheet, const char* name, const std::vector<FruField>& fields) {
    for (const FruField& field : fields) {
        _say(sheet, name, field);
    }
}

Sheet _sheetOf(const FruInventory& fru) {
    Sheet sheet;
    if (fru.chassis) {
        _say(sheet, "Chassis Part Number", fru.chassis->partNumber);
        _say(sheet, "Chassis Serial", fru.chassis->serialNumber);
        _sayAll(sheet, "Chassis Extra", fru.chassis->custom);
    }
    if (fru.board) {
        _say(sheet, "Board Mfg", fru.board->manufacturer);
        _say(sheet, "Board Product", fru.board->name);
        _say(sheet, "Board Serial", fru.board->serialNumber);
        _say(sheet, "Board Part Number", fru.board->partNumber);
        _sayAll(sheet, "Board Extra", fru.board->custom);
    }
    if (fru.product) {
        _say(sheet, "Product Manufacturer", fru.product->manufacturer);
        _say(sheet, "Product Name", fru.product->name);
        _say(sheet, "Product Part Number", fru.product->partNumber);
        _say(sheet, "Product Version", fru.product->version);
        _say(sheet, "Product Serial", fru.product->serialNumber);
        _say(sheet, "Product Asset Tag", fru.product->assetTag);
        _sayAll(sheet, "Product Extra", fru.product->custom);
    }
    return sheet;
}

// The units that it prints, by the name in front of "(ID".
std::map<std::string, Sheet> _sheetsOf(const std::string& output) {
    constexpr std::size_t column = 23;
    std::map<std::string, Sheet> sheets;
    Sheet* sheet = nullptr;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("FRU Device Description : ", 0) == 0) {
            const std::size_t start = line.find(": ") + 2;
            sheet = &sheets[line.substr(start, line.find(" (ID") - start)];
        } else if (sheet != nullptr && line.size() > column + 2 && line[column] == ':') {
            const std::string name = line.substr(1, line.find_last_not_of(' ', column - 1));
            if (name != "Board Mfg Date" && name != "Chassis Type")
                sheet->emplace_back(name, line.substr(column + 2));
        }
    }
    return sheets;
}

std::string _everyEncoding() {
    return FruBuilder()
        .chassis(FruAreaBuilder::chassis(23)
                     .text("CH-1")
                     .text("0123-45.6", IpmiEncoding::BcdPlus)
                     .text("own text")
                     .text("cafe01", IpmiEncoding::Binary))
        .board(FruAreaBuilder::board(25, 0xB00000)
                   .text("MAKER_1 ", IpmiEncoding::SixBitAscii)
                   .text("Gr\xC3\xBC\xC3\x9F")
                   .text("00ff10", IpmiEncoding::Binary)
                   .text("98 76:54", IpmiEncoding::BcdPlus)
                   .text(""))
        .product(FruAreaBuilder::product(25)
                     .text("Maker")
                     .text("Server  ")
                     .text("SIX-BIT&", IpmiEncoding::SixBitAscii)
                     .text("01.2", IpmiEncoding::BcdPlus)
                     .stored(IpmiEncoding::Latin1, std::string("SN-7\0\0", 6))
                     .text("tag")
                     .text("ab", IpmiEncoding::Binary)
                     .text("extra"))
        .multiRecord(std::string(16, '\0'))
        .build(256);
}

class ASimulatedController : public testing::Test {
protected:
    void SetUp() override {
        if (!IpmiSim::isInstalled())
            GTEST_SKIP() << "needs ipmi_sim and ipmitool: install openipmi and ipmitool";
        sim.fru(0, _everyEncoding());
        sim.fru(1, namedFru().spoilChecksum().build(512));
        // All seven fields: ipmitool reads on behind the end marker.
        FruAreaBuilder damaged = FruAreaBuilder::product(25).text("Maker").text("PSU");
        damaged.text("").text("").text("").text("").text("").spoilChecksum();
        sim.fru(2, FruBuilder().product(damaged).build(128));
        sim.fru(3, std::string(64, '\xFF'));
        const char* const names[] = {"Board", "Header", "Checksum", "Empty", "Nothing"};
        for (unsigned id = 1; id < 5; ++id) {
            sim.record(fruLocatorRecord(fruLocator(id, id, 10, names[id])));
        }
        sim.start();
    }

    IpmiSim sim;
    IpmiTransportReplacement replacement{sim};
    Bmc bmc;
};

TEST_F(ASimulatedController, SaysOfItselfWhatItTellsItsPeer) {
    const auto id = bmc.getDeviceId();
    ASSERT_TRUE(id);
    const std::string info = sim.ipmitool("mc info");
    const std::string version =
        std::to_string(id->majorFirmware) + "." + std::to_string(id->minorFirmware);
    EXPECT_THAT(info, HasSubstr("Firmware Revision         : " + version + "\n"));
    EXPECT_THAT(info, HasSubstr("Manufacturer ID           : " + std::to_string(id->manufacturer)));
    EXPECT_THAT(info, HasSubstr("Product ID                : " + std::to_string(id->product)));
    EXPECT_TRUE(bmc.getChassisStatus());
    EXPECT_TRUE(bmc.getWatchdog());
}

TEST_F(ASimulatedController, HasTheUnitsThatItTellsItsPeerFieldByField) {
    const std::string output = sim.ipmitool("fru print");
    const std::map<std::string, Sheet> sheets = _sheetsOf(output);
    const std::vector<BmcFru> frus = bmc.getFrus();
    ASSERT_EQ(frus.size(), 4U) << output;
    for (const BmcFru& fru : frus) {
        const std::string name = fru.locator.name.empty() ? "Builtin FRU Device" : fru.locator.name;
        ASSERT_EQ(sheets.count(name), 1U) << name << '\n' << output;
        EXPECT_EQ(_sheetOf(fru.inventory), sheets.at(name)) << name;
        EXPECT_TRUE(fru.isComplete);
    }
    EXPECT_EQ(_sheetOf(frus[0].inventory).size(), 15U) << "nothing is compared with nothing";
    EXPECT_EQ(frus[0].inventory.state, FruInventory::State::Ok) << frus[0].inventory.reason;
    EXPECT_EQ(frus[1].inventory.state, FruInventory::State::Damaged);
    EXPECT_TRUE(frus[2].inventory.product->isDamaged);
    EXPECT_EQ(frus[3].inventory.state, FruInventory::State::Empty);
    EXPECT_THAT(output, HasSubstr("Nothing")) << "a locator without data, of which we say nothing";
}

TEST_F(ASimulatedController, GivesTheInstancesOfItsUnits) {
    const std::vector<IpmiFru> frus = GetIpmiFruInstances();
    ASSERT_EQ(frus.size(), 3U);
    EXPECT_EQ(frus[0].getIdentifyingNumber(), "SIX-BIT&");
    EXPECT_EQ(frus[0].getNumber(), "SIX-BIT&");
    EXPECT_EQ(frus[1].getDescription(), "Header");
    EXPECT_EQ(frus[2].getName(), "PSU");
    EXPECT_EQ(frus[2].getEntityId(), 10);
}

TEST_F(ASimulatedController, IsGoneWhenItDies) {
    EXPECT_TRUE(bmc.getDeviceId());
    const auto connection = sim.open(0);
    sim.kill();
    IpmiReply reply;
    EXPECT_EQ(connection->send({IpmiFunction::Application, 0x01, {}}, reply, 5000),
              IpmiConnection::Outcome::Failed);
    EXPECT_TRUE(bmc.getFrus().empty());
    EXPECT_FALSE(bmc.getChassisStatus());
}

TEST_F(ASimulatedController, TakesNoLongerThanTheDeadlineWhenItHangs) {
    sim.stop();
    const std::int64_t start = Clock::current().milliseconds();
    IpmiSession session(sim, start + 300);
    EXPECT_FALSE(session.ask({IpmiFunction::Application, 0x01, {}}));
    EXPECT_TRUE(session.hasTimedOut());
    EXPECT_LT(Clock::current().milliseconds() - start, 4000);
}

}  // namespace
}  // namespace QZ
