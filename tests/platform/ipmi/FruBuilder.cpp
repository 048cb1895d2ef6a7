// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruBuilder.h"

#include <algorithm>

namespace {

constexpr std::size_t Unit = 8;

char byteOf(unsigned value) {
    return static_cast<char>(value & 0xFFU);
}

// The byte that makes the sum of all a multiple of 256.
char checksum(const std::string& bytes) {
    unsigned sum = 0;
    for (const char byte : bytes)
        sum += static_cast<unsigned char>(byte);
    return byteOf(0U - sum);
}

unsigned typeCode(QZ::IpmiEncoding encoding) {
    switch (encoding) {
        case QZ::IpmiEncoding::Binary:
            return 0x00;
        case QZ::IpmiEncoding::BcdPlus:
            return 0x40;
        case QZ::IpmiEncoding::SixBitAscii:
            return 0x80;
        default:
            return 0xC0;
    }
}

}  // namespace

FruAreaBuilder FruAreaBuilder::chassis(unsigned type) {
    return FruAreaBuilder({byteOf(type)});
}

FruAreaBuilder FruAreaBuilder::board(unsigned language, unsigned made) {
    return FruAreaBuilder(
        {byteOf(language), byteOf(made), byteOf(made >> 8U), byteOf(made >> 16U)});
}

FruAreaBuilder FruAreaBuilder::product(unsigned language) {
    return FruAreaBuilder({byteOf(language)});
}

FruAreaBuilder& FruAreaBuilder::stored(QZ::IpmiEncoding encoding, const std::string& bytes) {
    return raw(typeCode(encoding) | static_cast<unsigned>(bytes.size()), bytes);
}

FruAreaBuilder& FruAreaBuilder::text(const std::string& value, QZ::IpmiEncoding encoding) {
    return stored(encoding, QZ::encodeIpmiText(encoding, value));
}

FruAreaBuilder& FruAreaBuilder::raw(unsigned typeLength, const std::string& bytes) {
    _data += byteOf(typeLength);
    _data += bytes;
    return *this;
}

FruAreaBuilder& FruAreaBuilder::withoutEnd() {
    _isEnded = false;
    return *this;
}

FruAreaBuilder& FruAreaBuilder::spoilChecksum() {
    _isSpoilt = true;
    return *this;
}

FruAreaBuilder& FruAreaBuilder::withVersion(unsigned version) {
    _version = version;
    return *this;
}

FruAreaBuilder& FruAreaBuilder::announceUnits(unsigned units) {
    _announced = static_cast<int>(units);
    return *this;
}

std::string FruAreaBuilder::build() const {
    std::string area = {byteOf(_version), '\0'};
    area += _data;
    if (_isEnded)
        area += '\xC1';
    // One that has no end is full to its checksum.
    while ((area.size() + 1) % Unit != 0)
        area += _isEnded ? '\0' : '\xC0';
    const std::size_t units = (area.size() + 1) / Unit;
    area[1] =
        byteOf(_announced < 0 ? static_cast<unsigned>(units) : static_cast<unsigned>(_announced));
    area += checksum(area);
    if (_isSpoilt)
        area.back() = byteOf(static_cast<unsigned char>(area.back()) + 1U);
    return area;
}

FruBuilder& FruBuilder::_add(std::size_t headerByte, const std::string& bytes) {
    place(headerByte, static_cast<unsigned>(1 + _areas.size() / Unit));
    _areas += bytes;
    return *this;
}

FruBuilder& FruBuilder::place(std::size_t headerByte, unsigned units) {
    _header.at(headerByte) = byteOf(units);
    return *this;
}

FruBuilder& FruBuilder::withVersion(unsigned version) {
    _header[0] = byteOf(version);
    return *this;
}

FruBuilder& FruBuilder::spoilChecksum() {
    _isSpoilt = true;
    return *this;
}

std::string FruBuilder::build(std::size_t size) const {
    std::string data = _header;
    data += byteOf(static_cast<unsigned char>(checksum(_header)) + (_isSpoilt ? 1U : 0U));
    data += _areas;
    data.resize(std::max(size, data.size()), '\xFF');
    return data;
}

FruBuilder namedFru() {
    FruBuilder fru;
    fru.board(FruAreaBuilder::board(25, 0x010203)
                  .text("board manufacturer")
                  .text("board name")
                  .text("board serial number")
                  .text("board part number")
                  .text("board file"));
    fru.product(FruAreaBuilder::product(25)
                    .text("product manufacturer")
                    .text("product name")
                    .text("product part number")
                    .text("product version")
                    .text("product serial number")
                    .text("product asset tag")
                    .text("product file"));
    return fru;
}
