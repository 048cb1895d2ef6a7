// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FieldCodec.h"

#include <gtest/gtest.h>

#include "AssetFile.h"
#include "TestMachine.h"

namespace QZ {
namespace {

class FieldCodec : public ::testing::Test {
protected:
    template <class Read>
    auto read(const std::string& fileText, Read readField) {
        _machine.writeAssetFile(fileText);
        AssetFileSession session(AssetFilePath(), 1);
        return readField(session.file(), "K");
    }

    template <class Write, class Value>
    std::string written(const std::string& before, Write writeField, const Value& value) {
        _machine.writeAssetFile(before);
        AssetFileSession session(AssetFilePath(), 3);
        writeField(session.file(), "K", value);
        session.close();
        return _machine.assetFile();
    }

    TestMachine _machine;
};

TEST_F(FieldCodec, ReadsAMissingKeyAsNothing) {
    EXPECT_EQ(read("", ReadStringFromFile), "");
    EXPECT_EQ(read("", ReadUint8FromFile), 0);
    EXPECT_EQ(read("", ReadUint32FromFile), 0U);
    EXPECT_EQ(read("", ReadDateFromFile), DateTime());
}

TEST_F(FieldCodec, KeepsBlanksAndEqualsSignsInTexts) {
    const std::string text = "  a = b\t= \\ c  ";
    const std::string file = written("", WriteStringToFile, text);
    EXPECT_EQ(read(file, ReadStringFromFile), text);
}

TEST_F(FieldCodec, StoresA32BitNumberSigned) {
    EXPECT_EQ(written("", WriteUint32ToFile, 4294967295U), "K=-1\n");
    EXPECT_EQ(written("", WriteUint32ToFile, 2147483648U), "K=-2147483648\n");
    EXPECT_EQ(written("", WriteUint32ToFile, 2147483647U), "K=2147483647\n");
}

TEST_F(FieldCodec, ReadsTheSignedNumberBack) {
    EXPECT_EQ(read("K=-1\n", ReadUint32FromFile), 4294967295U);
    EXPECT_EQ(read("K=-2147483648\n", ReadUint32FromFile), 2147483648U);
    EXPECT_EQ(read("K=4294967295\n", ReadUint32FromFile), 4294967295U);
}

TEST_F(FieldCodec, TakesANumberOutOfRangeForTheLargest) {
    EXPECT_EQ(read("K=4294967296\n", ReadUint32FromFile), 4294967295U);
    EXPECT_EQ(read("K=-4294967296\n", ReadUint32FromFile), 4294967295U);
    EXPECT_EQ(read("K=99999999999999999999999999\n", ReadUint32FromFile), 4294967295U);
}

TEST_F(FieldCodec, CutsAnEightBitNumberToItsLowBits) {
    EXPECT_EQ(read("K=300\n", ReadUint8FromFile), 44);
    EXPECT_EQ(read("K=-1\n", ReadUint8FromFile), 255);
    EXPECT_EQ(written("", WriteUint8ToFile, static_cast<unsigned char>(255)), "K=255\n");
}

TEST_F(FieldCodec, ReadsANumberUpToTheFirstOtherCharacter) {
    EXPECT_EQ(read("K=12abc\n", ReadUint32FromFile), 12U);
    EXPECT_EQ(read("K=12abc\n", ReadUint8FromFile), 12);
    EXPECT_EQ(read("K=abc\n", ReadUint32FromFile), 0U);
}

TEST_F(FieldCodec, SkipsBlanksBeforeANumber) {
    const std::string file = written("", WriteStringToFile, std::string(" 7"));
    EXPECT_EQ(read(file, ReadUint8FromFile), 7);
    EXPECT_EQ(read(file, ReadUint32FromFile), 7U);
}

TEST_F(FieldCodec, ReadsAnEmptyDateAsTheUnsetOne) {
    EXPECT_EQ(read("K=\n", ReadDateFromFile), DateTime());
    EXPECT_EQ(written("K=2027-01-31\n", WriteDateToFile, DateTime()), "K=\n");
}

TEST_F(FieldCodec, ReadsEveryFormOfADate) {
    EXPECT_EQ(read("K=2027-01-31\n", ReadDateFromFile), DateTime::fromDay(2027, 1, 31));
    const DateTime full = DateTime::fromParts(2027, 1, 31, 12, 30, 1, 250, 60);
    EXPECT_EQ(read("K=2027-01-31T12:30:01.250+01:00\n", ReadDateFromFile), full);
    EXPECT_EQ(read("K=20270131123001.250000+060\n", ReadDateFromFile), full);
}

TEST_F(FieldCodec, KeepsAHandWrittenValueThatTheFieldCannotGiveBack) {
    EXPECT_EQ(written("K=2027-13-31\n", WriteDateToFile, DateTime()),
              "# kept, not understood: K=2027-13-31\nK=\n");
    EXPECT_EQ(written("K=12abc\n", WriteUint32ToFile, 12U),
              "# kept, not understood: K=12abc\nK=12\n");
    EXPECT_EQ(written("K=300\n", WriteUint8ToFile, static_cast<unsigned char>(44)),
              "# kept, not understood: K=300\nK=44\n");
}

TEST_F(FieldCodec, KeepsNothingOfAValueThatWasUnderstood) {
    EXPECT_EQ(written("K=007\n", WriteUint32ToFile, 8U), "K=8\n");
    EXPECT_EQ(written("K=4294967295\n", WriteUint32ToFile, 4294967295U), "K=-1\n");
    EXPECT_EQ(written("K=2027-01-31\n", WriteDateToFile, DateTime::fromDay(2028, 2, 29)),
              "K=2028-02-29\n");
    EXPECT_EQ(written("K=old\n", WriteStringToFile, std::string("new")), "K=new\n");
}

}  // namespace
}  // namespace QZ
