// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SmBiosDecoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SmBiosBuilder.h"

namespace QZ {
namespace {

using EntryPoint = SmBiosBuilder::EntryPoint;
using State = SmBios::State;
using testing::HasSubstr;

SmBiosBuilder _machine(EntryPoint kind) {
    SmBiosBuilder firmware(kind, 2, 7);
    firmware.add(1, 0x1B).text(4, "Example Corp").text(7, "S-1").byte(0x1A, 0x5A);
    firmware.add(2, 0x0F).text(7, "B-1");
    firmware.add(32, 0x0B);
    firmware.addEnd();
    return firmware;
}

SmBios::Contents _decode(const SmBiosBuilder& firmware) {
    return decodeSmBios(firmware.entryPoint(), firmware.table());
}

void _expectMachine(const SmBios::Contents& contents) {
    ASSERT_EQ(contents.tables.size(), 4U);
    EXPECT_EQ(contents.tables[0].getType(), 1);
    EXPECT_STREQ(contents.tables[0].getString(1), "Example Corp");
    EXPECT_STREQ(contents.tables[0].getString(2), "S-1");
    EXPECT_EQ(contents.tables[1].getType(), 2);
    EXPECT_STREQ(contents.tables[1].getString(1), "B-1");
    EXPECT_EQ(contents.tables[2].getType(), 32);
    EXPECT_EQ(contents.tables[3].getType(), 127);
}

// The same bytes behind an entry point whose checksum fits.
void _fixChecksum(std::string& bytes, std::size_t offset, std::size_t length) {
    bytes[offset] = 0;
    unsigned sum = 0;
    for (std::size_t i = 0; i < length; ++i) {
        sum += static_cast<unsigned char>(bytes[i]);
    }
    bytes[offset] = static_cast<char>(0U - sum);
}

class EveryEntryPoint : public testing::TestWithParam<EntryPoint> {};

TEST_P(EveryEntryPoint, YieldsVersionAndStructures) {
    const SmBios::Contents contents = _decode(_machine(GetParam()));
    EXPECT_EQ(contents.state, State::Ok);
    EXPECT_EQ(contents.reason, "");
    EXPECT_EQ(contents.majorVersion, 2);
    EXPECT_EQ(contents.minorVersion, 7);
    _expectMachine(contents);
}

TEST_P(EveryEntryPoint, IsUsedInSpiteOfAWrongChecksum) {
    const SmBios::Contents contents = _decode(_machine(GetParam()).spoilChecksum());
    EXPECT_EQ(contents.state, State::Damaged);
    EXPECT_THAT(contents.reason, HasSubstr("wrong checksum"));
    EXPECT_EQ(contents.minorVersion, 7);
    _expectMachine(contents);
}

TEST_P(EveryEntryPoint, CostsNoStructureWhereverItIsCutOff) {
    const SmBiosBuilder machine = _machine(GetParam());
    const std::string entryPoint = machine.entryPoint();
    for (std::size_t length = 0; length < entryPoint.size(); ++length) {
        const SmBios::Contents contents =
            decodeSmBios(entryPoint.substr(0, length), machine.table());
        EXPECT_EQ(contents.state, State::Damaged) << length;
        _expectMachine(contents);
    }
}

TEST_P(EveryEntryPoint, MayAnnounceALengthThatIsTooLow) {
    const SmBios::Contents contents = _decode(_machine(GetParam()).announceLength(20));
    EXPECT_EQ(contents.state, State::Damaged);
    EXPECT_THAT(contents.reason, HasSubstr("longer than the 20 bytes"));
    _expectMachine(contents);
}

// What the kernel shows ends with the last structure.
TEST_P(EveryEntryPoint, MayAnnounceMoreBytesThanTheStructuresTake) {
    const SmBios::Contents contents = _decode(_machine(GetParam()).announceLength(4096));
    EXPECT_EQ(contents.state, State::Ok) << contents.reason;
    _expectMachine(contents);
}

INSTANTIATE_TEST_SUITE_P(SmBiosDecoder, EveryEntryPoint,
                         testing::Values(EntryPoint::Legacy, EntryPoint::Version2,
                                         EntryPoint::Version3));

TEST(SmBiosDecoder, TakesTheWrongLengthThatTheStandardOnceGave) {
    const SmBiosBuilder machine = _machine(EntryPoint::Version2);
    std::string entryPoint = machine.entryPoint();
    entryPoint[5] = 0x1E;
    _fixChecksum(entryPoint, 4, 0x1E);
    EXPECT_EQ(decodeSmBios(entryPoint, machine.table()).state, State::Ok);
}

TEST(SmBiosDecoder, NoticesThatOnlyTheInnerChecksumIsWrong) {
    const SmBiosBuilder machine = _machine(EntryPoint::Version2);
    std::string entryPoint = machine.entryPoint();
    ++entryPoint[0x15];
    _fixChecksum(entryPoint, 4, entryPoint.size());
    const SmBios::Contents contents = decodeSmBios(entryPoint, machine.table());
    EXPECT_EQ(contents.state, State::Damaged);
    EXPECT_THAT(contents.reason, HasSubstr("wrong checksum"));
}

TEST(SmBiosDecoder, NoticesThatTheInnerPartIsNotNamed) {
    const SmBiosBuilder machine = _machine(EntryPoint::Version2);
    std::string entryPoint = machine.entryPoint();
    // Two changes that leave both sums as they are.
    ++entryPoint[0x10];
    --entryPoint[0x11];
    const SmBios::Contents contents = decodeSmBios(entryPoint, machine.table());
    EXPECT_EQ(contents.state, State::Damaged);
    EXPECT_THAT(contents.reason, HasSubstr("lacks its \"_DMI_\" part"));
    _expectMachine(contents);
}

TEST(SmBiosDecoder, NeedsNoEntryPointForTheStructures) {
    const std::string table = _machine(EntryPoint::Version3).table();
    for (const char* entryPoint : {"", "_SN_ and so on", "\xFF"}) {
        const SmBios::Contents contents = decodeSmBios(entryPoint, table);
        EXPECT_EQ(contents.state, State::Damaged);
        EXPECT_EQ(contents.majorVersion, 0);
        EXPECT_EQ(contents.minorVersion, 0);
        _expectMachine(contents);
    }
}

TEST(SmBiosDecoder, GoesOnBeyondACountThatIsTooLow) {
    const SmBios::Contents contents = _decode(_machine(EntryPoint::Version2).announceCount(1));
    EXPECT_EQ(contents.state, State::Damaged);
    EXPECT_THAT(contents.reason, HasSubstr("announces 1 structures; there are 4."));
    _expectMachine(contents);
}

TEST(SmBiosDecoder, StopsWhereTheStructuresDoWhenTheCountIsTooHigh) {
    const SmBios::Contents contents = _decode(_machine(EntryPoint::Version2).announceCount(5000));
    EXPECT_EQ(contents.state, State::Damaged);
    EXPECT_THAT(contents.reason, HasSubstr("announces 5000 structures; there are 4."));
    _expectMachine(contents);
}

TEST(SmBiosDecoder, ReadsWhatIsCountedBehindTheEndOfTable) {
    SmBiosBuilder machine = _machine(EntryPoint::Version2);
    machine.add(200, 8).byte(4, 1);
    const SmBios::Contents contents = _decode(machine);
    EXPECT_EQ(contents.state, State::Ok) << contents.reason;
    ASSERT_EQ(contents.tables.size(), 5U);
    EXPECT_EQ(contents.tables[4].getType(), 200);
}

TEST(SmBiosDecoder, EndsAtTheEndOfTableWhereNothingIsCounted) {
    SmBiosBuilder machine = _machine(EntryPoint::Version3);
    machine.add(200, 8);
    const SmBios::Contents contents = _decode(machine);
    EXPECT_EQ(contents.state, State::Ok) << contents.reason;
    _expectMachine(contents);
}

TEST(SmBiosDecoder, MissesTheEndOfTableOnlyWhereNothingIsCounted) {
    SmBiosBuilder counted(EntryPoint::Version2, 2, 1);
    counted.add(1, 8);
    EXPECT_EQ(_decode(counted).state, State::Ok);

    SmBiosBuilder uncounted(EntryPoint::Version3, 3, 0);
    uncounted.add(1, 8);
    EXPECT_EQ(_decode(uncounted).state, State::Damaged);
    EXPECT_THAT(_decode(uncounted).reason, HasSubstr("no end-of-table structure"));
}

TEST(SmBiosDecoder, IgnoresPaddingBehindTheLastStructure) {
    SmBiosBuilder counted(EntryPoint::Version2, 2, 1);
    counted.add(1, 8);
    for (const SmBiosBuilder& machine : {counted, _machine(EntryPoint::Version3)}) {
        for (std::size_t padding = 1; padding < 20; ++padding) {
            const SmBios::Contents contents =
                decodeSmBios(machine.entryPoint(), machine.table() + std::string(padding, '\0'));
            EXPECT_EQ(contents.state, State::Ok) << contents.reason;
            EXPECT_EQ(contents.tables.size(), _decode(machine).tables.size());
        }
    }
}

TEST(SmBiosDecoder, StopsAtAStructureShorterThanItsHeader) {
    for (unsigned length = 0; length < 4; ++length) {
        SmBiosBuilder machine(EntryPoint::Version3, 3, 0);
        machine.add(1, 8);
        machine.add(2, 8).byte(1, length);
        machine.addEnd();
        const SmBios::Contents contents = _decode(machine);
        EXPECT_EQ(contents.state, State::Damaged);
        EXPECT_THAT(contents.reason, HasSubstr("shorter than its header"));
        EXPECT_EQ(contents.tables.size(), 1U);
    }
}

TEST(SmBiosDecoder, KeepsWhatIsWholeWhereverTheTableIsCutOff) {
    const SmBiosBuilder machine = _machine(EntryPoint::Version3);
    const std::string table = machine.table();
    const std::vector<SmBios::Table> whole = _decode(machine).tables;
    std::size_t most = 0;
    for (std::size_t length = 0; length < table.size(); ++length) {
        const SmBios::Contents contents =
            decodeSmBios(machine.entryPoint(), table.substr(0, length));
        EXPECT_EQ(contents.state, contents.tables.empty() ? State::Failed : State::Damaged);
        EXPECT_NE(contents.reason, "");
        EXPECT_GE(contents.tables.size(), most);
        most = contents.tables.size();
        for (std::size_t i = 0; i < most; ++i) {
            EXPECT_EQ(contents.tables[i].getLength(), whole[i].getLength());
            for (unsigned string = 1; string < 4; ++string) {
                const char* text = contents.tables[i].getString(string);
                if (text != nullptr) {
                    EXPECT_STREQ(text, whole[i].getString(string)) << "cut at " << length;
                }
            }
        }
    }
    EXPECT_EQ(most, whole.size());
}

TEST(SmBiosDecoder, DropsAStructureWhoseFormattedAreaIsCutOff) {
    SmBiosBuilder machine(EntryPoint::Version3, 3, 0);
    machine.add(1, 8);
    const std::size_t first = machine.table().size();
    machine.add(2, 0x0F);
    const std::string table = machine.table();
    for (std::size_t length = 1; length <= 0x0F; ++length) {
        const SmBios::Contents contents =
            decodeSmBios(machine.entryPoint(), table.substr(0, first + length));
        EXPECT_EQ(contents.tables.size(), length < 0x0F ? 1U : 2U) << length;
        EXPECT_EQ(contents.state, State::Damaged);
    }
}

TEST(SmBiosDecoder, KeepsTheWholeStringsOfAnUnendedSet) {
    SmBiosBuilder machine(EntryPoint::Version3, 3, 0);
    machine.add(1, 8).text(4, "whole").text(5, "cut off");
    const std::string table = machine.table();
    const SmBios::Contents contents =
        decodeSmBios(machine.entryPoint(), table.substr(0, table.size() - 5));
    ASSERT_EQ(contents.tables.size(), 1U);
    EXPECT_STREQ(contents.tables[0].getString(1), "whole");
    EXPECT_EQ(contents.tables[0].getString(2), nullptr);
    EXPECT_THAT(contents.reason, HasSubstr("ends within the strings"));
}

TEST(SmBiosDecoder, FindsTheEndOfTextsOfEveryLength) {
    SmBiosBuilder machine(EntryPoint::Version3, 3, 0);
    for (unsigned char length = 1; length < 40; ++length) {
        for (unsigned char other = 1; other < 10; ++other) {
            machine.add(length, 8)
                .text(4, std::string(length, 'a'))
                .text(5, std::string(other, 'b'));
        }
        machine.add(length, length < 4 ? 4 : length);
    }
    machine.addEnd();
    const SmBios::Contents contents = _decode(machine);
    EXPECT_EQ(contents.state, State::Ok) << contents.reason;
    ASSERT_EQ(contents.tables.size(), 391U);
    for (std::size_t i = 0; i < 390; ++i) {
        const SmBios::Table& table = contents.tables[i];
        EXPECT_EQ(table.getType(), i / 10 + 1);
        const bool hasTexts = i % 10 != 9;
        ASSERT_EQ(table.getString(1) != nullptr, hasTexts);
        if (hasTexts) {
            EXPECT_EQ(table.getString(1), std::string(table.getType(), 'a'));
            EXPECT_EQ(table.getString(2), std::string(i % 10 + 1, 'b'));
        }
        EXPECT_EQ(table.getString(3), nullptr);
    }
}

TEST(SmBiosDecoder, FailsOnATableWithoutStructures) {
    const std::string entryPoint = _machine(EntryPoint::Version3).entryPoint();
    for (const std::string& table : {std::string(), std::string("\1\2\3"), std::string(9, '\0')}) {
        const SmBios::Contents contents = decodeSmBios(entryPoint, table);
        EXPECT_EQ(contents.state, State::Failed);
        EXPECT_THAT(contents.reason, HasSubstr("no structure"));
        EXPECT_EQ(contents.majorVersion, 2);
    }
}

}  // namespace
}  // namespace QZ
