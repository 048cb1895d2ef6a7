// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Bmc.h"
#include "FruBuilder.h"
#include "ManualClock.h"
#include "SdrBuilder.h"
#include "TestBmc.h"

namespace QZ {
namespace {

constexpr const char* _deviceIdWithFru = "00 20 01 02 45 02 8f 00 00 00 34 12";

std::string _fru(const std::string& name) {
    return FruBuilder().product(FruAreaBuilder::product(25).text("Maker").text(name)).build(256);
}

class ABmcsFrus : public testing::Test {
protected:
    ABmcsFrus() { simulated.reply("06 01", _deviceIdWithFru); }

    std::vector<std::string> names() {
        std::vector<std::string> found;
        for (const BmcFru& fru : bmc.getFrus()) {
            found.push_back(fru.locator.name + "/" +
                            (fru.inventory.product ? fru.inventory.product->name.text : ""));
        }
        return found;
    }

    // What a controller does that cannot read one byte of its unit 0.
    static TestBmc::Trouble refusalOf(std::size_t hole) {
        return [hole](const IpmiRequest& request, IpmiReply& reply) {
            const auto start =
                static_cast<unsigned char>(request.data.size() == 4 ? request.data[1] : 0);
            const bool isRead = request.command == 0x11 && request.data.front() == 0;
            reply = {IpmiUnspecified, {}};
            return isRead && start <= hole &&
                   hole < start + std::size_t{static_cast<unsigned char>(request.data[3])};
        };
    }

    using Names = std::vector<std::string>;

    ManualClock clock;
    TestBmc simulated;
    Bmc bmc;
};

TEST_F(ABmcsFrus, AreItsOwnAndThoseOfTheRecords) {
    simulated.fru(0, _fru("own"))
        .fru(1, _fru("first"))
        .fru(7, _fru("second"))
        .records({fruLocatorRecord(fruLocator(1, 1, 10, "PSU 1")),
                  fruLocatorRecord(fruLocator(2, 7, 15, "Backplane"))});
    EXPECT_EQ(names(), (Names{"/own", "PSU 1/first", "Backplane/second"}));
    EXPECT_EQ(bmc.getFrus()[2].locator.entity.id, 15);
    EXPECT_TRUE(bmc.getFrus()[0].isComplete);
}

TEST_F(ABmcsFrus, AreThereOnceEach) {
    simulated.fru(0, _fru("own"))
        .fru(1, _fru("first"))
        .records({fruLocatorRecord(fruLocator(1, 0, 7, "Board")),
                  fruLocatorRecord(fruLocator(2, 1, 10, "PSU 1")),
                  fruLocatorRecord(fruLocator(3, 1, 10, "PSU again"))});
    EXPECT_EQ(names(), (Names{"Board/own", "PSU 1/first"}));
}

TEST_F(ABmcsFrus, AreNamedByTheControllersRecordWhereNoOtherDoes) {
    ControllerLocator controller;
    controller.recordId = 1;
    controller.address = BmcAddress;
    controller.hasFruData = true;
    controller.entity = {46, 1};
    controller.name = "BMC";
    simulated.fru(0, _fru("own")).records({controllerLocatorRecord(controller)});
    EXPECT_EQ(names(), (Names{"BMC/own"}));
    EXPECT_EQ(bmc.getFrus()[0].locator.entity.id, 46);
}

TEST_F(ABmcsFrus, MayBeBehindOtherControllers) {
    ControllerLocator controller;
    controller.recordId = 1;
    controller.address = 0x2C;
    controller.channel = 6;
    controller.hasFruData = true;
    controller.name = "Node";
    FruLocator unit = fruLocator(2, 3, 10, "Its PSU");
    unit.address = 0x2C;
    unit.channel = 6;
    simulated.fru(0, _fru("own"))
        .fru(0, _fru("node"), 0x2C)
        .fru(3, _fru("psu"), 0x2C)
        .records({controllerLocatorRecord(controller), fruLocatorRecord(unit)});
    EXPECT_EQ(names(), (Names{"/own", "Its PSU/psu", "Node/node"}));
    EXPECT_GE(simulated.countAsked("2c.06.00 0a 11 03"), 1U);
}

TEST_F(ABmcsFrus, AreNotThoseThatNoCommandReaches) {
    FruLocator memory = fruLocator(1, 0xA0, 32, "DIMM");
    memory.isLogical = false;
    simulated.fru(0, _fru("own")).fru(0xA0, _fru("memory")).records({fruLocatorRecord(memory)});
    EXPECT_EQ(names(), (Names{"/own"}));
}

TEST_F(ABmcsFrus, LackThoseWithoutData) {
    simulated.fru(2, _fru("second"))
        .records({fruLocatorRecord(fruLocator(1, 1, 10, "Absent")),
                  fruLocatorRecord(fruLocator(2, 2, 10, "Present"))});
    EXPECT_EQ(names(), (Names{"Present/second"}));
}

TEST_F(ABmcsFrus, AreNotAskedOfAControllerThatHasNone) {
    simulated.reply("06 01", "00 20 01 02 45 02 07 00 00 00 34 12").fru(0, _fru("own"));
    EXPECT_EQ(names(), Names{});
}

TEST_F(ABmcsFrus, AreReadInSmallerPiecesWhereLargerOnesAreRefused) {
    for (const unsigned char refusal :
         {IpmiLengthInvalid, IpmiLengthExceeded, IpmiCannotReturnLength, IpmiUnspecified}) {
        for (const unsigned longest : {255U, 31U, 16U, 8U, 7U}) {
            TestBmc small;
            Bmc fresh;
            small.reply("06 01", _deviceIdWithFru).fru(0, namedFru().build(256));
            small.allowReads(longest, refusal);
            const std::vector<BmcFru> frus = fresh.getFrus();
            ASSERT_EQ(frus.size(), 1U);
            EXPECT_EQ(frus[0].isComplete, longest >= 8);
            if (longest >= 8) {
                EXPECT_EQ(frus[0].inventory.state, FruInventory::State::Ok);
                EXPECT_EQ(frus[0].inventory.product->fileId.text, "product file");
            }
        }
    }
}

TEST_F(ABmcsFrus, RememberWhichPiecesTheControllerTakes) {
    simulated.fru(0, _fru("own"));
    simulated.allowReads(16);
    names();
    simulated.forgetAsked();
    clock.sleepMilliseconds(2000);
    EXPECT_EQ(names(), (Names{"/own"}));
    EXPECT_EQ(simulated.countAsked("0a 11 00 00 00 20"), 0U);
    EXPECT_EQ(simulated.countAsked("0a 11 00 00 00 10"), 1U);
}

TEST_F(ABmcsFrus, AreReadByTheirAreasOnly) {
    const std::string rest(512, 'Z');
    simulated.fru(0, FruBuilder()
                         .internalUse(rest)
                         .product(FruAreaBuilder::product(25).text("Maker").text("own"))
                         .multiRecord(rest)
                         .build());
    EXPECT_EQ(names(), (Names{"/own"}));
    EXPECT_EQ(simulated.countAsked("0a 11"), 2U) << "the header, and the area";
}

TEST_F(ABmcsFrus, MayCountInWords) {
    const std::string bytes = _fru("own");
    simulated.fru(0, bytes).reply("0a 10 00", "00 00 01 01");
    simulated.trouble([&bytes](const IpmiRequest& request, IpmiReply& reply) {
        if (request.command != 0x11 || request.data.size() != 4)
            return false;
        const std::size_t offset = static_cast<unsigned char>(request.data[1]);
        const std::size_t count = static_cast<unsigned char>(request.data[3]);
        const std::string part = bytes.substr(2 * offset, 2 * count);
        reply = {IpmiNormal, static_cast<char>(part.size() / 2) + part};
        return true;
    });
    EXPECT_EQ(names(), (Names{"/own"}));
}

TEST_F(ABmcsFrus, ShowWhatCameBeforeAReadFailed) {
    simulated.fru(0, namedFru().build(256));
    simulated.trouble([](const IpmiRequest& request, IpmiReply& reply) {
        reply = {0xC9, {}};
        return request.command == 0x11 && static_cast<unsigned char>(request.data[1]) >= 64;
    });
    const std::vector<BmcFru> frus = bmc.getFrus();
    ASSERT_EQ(frus.size(), 1U);
    EXPECT_FALSE(frus[0].isComplete);
    EXPECT_EQ(frus[0].inventory.state, FruInventory::State::Damaged);
    EXPECT_EQ(frus[0].inventory.board->manufacturer.text, "board manufacturer");
}

TEST_F(ABmcsFrus, HaveTheAreasBehindBytesThatAreRefused) {
    const std::string bytes =
        FruBuilder()
            .chassis(FruAreaBuilder::chassis(23).text("chassis part").text("chassis serial"))
            .board(FruAreaBuilder::board(25).text("board maker").text(std::string(40, 'b')))
            .product(FruAreaBuilder::product(25).text("Maker").text("own"))
            .build(256);
    // In the chassis' length, and in the board's name.
    for (const std::size_t hole : {std::size_t{9}, bytes.find("bbbb") + 10}) {
        TestBmc torn;
        Bmc fresh;
        torn.reply("06 01", _deviceIdWithFru).fru(0, bytes).trouble(refusalOf(hole));
        torn.fru(1, _fru("other")).records({fruLocatorRecord(fruLocator(1, 1, 10, "PSU"))});
        const std::vector<BmcFru> frus = fresh.getFrus();
        ASSERT_EQ(frus.size(), 2U);
        EXPECT_FALSE(frus[0].isComplete);
        EXPECT_EQ(frus[0].inventory.state, FruInventory::State::Damaged);
        EXPECT_EQ(frus[0].inventory.chassis.has_value(), hole != 9);
        ASSERT_TRUE(frus[0].inventory.board);
        EXPECT_EQ(frus[0].inventory.board->manufacturer.text, "board maker");
        EXPECT_EQ(frus[0].inventory.board->name.text.find_first_not_of('b'), std::string::npos);
        EXPECT_EQ(frus[0].inventory.board->name.text.size() == 40, hole == 9);
        ASSERT_TRUE(frus[0].inventory.product);
        EXPECT_FALSE(frus[0].inventory.product->isDamaged);
        EXPECT_EQ(frus[0].inventory.product->name.text, "own");
    }
}

TEST_F(ABmcsFrus, AreReadToTheEndMarkerWhereAnAreaTellsNoLength) {
    const std::string longName(50, 'n');
    const FruAreaBuilder board = FruAreaBuilder::board(25).text("Maker").text(longName).text("B-7");
    const FruAreaBuilder product =
        FruAreaBuilder::product(25).text("Maker").text(longName).text("P-7");
    simulated
        .fru(
            0,
            FruBuilder().board(FruAreaBuilder(board).announceUnits(0)).product(product).build(2048))
        .fru(1, FruBuilder()
                    .board(board)
                    .product(FruAreaBuilder(product).announceUnits(0))
                    .build(2048));
    simulated.records({fruLocatorRecord(fruLocator(1, 1, 10, "PSU 1"))});
    for (const BmcFru& fru : bmc.getFrus()) {
        EXPECT_TRUE(fru.isComplete);
        EXPECT_EQ(fru.inventory.state, FruInventory::State::Damaged);
        EXPECT_EQ(fru.inventory.board->name.text, longName);
        EXPECT_EQ(fru.inventory.board->serialNumber.text, "B-7");
        EXPECT_EQ(fru.inventory.product->name.text, longName);
        EXPECT_EQ(fru.inventory.product->partNumber.text, "P-7");
    }
    EXPECT_LE(simulated.countAsked("0a 11"), 2 * 6U) << "nothing behind the markers";
}

TEST_F(ABmcsFrus, AreReadInBoundsWhereAnAreaHasNeitherLengthNorEnd) {
    const auto endless = FruAreaBuilder::chassis(23).announceUnits(0).withoutEnd();
    std::string bytes = FruBuilder().chassis(endless).build();
    bytes.resize(60000, '\x01');
    simulated.fru(0, bytes);
    EXPECT_EQ(bmc.getFrus().size(), 1U);
    EXPECT_LE(simulated.countAsked("0a 11"), 65U) << "of the longest area";
    EXPECT_GE(simulated.countAsked("0a 11"), 63U);
    simulated.forgetAsked();
    clock.sleepMilliseconds(5000);
    simulated.fru(0, FruBuilder().chassis(endless).internalUse(bytes).build());
    EXPECT_EQ(bmc.getFrus().size(), 1U);
    EXPECT_EQ(simulated.countAsked("0a 11"), 1U) << "up to the next area";
}

TEST_F(ABmcsFrus, AreReadInLargePiecesBehindBytesThatAreRefused) {
    simulated.fru(0, namedFru().build(256)).fru(1, _fru("first"));
    simulated.records({fruLocatorRecord(fruLocator(1, 1, 10, "PSU 1"))}).trouble(refusalOf(70));
    EXPECT_EQ(names(), (Names{"/product name", "PSU 1/first"}));
    EXPECT_EQ(simulated.countAsked("0a 11 01 00 00 20"), 1U);
    EXPECT_EQ(simulated.countAsked("0a 11 01"), 1U);
}

TEST_F(ABmcsFrus, MayBeEmptyOrNonsense) {
    simulated.fru(0, std::string(64, '\xFF'))
        .fru(1, "")
        .fru(2, std::string(300, 'x'))
        .records({fruLocatorRecord(fruLocator(1, 1, 10, "None")),
                  fruLocatorRecord(fruLocator(2, 2, 10, "Nonsense"))});
    const std::vector<BmcFru> frus = bmc.getFrus();
    ASSERT_EQ(frus.size(), 3U);
    EXPECT_EQ(frus[0].inventory.state, FruInventory::State::Empty);
    EXPECT_EQ(frus[1].inventory.state, FruInventory::State::Empty);
    EXPECT_EQ(frus[2].inventory.state, FruInventory::State::Failed);
}

TEST_F(ABmcsFrus, AreThoseReadBeforeTheControllerHung) {
    simulated.fru(0, _fru("own")).fru(1, _fru("first"));
    simulated.records({fruLocatorRecord(fruLocator(1, 1, 10, "PSU 1"))});
    simulated.reply("0a 11 01 00 00 20", "none");
    const std::int64_t before = clock.sleptMilliseconds();
    EXPECT_EQ(names(), (Names{"/own", "PSU 1/"}));
    EXPECT_EQ(clock.sleptMilliseconds() - before, 5000);
}

}  // namespace
}  // namespace QZ
