// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "IpmiText.h"

// Makes FRU inventory data (Platform Management FRU Information Storage Definition 1.0),
// well-formed or wrong in a chosen place.

// One area: what stands in front of its fields, and these.
class FruAreaBuilder {
public:
    static FruAreaBuilder chassis(unsigned type);
    // made: minutes since 1996 began.
    static FruAreaBuilder board(unsigned language, unsigned made = 0);
    static FruAreaBuilder product(unsigned language);

    // The next field, from bytes as they are stored.
    FruAreaBuilder& stored(QZ::IpmiEncoding encoding, const std::string& bytes);

    // The next field: a text that the encoding can express. One character of Latin-1 is none: its
    // type/length byte is the end marker.
    FruAreaBuilder& text(const std::string& value,
                         QZ::IpmiEncoding encoding = QZ::IpmiEncoding::Latin1);

    // A type/length byte as it is, and what follows it.
    FruAreaBuilder& raw(unsigned typeLength, const std::string& bytes = {});

    FruAreaBuilder& withoutEnd();
    FruAreaBuilder& spoilChecksum();
    FruAreaBuilder& withVersion(unsigned version);
    // What the area says of its length, in units of eight bytes, with a checksum that fits it.
    FruAreaBuilder& announceUnits(unsigned units);

    std::string build() const;

private:
    explicit FruAreaBuilder(std::string start) : _data(std::move(start)) {}

    std::string _data;
    unsigned _version = 1;
    int _announced = -1;
    bool _isEnded = true;
    bool _isSpoilt = false;
};

// The whole: header and areas in the order in which they were added.
class FruBuilder {
public:
    FruBuilder& chassis(const FruAreaBuilder& area) { return _add(2, area.build()); }
    FruBuilder& board(const FruAreaBuilder& area) { return _add(3, area.build()); }
    FruBuilder& product(const FruAreaBuilder& area) { return _add(4, area.build()); }
    // Bytes of the internal use area or of multi-records, a multiple of eight of them.
    FruBuilder& internalUse(const std::string& bytes) { return _add(1, bytes); }
    FruBuilder& multiRecord(const std::string& bytes) { return _add(5, bytes); }

    // Where the header says that an area stands, in units of eight bytes, whatever was added.
    FruBuilder& place(std::size_t headerByte, unsigned units);
    FruBuilder& withVersion(unsigned version);
    FruBuilder& spoilChecksum();

    // Filled up with erased bytes to that size.
    std::string build(std::size_t size = 0) const;

private:
    FruBuilder& _add(std::size_t headerByte, const std::string& bytes);

    std::string _header{"\1\0\0\0\0\0\0", 7};
    std::string _areas;
    bool _isSpoilt = false;
};

// A board and a product with a text in every field, each its name.
FruBuilder namedFru();
