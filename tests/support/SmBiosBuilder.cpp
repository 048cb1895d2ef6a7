// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SmBiosBuilder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

void _put(std::string& bytes, std::size_t offset, std::size_t width, std::uint64_t value) {
    for (std::size_t i = 0; i < width; ++i) {
        bytes.at(offset + i) = static_cast<char>(value >> (8 * i) & 0xFF);
    }
}

// Sets the byte at the offset so that the bytes from start to end add up to 0, or to 1.
void _sum(std::string& bytes, std::size_t offset, std::size_t start, std::size_t end, bool wrong) {
    unsigned sum = 0;
    for (std::size_t i = start; i < end; ++i) {
        sum += static_cast<unsigned char>(bytes[i]);
    }
    _put(bytes, offset, 1, (wrong ? 1U : 0U) - sum);
}

}  // namespace

SmBiosStructure::SmBiosStructure(unsigned char type, unsigned char length, unsigned short handle)
    : _formatted(length, '\0') {
    byte(0, type).byte(1, length).word(2, handle);
}

SmBiosStructure& SmBiosStructure::byte(std::size_t offset, unsigned value) {
    _put(_formatted, offset, 1, value);
    return *this;
}

SmBiosStructure& SmBiosStructure::word(std::size_t offset, unsigned value) {
    _put(_formatted, offset, 2, value);
    return *this;
}

SmBiosStructure& SmBiosStructure::bytes(std::size_t offset, const std::string& values) {
    _formatted.replace(offset, values.size(), values);
    return *this;
}

SmBiosStructure& SmBiosStructure::text(std::size_t offset, const std::string& value) {
    _strings += value + '\0';
    return byte(offset, ++_stringCount);
}

std::string SmBiosStructure::build() const {
    return _formatted + (_strings.empty() ? std::string(1, '\0') : _strings) + '\0';
}

SmBiosBuilder::SmBiosBuilder(EntryPoint kind, unsigned char majorVersion,
                             unsigned char minorVersion)
    : _kind(kind), _majorVersion(majorVersion), _minorVersion(minorVersion) {}

SmBiosStructure& SmBiosBuilder::add(unsigned char type, unsigned char length) {
    return add(type, length, static_cast<unsigned short>(_structures.size()));
}

SmBiosStructure& SmBiosBuilder::add(unsigned char type, unsigned char length,
                                    unsigned short handle) {
    return _structures.emplace_back(type, length, handle);
}

SmBiosBuilder& SmBiosBuilder::addEnd() {
    add(127, 4);
    return *this;
}

SmBiosBuilder& SmBiosBuilder::announceLength(std::uint32_t length) {
    _announcedLength = length;
    return *this;
}

SmBiosBuilder& SmBiosBuilder::announceCount(unsigned short count) {
    _announcedCount = count;
    return *this;
}

SmBiosBuilder& SmBiosBuilder::spoilChecksum() {
    _checksumSpoilt = true;
    return *this;
}

std::string SmBiosBuilder::entryPoint() const {
    switch (_kind) {
        case EntryPoint::Legacy:
            return _legacy();
        case EntryPoint::Version2:
            return _version2();
        case EntryPoint::Version3:
            break;
    }
    return _version3();
}

std::string SmBiosBuilder::table() const {
    std::string bytes;
    for (const SmBiosStructure& structure : _structures) {
        bytes += structure.build();
    }
    return bytes;
}

std::string SmBiosBuilder::_legacy() const {
    std::string bytes(0x0F, '\0');
    bytes.replace(0, 5, "_DMI_");
    _put(bytes, 6, 2, _announcedLength.value_or(static_cast<std::uint32_t>(table().size())));
    _put(bytes, 8, 4, tableAddress);
    _put(bytes, 12, 2, _announcedCount.value_or(static_cast<unsigned short>(_structures.size())));
    _put(bytes, 14, 1, static_cast<unsigned>(_majorVersion << 4 | _minorVersion));
    _sum(bytes, 5, 0, bytes.size(), _checksumSpoilt);
    return bytes;
}

std::string SmBiosBuilder::_version2() const {
    std::string bytes(0x10, '\0');
    bytes.replace(0, 4, "_SM_");
    _put(bytes, 5, 1, 0x1F);
    _put(bytes, 6, 1, _majorVersion);
    _put(bytes, 7, 1, _minorVersion);
    std::size_t largest = 0;
    for (const SmBiosStructure& structure : _structures) {
        largest = std::max(largest, structure.build().size());
    }
    _put(bytes, 8, 2, largest);
    bytes += _legacy();
    _sum(bytes, 4, 0, bytes.size(), _checksumSpoilt);
    return bytes;
}

std::string SmBiosBuilder::_version3() const {
    std::string bytes(0x18, '\0');
    bytes.replace(0, 5, "_SM3_");
    _put(bytes, 6, 1, bytes.size());
    _put(bytes, 7, 1, _majorVersion);
    _put(bytes, 8, 1, _minorVersion);
    _put(bytes, 10, 1, 1);
    _put(bytes, 12, 4, _announcedLength.value_or(static_cast<std::uint32_t>(table().size())));
    _put(bytes, 16, 8, tableAddress);
    _sum(bytes, 5, 0, bytes.size(), _checksumSpoilt);
    return bytes;
}

void SmBiosBuilder::writeBelow(const std::string& root) const {
    const std::string folder = root + "/sys/firmware/dmi/tables/";
    writeTestFile(folder + "smbios_entry_point", entryPoint());
    writeTestFile(folder + "DMI", table());
}

void writeTestFile(const std::string& path, const std::string& content) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << content;
    file.close();
    if (!file) {
        throw std::runtime_error("Cannot write " + path);
    }
}
