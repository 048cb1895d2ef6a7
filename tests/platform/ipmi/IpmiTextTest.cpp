// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiText.h"

#include <gtest/gtest.h>

namespace QZ {
namespace {

struct TextCase {
    const char* name;
    IpmiEncoding encoding;
    std::string stored;
    std::string text;
};

class EveryEncoding : public testing::TestWithParam<TextCase> {};

TEST_P(EveryEncoding, IsDecoded) {
    EXPECT_EQ(decodeIpmiText(GetParam().encoding, GetParam().stored), GetParam().text);
}

std::string _bytes(std::initializer_list<unsigned char> values) {
    return {values.begin(), values.end()};
}

INSTANTIATE_TEST_SUITE_P(
    IpmiText, EveryEncoding,
    testing::Values(
        TextCase{"binary", IpmiEncoding::Binary, _bytes({0x00, 0x0A, 0xFF}), "000aff"},
        TextCase{"noBinary", IpmiEncoding::Binary, "", ""},
        TextCase{"bcdPlus", IpmiEncoding::BcdPlus, _bytes({0x01, 0x23, 0x45, 0x67, 0x89}),
                 "0123456789"},
        TextCase{"bcdPlusSigns", IpmiEncoding::BcdPlus, _bytes({0xAB, 0xCD, 0xEF}), " -.:,_"},
        // The example of the standard's chapter on six-bit text.
        TextCase{"sixBit", IpmiEncoding::SixBitAscii, _bytes({0x29, 0xDC, 0xA6}), "IPMI"},
        TextCase{"sixBitEnds", IpmiEncoding::SixBitAscii, _bytes({0xC0, 0x0F, 0x00}), " _  "},
        TextCase{"sixBitOneByte", IpmiEncoding::SixBitAscii, _bytes({0x29}), "I"},
        TextCase{"sixBitTwoBytes", IpmiEncoding::SixBitAscii, _bytes({0x29, 0xDC}), "IP"},
        TextCase{"ascii", IpmiEncoding::Latin1, " A part  ", " A part  "},
        TextCase{"latin1", IpmiEncoding::Latin1, _bytes({'M', 0xFC, 'n', 0xA0}),
                 "M\xC3\xBCn\xC2\xA0"},
        TextCase{"nulPadding", IpmiEncoding::Latin1, std::string("X1\0\0", 4), "X1"},
        TextCase{"leftBehindNul", IpmiEncoding::Latin1, std::string("X1\0old", 6), "X1"},
        TextCase{"erased", IpmiEncoding::Latin1, "\xFF\xFF\xFF", ""},
        TextCase{"erasedThenNul", IpmiEncoding::Latin1, std::string("\xFF\xFF\0", 3), ""},
        TextCase{"erasedTail", IpmiEncoding::Latin1, "X\xFF", "X\xC3\xBF"},
        TextCase{"utf16", IpmiEncoding::Utf16, _bytes({'A', 0, 0x42, 0x30}), "A\xE3\x81\x82"},
        TextCase{"utf16Pair", IpmiEncoding::Utf16, _bytes({0x3D, 0xD8, 0x00, 0xDE}),
                 "\xF0\x9F\x98\x80"},
        TextCase{"utf16LoneHigh", IpmiEncoding::Utf16, _bytes({0x3D, 0xD8, 'A', 0}),
                 "\xEF\xBF\xBD"
                 "A"},
        TextCase{"utf16LoneLow", IpmiEncoding::Utf16, _bytes({0x00, 0xDE}), "\xEF\xBF\xBD"},
        TextCase{"utf16OddLength", IpmiEncoding::Utf16, _bytes({'A', 0, 'B'}), "A"},
        TextCase{"utf16Nul", IpmiEncoding::Utf16, _bytes({'A', 0, 0, 0, 'B', 0}), "A"},
        TextCase{"utf16Erased", IpmiEncoding::Utf16, "\xFF\xFF\xFF\xFF", ""}),
    [](const auto& tested) { return tested.param.name; });

TEST(IpmiText, ComesBackFromEveryEncodingThatCanExpressIt) {
    const struct {
        IpmiEncoding encoding;
        std::string text;
    } cases[] = {{IpmiEncoding::Binary, "00ff7f"},
                 {IpmiEncoding::BcdPlus, "01-7.5"},
                 {IpmiEncoding::SixBitAscii, "AB_ 12"},
                 {IpmiEncoding::Latin1, "Gr\xC3\xBC\xC3\x9F"},
                 {IpmiEncoding::Utf16, "\xE3\x81\x82x"}};
    for (const auto& [encoding, text] : cases) {
        EXPECT_EQ(decodeIpmiText(encoding, encodeIpmiText(encoding, text)), text);
    }
}

TEST(IpmiText, LosesWhatAnEncodingCannotExpress) {
    const auto through = [](IpmiEncoding encoding, const std::string& text) {
        return decodeIpmiText(encoding, encodeIpmiText(encoding, text));
    };
    EXPECT_EQ(through(IpmiEncoding::BcdPlus, "1A"), "1 ");
    EXPECT_EQ(through(IpmiEncoding::SixBitAscii, "aB"), " B");
    EXPECT_EQ(through(IpmiEncoding::Latin1, "\xE3\x81\x82x\xFF"), " x ");
}

}  // namespace
}  // namespace QZ
