// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

// Makes SMBIOS firmware data (DMTF DSP0134), well-formed or wrong in a chosen place. Offsets
// beyond a structure's formatted area throw std::out_of_range.

// One structure: a formatted area of the given length, zero where nothing is put, and strings.
class SmBiosStructure {
public:
    SmBiosStructure(unsigned char type, unsigned char length, unsigned short handle);

    SmBiosStructure& byte(std::size_t offset, unsigned value);
    SmBiosStructure& word(std::size_t offset, unsigned value);
    SmBiosStructure& bytes(std::size_t offset, const std::string& values);

    // Appends the text to the strings and puts its number at the offset.
    SmBiosStructure& text(std::size_t offset, const std::string& value);

    std::string build() const;

private:
    std::string _formatted;
    std::string _strings;
    unsigned _stringCount = 0;
};

class SmBiosBuilder {
public:
    enum class EntryPoint { Legacy, Version2, Version3 };

    // Where the entry points say that the table lies; nobody looks there.
    static constexpr std::uint32_t tableAddress = 0x000E0000;

    SmBiosBuilder(EntryPoint kind, unsigned char majorVersion, unsigned char minorVersion);

    // The next structure; its handle is its place, counted from 0, unless given. The reference
    // holds as long as the builder does.
    SmBiosStructure& add(unsigned char type, unsigned char length);
    SmBiosStructure& add(unsigned char type, unsigned char length, unsigned short handle);

    // The end-of-table structure (type 127).
    SmBiosBuilder& addEnd();

    // What the entry point says instead of the truth.
    SmBiosBuilder& announceLength(std::uint32_t length);
    SmBiosBuilder& announceCount(unsigned short count);
    SmBiosBuilder& spoilChecksum();

    std::string entryPoint() const;
    std::string table() const;

    // Lays both below the root folder as the kernel shows them:
    // sys/firmware/dmi/tables/{smbios_entry_point,DMI}.
    void writeBelow(const std::string& root) const;

private:
    std::string _legacy() const;
    std::string _version2() const;
    std::string _version3() const;

    EntryPoint _kind;
    unsigned char _majorVersion;
    unsigned char _minorVersion;
    std::deque<SmBiosStructure> _structures;
    std::optional<std::uint32_t> _announcedLength;
    std::optional<unsigned short> _announcedCount;
    bool _checksumSpoilt = false;
};

// Writes the file, making the folders above it. Throws std::runtime_error.
void writeTestFile(const std::string& path, const std::string& content);
