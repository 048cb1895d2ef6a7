// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruDecoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FruBuilder.h"

namespace QZ {
namespace {

using State = FruInventory::State;
using testing::HasSubstr;
using testing::IsEmpty;

void _expectNamed(const FruInventory& fru) {
    ASSERT_TRUE(fru.board && fru.product);
    EXPECT_EQ(fru.board->manufacturer.text, "board manufacturer");
    EXPECT_EQ(fru.board->name.text, "board name");
    EXPECT_EQ(fru.board->serialNumber.text, "board serial number");
    EXPECT_EQ(fru.board->partNumber.text, "board part number");
    EXPECT_EQ(fru.board->fileId.text, "board file");
    EXPECT_EQ(fru.product->manufacturer.text, "product manufacturer");
    EXPECT_EQ(fru.product->name.text, "product name");
    EXPECT_EQ(fru.product->partNumber.text, "product part number");
    EXPECT_EQ(fru.product->version.text, "product version");
    EXPECT_EQ(fru.product->serialNumber.text, "product serial number");
    EXPECT_EQ(fru.product->assetTag.text, "product asset tag");
    EXPECT_EQ(fru.product->fileId.text, "product file");
}

FruInventory _decodeProduct(const FruAreaBuilder& area) {
    return decodeFru(FruBuilder().product(area).build());
}

void _expectDamaged(const FruInventory& fru, const char* reason) {
    EXPECT_EQ(fru.state, State::Damaged);
    EXPECT_THAT(fru.reason, HasSubstr(reason));
}

TEST(FruDecoder, FindsEveryFieldOfBoardAndProduct) {
    const FruInventory fru = decodeFru(namedFru().build(512));
    EXPECT_EQ(fru.state, State::Ok) << fru.reason;
    _expectNamed(fru);
    EXPECT_EQ(fru.board->madeMinutes, 0x010203U);
    EXPECT_EQ(fru.board->language, 25);
    EXPECT_FALSE(fru.chassis || fru.board->isDamaged || fru.product->isDamaged);
}

TEST(FruDecoder, FindsTheFieldsOfAChassis) {
    const FruInventory fru = decodeFru(
        FruBuilder().chassis(FruAreaBuilder::chassis(23).text("P-1").text("S-1")).build());
    EXPECT_EQ(fru.state, State::Ok) << fru.reason;
    ASSERT_TRUE(fru.chassis);
    EXPECT_EQ(fru.chassis->type, 23);
    EXPECT_EQ(fru.chassis->partNumber.text, "P-1");
    EXPECT_EQ(fru.chassis->serialNumber.text, "S-1");
}

TEST(FruDecoder, KnowsWhereAFieldStands) {
    const std::string bytes = namedFru().build();
    const FruField field = decodeFru(bytes).product->serialNumber;
    EXPECT_EQ(bytes.substr(field.offset, field.length), "product serial number");
}

TEST(FruDecoder, DecodesEveryEncodingInEveryOrder) {
    const FruInventory fru =
        _decodeProduct(FruAreaBuilder::product(25)
                           .text("Latin \xC3\xBC")
                           .text("SIX BIT ", IpmiEncoding::SixBitAscii)
                           .text("12-34.56", IpmiEncoding::BcdPlus)
                           .text("00ff7f", IpmiEncoding::Binary)
                           .text("")
                           .text("  tag ")
                           .stored(IpmiEncoding::Latin1, std::string("file\0\0", 6)));
    EXPECT_EQ(fru.state, State::Ok) << fru.reason;
    EXPECT_EQ(fru.product->manufacturer.text, "Latin \xC3\xBC");
    EXPECT_EQ(fru.product->name.text, "SIX BIT ");
    EXPECT_EQ(fru.product->name.encoding, IpmiEncoding::SixBitAscii);
    EXPECT_EQ(fru.product->partNumber.text, "12-34.56");
    EXPECT_EQ(fru.product->version.text, "00ff7f");
    EXPECT_EQ(fru.product->serialNumber.text, "");
    EXPECT_EQ(fru.product->assetTag.text, "  tag ");
    EXPECT_EQ(fru.product->fileId.text, "file");
}

TEST(FruDecoder, TakesWideTextWhereTheLanguageIsNotEnglish) {
    constexpr unsigned English = 25;
    constexpr unsigned Japanese = 43;
    const std::string wide = encodeIpmiText(IpmiEncoding::Utf16, "\xE3\x81\x82-1");
    for (const unsigned language : {0U, English, Japanese}) {
        const FruInventory fru = _decodeProduct(
            FruAreaBuilder::product(language).stored(IpmiEncoding::Utf16, wide).text("NAME"));
        const bool isWide = language == Japanese;
        EXPECT_EQ(fru.product->manufacturer.text, isWide ? "\xE3\x81\x82-1" : "B0-") << language;
        EXPECT_EQ(fru.product->name.text, isWide ? "\xE4\x85\x8E\xE4\x95\x8D" : "NAME");
    }
}

TEST(FruDecoder, TakesPlainTextInAChassisWhateverItsType) {
    const FruInventory fru =
        decodeFru(FruBuilder().chassis(FruAreaBuilder::chassis(0x2B).text("P-1")).build());
    EXPECT_EQ(fru.chassis->partNumber.text, "P-1");
}

TEST(FruDecoder, ListsTheMakersOwnFieldsThatSaySomething) {
    const FruInventory fru = decodeFru(
        FruBuilder()
            .chassis(FruAreaBuilder::chassis(1).text("P1").text("SN").text("first").text("").text(
                "ff", IpmiEncoding::Binary))
            .build());
    ASSERT_EQ(fru.chassis->custom.size(), 2U);
    EXPECT_EQ(fru.chassis->custom[0].text, "first");
    EXPECT_EQ(fru.chassis->custom[1].text, "ff");
}

TEST(FruDecoder, LeavesFieldsBehindTheEndMarkerEmpty) {
    const FruInventory fru = _decodeProduct(FruAreaBuilder::product(25).text("Maker"));
    EXPECT_EQ(fru.state, State::Ok) << fru.reason;
    EXPECT_EQ(fru.product->manufacturer.text, "Maker");
    EXPECT_EQ(fru.product->name.text, "");
    EXPECT_THAT(fru.product->custom, IsEmpty());
}

TEST(FruDecoder, NoticesThatTheEndMarkerIsMissing) {
    const FruInventory fru =
        _decodeProduct(FruAreaBuilder::product(25).text("Maker").text("Name").withoutEnd());
    _expectDamaged(fru, "The product area has no end marker.");
    EXPECT_TRUE(fru.product->isDamaged);
    EXPECT_EQ(fru.product->name.text, "Name");
}

TEST(FruDecoder, KeepsTheStartOfAFieldThatItsAreaCutsOff) {
    const FruInventory fru =
        _decodeProduct(FruAreaBuilder::product(25).text("Maker").raw(0xFF, "Name").withoutEnd());
    _expectDamaged(fru, "The product area ends within a field.");
    EXPECT_EQ(fru.product->manufacturer.text, "Maker");
    EXPECT_EQ(fru.product->name.text.substr(0, 4), "Name");
    EXPECT_EQ(fru.product->partNumber.text, "");
}

TEST(FruDecoder, ShowsAnAreaWhoseChecksumIsWrong) {
    const FruInventory fru =
        decodeFru(FruBuilder()
                      .board(FruAreaBuilder::board(25).text("B1"))
                      .product(FruAreaBuilder::product(25).text("Maker").spoilChecksum())
                      .build());
    _expectDamaged(fru, "The product area has a wrong checksum.");
    EXPECT_TRUE(fru.product->isDamaged);
    EXPECT_FALSE(fru.board->isDamaged);
    EXPECT_EQ(fru.product->manufacturer.text, "Maker");
}

TEST(FruDecoder, ShowsAnAreaOfAnUnknownVersion) {
    const FruInventory fru =
        _decodeProduct(FruAreaBuilder::product(25).text("Maker").withVersion(2));
    _expectDamaged(fru, "The product area has an unknown version.");
    EXPECT_EQ(fru.product->manufacturer.text, "Maker");
}

TEST(FruDecoder, BelievesAHeaderOfWhichVersionOrChecksumIsRight) {
    const FruInventory checksum = decodeFru(namedFru().spoilChecksum().build());
    _expectDamaged(checksum, "The header of the FRU data has a wrong checksum.");
    _expectNamed(checksum);
    EXPECT_FALSE(checksum.board->isDamaged);

    const FruInventory version = decodeFru(namedFru().withVersion(2).build());
    _expectDamaged(version, "The FRU data have an unknown version.");
    _expectNamed(version);
}

TEST(FruDecoder, IgnoresTheReservedBitsOfTheVersion) {
    EXPECT_EQ(decodeFru(namedFru().withVersion(0x11).build()).state, State::Ok);
}

TEST(FruDecoder, FailsOnAHeaderOfWhichNothingIsRight) {
    for (const std::string& bytes : {namedFru().withVersion(2).spoilChecksum().build(),
                                     std::string("\1\0\0\1", 4), std::string("no FRU data")}) {
        const FruInventory fru = decodeFru(bytes);
        EXPECT_EQ(fru.state, State::Failed);
        EXPECT_NE(fru.reason, "");
        EXPECT_FALSE(fru.chassis || fru.board || fru.product);
    }
}

TEST(FruDecoder, CallsWhatWasNeverWrittenEmpty) {
    for (const std::string& bytes :
         {std::string(), std::string(64, '\xFF'), std::string(64, '\0'), std::string(3, '\xFF')}) {
        const FruInventory fru = decodeFru(bytes);
        EXPECT_EQ(fru.state, State::Empty);
        EXPECT_EQ(fru.reason, "");
    }
}

TEST(FruDecoder, TakesDataWithoutAreas) {
    EXPECT_EQ(decodeFru(FruBuilder().build()).state, State::Ok);
}

TEST(FruDecoder, DropsAnAreaThatLiesBeyondTheData) {
    const FruInventory fru = decodeFru(namedFru().place(2, 0xFE).build(256));
    _expectDamaged(fru, "The chassis area lies beyond the end of the data.");
    EXPECT_FALSE(fru.chassis);
    _expectNamed(fru);
}

TEST(FruDecoder, ShowsWhatThereIsOfAnAreaThatTheDataCutOff) {
    const std::string whole = namedFru().build();
    for (std::size_t length = 8; length < whole.size(); ++length) {
        const FruInventory fru = decodeFru(whole.substr(0, length));
        EXPECT_EQ(fru.state, State::Damaged) << length;
        if (!fru.product)
            continue;
        EXPECT_TRUE(fru.product->isDamaged);
        EXPECT_EQ(std::string("product manufacturer").find(fru.product->manufacturer.text), 0U);
    }
}

TEST(FruDecoder, ReadsAnAreaWithoutALengthUpToItsEndMarker) {
    const FruInventory fru =
        _decodeProduct(FruAreaBuilder::product(25).text("Maker").text("Name").announceUnits(0));
    _expectDamaged(fru, "The product area has no length.");
    EXPECT_EQ(fru.product->name.text, "Name");
}

TEST(FruDecoder, MarksBothAreasThatOverlap) {
    const FruInventory fru =
        decodeFru(FruBuilder()
                      .board(FruAreaBuilder::board(25).text("a board").announceUnits(4))
                      .product(FruAreaBuilder::product(25).text("a product").text("with a name"))
                      .build(64));
    _expectDamaged(fru, "The board area overlaps the product area.");
    EXPECT_TRUE(fru.board->isDamaged && fru.product->isDamaged);
    EXPECT_EQ(fru.board->manufacturer.text, "a board");
    EXPECT_EQ(fru.product->name.text, "with a name");
}

TEST(FruDecoder, TakesAreasInAnyOrderAndIgnoresTheOthers) {
    const std::string other(24, '\x5A');
    const FruInventory fru = decodeFru(FruBuilder()
                                           .product(FruAreaBuilder::product(25).text("P1"))
                                           .internalUse(other)
                                           .chassis(FruAreaBuilder::chassis(1).text("C1"))
                                           .board(FruAreaBuilder::board(25).text("B1"))
                                           .multiRecord(other)
                                           .build());
    EXPECT_EQ(fru.state, State::Ok) << fru.reason;
    EXPECT_EQ(fru.product->manufacturer.text, "P1");
    EXPECT_EQ(fru.chassis->partNumber.text, "C1");
    EXPECT_EQ(fru.board->manufacturer.text, "B1");
}

}  // namespace
}  // namespace QZ
