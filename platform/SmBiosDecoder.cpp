// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SmBiosDecoder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace QZ {
namespace {

constexpr std::size_t headerLength = 4;
// The shortest structure: a header, and the two NULs of an empty string set.
constexpr std::size_t shortestStructure = headerLength + 2;
constexpr unsigned char endOfTable = 127;

// What the entry point says of the table; 0 where it says nothing.
struct Announcement {
    unsigned char majorVersion = 0;
    unsigned char minorVersion = 0;
    std::size_t length = 0;
    std::size_t count = 0;
};

class Decoder {
public:
    explicit Decoder(std::string table)
        : _bytes(std::make_shared<const std::string>(std::move(table))) {}

    SmBios::Contents decode(const std::string& entryPoint);

private:
    Announcement _readEntryPoint(const std::string& bytes);
    Announcement _readVersion2(const std::string& bytes);
    Announcement _readVersion3(const std::string& bytes);
    Announcement _readLegacy(const std::string& bytes, std::size_t start);
    void _check(const std::string& bytes, std::size_t start, std::size_t length,
                std::size_t shortest);
    void _readTable(const Announcement& announced);
    bool _readStructure(std::size_t& at);
    void _compare(const Announcement& announced, std::size_t consumed);
    void _fault(const std::string& sentence);

    std::shared_ptr<const std::string> _bytes;
    bool _ended = false;  // An end-of-table structure has been read.
    std::string _stop;    // Why the walk ended before the bytes did, if they are at fault for it.
    SmBios::Contents _result;
};

unsigned char _byteAt(const std::string& bytes, std::size_t offset) {
    return offset < bytes.size() ? static_cast<unsigned char>(bytes[offset])
                                 : static_cast<unsigned char>(0);
}

std::size_t _littleEndian(const std::string& bytes, std::size_t offset, std::size_t width) {
    std::size_t value = 0;
    while (width > 0) {
        value = value << 8 | _byteAt(bytes, offset + --width);
    }
    return value;
}

bool _startsWith(const std::string& bytes, std::size_t offset, std::string_view text) {
    return bytes.size() >= offset && bytes.compare(offset, text.size(), text) == 0;
}

// Where two NULs follow each other; npos where they do not. Decoding spends its time on this
// search, so it takes the seven pairs of eight bytes at once as long as they hold none.
std::size_t _findTwoNuls(const std::string& bytes, std::size_t from) {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    std::size_t at = from;
    for (std::uint64_t word = 0; at + sizeof word <= bytes.size(); at += sizeof word - 1) {
        std::memcpy(&word, bytes.data() + at, sizeof word);
        // Each byte joined with its neighbour, but for the one that has none.
        const std::uint64_t pairs = word | word >> 8 | std::uint64_t{0xFF} << 56;
        const std::uint64_t zeros = (pairs - ones) & ~pairs & ones << 7;
        if (zeros != 0) {
            break;
        }
    }
    for (; at + 1 < bytes.size(); ++at) {
        if (bytes[at] == '\0' && bytes[at + 1] == '\0') {
            return at;
        }
    }
    return std::string::npos;
}

SmBios::Contents Decoder::decode(const std::string& entryPoint) {
    const Announcement announced = _readEntryPoint(entryPoint);
    _result.majorVersion = announced.majorVersion;
    _result.minorVersion = announced.minorVersion;
    _readTable(announced);
    if (_result.tables.empty()) {
        _fault("The SMBIOS table holds no structure.");
        _result.state = SmBios::State::Failed;
    } else {
        _result.state = _result.reason.empty() ? SmBios::State::Ok : SmBios::State::Damaged;
    }
    return std::move(_result);
}

Announcement Decoder::_readEntryPoint(const std::string& bytes) {
    if (_startsWith(bytes, 0, "_SM3_")) {
        return _readVersion3(bytes);
    }
    if (_startsWith(bytes, 0, "_SM_")) {
        return _readVersion2(bytes);
    }
    if (_startsWith(bytes, 0, "_DMI_")) {
        return _readLegacy(bytes, 0);
    }
    _fault("There is no SMBIOS entry point.");
    return {};
}

// DSP0134, 5.2.1. The version is the outer part's; length and count are the "_DMI_" part's.
Announcement Decoder::_readVersion2(const std::string& bytes) {
    constexpr std::size_t intermediate = 0x10;
    // 1Eh is what version 2.1 of the standard gave by mistake for the 1Fh bytes that there are.
    constexpr std::size_t shortest = 0x1E;
    _check(bytes, 0, _byteAt(bytes, 5), shortest);
    if (!_startsWith(bytes, intermediate, "_DMI_")) {
        _fault("The SMBIOS entry point lacks its \"_DMI_\" part.");
    }
    Announcement announced = _readLegacy(bytes, intermediate);
    announced.majorVersion = _byteAt(bytes, 6);
    announced.minorVersion = _byteAt(bytes, 7);
    return announced;
}

// DSP0134, 5.2.2. The length is an upper limit, and the structures are not counted.
Announcement Decoder::_readVersion3(const std::string& bytes) {
    constexpr std::size_t shortest = 0x18;
    _check(bytes, 0, _byteAt(bytes, 6), shortest);
    Announcement announced;
    announced.majorVersion = _byteAt(bytes, 7);
    announced.minorVersion = _byteAt(bytes, 8);
    announced.length = _littleEndian(bytes, 0x0C, 4);
    return announced;
}

// The "_DMI_" part, which stood alone before version 2.1. Its revision is two decimal digits.
Announcement Decoder::_readLegacy(const std::string& bytes, std::size_t start) {
    constexpr std::size_t length = 15;
    _check(bytes, start, length, length);
    const unsigned char revision = _byteAt(bytes, start + 14);
    Announcement announced;
    announced.majorVersion = static_cast<unsigned char>(revision >> 4);
    announced.minorVersion = static_cast<unsigned char>(revision & 0x0F);
    announced.length = _littleEndian(bytes, start + 6, 2);
    announced.count = _littleEndian(bytes, start + 12, 2);
    return announced;
}

void Decoder::_check(const std::string& bytes, std::size_t start, std::size_t length,
                     std::size_t shortest) {
    if (length < shortest || bytes.size() < start || bytes.size() - start < length) {
        _fault("The SMBIOS entry point is cut short.");
        return;
    }
    unsigned sum = 0;
    for (std::size_t offset = start; offset < start + length; ++offset) {
        sum += _byteAt(bytes, offset);
    }
    if (sum % 256 != 0) {
        _fault("The SMBIOS entry point has a wrong checksum.");
    }
}

void Decoder::_readTable(const Announcement& announced) {
    // The count is a hint. A count that is too low is passed, and an end-of-table structure
    // before the count is reached does not end the table: firmware has put structures behind it.
    _result.tables.reserve(std::min(announced.count, _bytes->size() / shortestStructure));
    std::size_t at = 0;
    while (at < _bytes->size() && _readStructure(at)) {
        _ended = _ended || _result.tables.back().getType() == endOfTable;
        if (_ended && _result.tables.size() >= announced.count) {
            break;
        }
    }
    _compare(announced, at);
}

// Takes the structure at `at` and moves on behind its strings; false where there is none.
bool Decoder::_readStructure(std::size_t& at) {
    const std::size_t left = _bytes->size() - at;
    const std::size_t length = _byteAt(*_bytes, at + 1);
    if (left < headerLength || left < length) {
        _stop = "The SMBIOS table ends within a structure.";
        return false;
    }
    if (length < headerLength) {
        _stop = "The SMBIOS table holds a structure shorter than its header.";
        return false;
    }
    // The set ends at two NULs in a row; one that the bytes cut off, at the last NUL there is.
    const std::size_t strings = at + length;
    const std::size_t end = _findTwoNuls(*_bytes, strings);
    if (end == std::string::npos) {
        const std::size_t lastNul = _bytes->find_last_of('\0');
        const bool any = lastNul != std::string::npos && lastNul >= strings;
        _result.tables.emplace_back(_bytes, at, any ? lastNul + 1 : strings);
        _fault("The SMBIOS table ends within the strings of a structure.");
        at = _bytes->size();
    } else {
        _result.tables.emplace_back(_bytes, at, end + 1);
        at = end + 2;
    }
    return true;
}

// A table that is shorter than announced is no fault of its own: the kernel cuts what follows the
// last structure, and version 3 announces a limit.
void Decoder::_compare(const Announcement& announced, std::size_t consumed) {
    const std::size_t count = _result.tables.size();
    const bool complete = _ended || (announced.count != 0 && count >= announced.count);
    if (!complete && !_stop.empty()) {
        _fault(_stop);
    } else if (!complete && announced.count == 0) {
        _fault("The SMBIOS table has no end-of-table structure.");
    }
    if (announced.count != 0 && announced.count != count) {
        _fault("The SMBIOS entry point announces " + std::to_string(announced.count) +
               " structures; there are " + std::to_string(count) + ".");
    }
    if (announced.length != 0 && consumed > announced.length) {
        _fault("The SMBIOS table is longer than the " + std::to_string(announced.length) +
               " bytes that its entry point announces.");
    }
}

void Decoder::_fault(const std::string& sentence) {
    if (!_result.reason.empty()) {
        _result.reason += ' ';
    }
    _result.reason += sentence;
}

}  // namespace

SmBios::Contents decodeSmBios(const std::string& entryPoint, std::string table) {
    return Decoder(std::move(table)).decode(entryPoint);
}

}  // namespace QZ
