// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DeviceParts.h"

#include "SmBiosBuilder.h"

namespace {

std::string _left(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

}  // namespace

const char* const standardInquiryFile = "12000000ff00";
const char* const serialNumberFile = "12018000ff00";

IdentifyBuilder IdentifyBuilder::drive(const std::string& model, const std::string& serial) {
    IdentifyBuilder builder;
    builder.word(0, 0x0040)
        .text(10, std::string(serial.size() < 20 ? 20 - serial.size() : 0, ' ') + serial)
        .text(23, _left("1.01", 8))
        .text(27, _left(model, 40))
        .word(49, 0x0F00);
    return builder;
}

IdentifyBuilder& IdentifyBuilder::word(std::size_t index, unsigned value) {
    _words.at(index) = static_cast<std::uint16_t>(value);
    return *this;
}

IdentifyBuilder& IdentifyBuilder::text(std::size_t index, const std::string& characters) {
    for (std::size_t i = 0; i < characters.size(); i += 2) {
        const auto high = static_cast<unsigned char>(characters[i]);
        const auto low =
            static_cast<unsigned char>(i + 1 < characters.size() ? characters[i + 1] : '\0');
        word(index + i / 2, static_cast<unsigned>(high << 8 | low));
    }
    return *this;
}

std::string IdentifyBuilder::build() const {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < _words.size(); ++i) {
        for (int shift = 12; shift >= 0; shift -= 4) {
            text += digits[_words[i] >> shift & 0xF];
        }
        text += i % 8 == 7 ? '\n' : ' ';
    }
    return text;
}

std::string standardInquiryReply(const std::string& vendor, const std::string& product) {
    // A disk of SPC-4; 31 more bytes follow.
    std::string reply("\x00\x00\x06\x02\x1F\x00\x00\x02", 8);
    return reply + _left(vendor, 8) + _left(product, 16) + "1.01";
}

std::string serialNumberReply(const std::string& serial) {
    std::string reply("\x00\x80\x00", 3);
    return reply + static_cast<char>(serial.size()) + serial;
}

void writeScsiDisk(const std::string& root, char letter, const std::string& vendor,
                   const std::string& product, const std::string& serial) {
    const std::string folder = root + "/dev/sd" + letter + "/";
    writeTestFile(folder + standardInquiryFile, standardInquiryReply(vendor, product));
    writeTestFile(folder + serialNumberFile, serialNumberReply(serial));
}
