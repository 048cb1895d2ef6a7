// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruDecoder.h"

#include <algorithm>

#include "IpmiBytes.h"

namespace QZ {

namespace {

// Offsets and lengths count in units of eight bytes.
constexpr std::size_t Unit = 8;
constexpr std::size_t HeaderLength = 8;
constexpr unsigned FormatVersion = 1;
constexpr unsigned EndOfFields = 0xC1;

// Places in the common header (chapter 8).
enum HeaderByte : std::size_t { ChassisPlace = 2, BoardPlace = 3, ProductPlace = 4 };

// The fields that an area starts with, in their order (chapters 10 to 12).
constexpr FruField FruChassis::*ChassisFields[] = {&FruChassis::partNumber,
                                                   &FruChassis::serialNumber};
constexpr FruField FruBoard::*BoardFields[] = {&FruBoard::manufacturer, &FruBoard::name,
                                               &FruBoard::serialNumber, &FruBoard::partNumber,
                                               &FruBoard::fileId};
constexpr FruField FruProduct::*ProductFields[] = {
    &FruProduct::manufacturer, &FruProduct::name,     &FruProduct::partNumber, &FruProduct::version,
    &FruProduct::serialNumber, &FruProduct::assetTag, &FruProduct::fileId};

// Where an area stands, as far as the data go. Its last byte, the checksum, is no field's.
struct Range {
    const char* name;
    std::size_t start;
    std::size_t end;
    std::size_t fieldsEnd;
    bool isDamaged = false;
    FruArea* area = nullptr;
};

// What type code 11b says depends on the language: 0 and 25 are English (13, table 13-1).
IpmiEncoding encodingOf(unsigned typeLength, unsigned language) {
    constexpr unsigned English = 25;
    switch (typeLength >> 6U) {
        case 0:
            return IpmiEncoding::Binary;
        case 1:
            return IpmiEncoding::BcdPlus;
        case 2:
            return IpmiEncoding::SixBitAscii;
        default:
            return language == 0 || language == English ? IpmiEncoding::Latin1
                                                        : IpmiEncoding::Utf16;
    }
}

class Decoder {
public:
    explicit Decoder(const std::string& bytes) : _bytes(bytes) {}

    FruInventory decode() {
        if (_isErased())
            return {};
        if (!_readHeader()) {
            _result.state = FruInventory::State::Failed;
            return _result;
        }
        _readChassis();
        _readBoard();
        _readProduct();
        _findOverlaps();
        for (const Range& range : _ranges)
            range.area->isDamaged = range.isDamaged;
        _result.state =
            _result.reason.empty() ? FruInventory::State::Ok : FruInventory::State::Damaged;
        return _result;
    }

private:
    unsigned _byteAt(std::size_t at) const { return byteAt(_bytes, at); }

    bool _sumsToZero(std::size_t start, std::size_t end) const {
        unsigned sum = 0;
        for (std::size_t at = start; at < end; ++at)
            sum += _byteAt(at);
        return sum % 256 == 0;
    }

    bool _isErased() const {
        const std::string header = _bytes.substr(0, HeaderLength);
        return header.find_first_not_of('\0') == std::string::npos ||
               header.find_first_not_of('\xFF') == std::string::npos;
    }

    bool _hasVersion(std::size_t at) const { return (_byteAt(at) & 0xFU) == FormatVersion; }

    void _fault(const std::string& sentence) {
        if (!_result.reason.empty())
            _result.reason += ' ';
        _result.reason += sentence;
    }

    void _fault(Range& area, const char* what) {
        area.isDamaged = true;
        std::string sentence = "The ";
        sentence += area.name;
        sentence += " area ";
        sentence += what;
        _fault(sentence);
    }

    bool _readHeader() {
        const bool isWhole = _bytes.size() >= HeaderLength && _sumsToZero(0, HeaderLength);
        if (!_hasVersion(0))
            _fault("The FRU data have an unknown version.");
        if (_bytes.size() < HeaderLength)
            _fault("The FRU data are shorter than their header.");
        else if (!isWhole)
            _fault("The header of the FRU data has a wrong checksum.");
        return isWhole || (_hasVersion(0) && _bytes.size() >= HeaderLength);
    }

    // The area that the header has in that place, its version, length and checksum looked at;
    // nothing where there is none.
    std::optional<Range> _findArea(const char* name, HeaderByte place) {
        const std::size_t start = _byteAt(place) * Unit;
        if (start == 0)
            return std::nullopt;
        Range area{name, start, start, start};
        if (start + 1 >= _bytes.size()) {
            _fault(area, "lies beyond the end of the data.");
            return std::nullopt;
        }
        const std::size_t length = _byteAt(start + 1) * Unit;
        area.end = length == 0 ? _bytes.size() : std::min(start + length, _bytes.size());
        area.fieldsEnd = area.end;
        if (!_hasVersion(start))
            _fault(area, "has an unknown version.");
        if (length == 0) {
            _fault(area, "has no length.");
        } else if (area.end != start + length) {
            _fault(area, "is cut off by the end of the data.");
        } else {
            --area.fieldsEnd;
            if (!_sumsToZero(start, area.end))
                _fault(area, "has a wrong checksum.");
        }
        return area;
    }

    // Takes the field at `at` and moves on behind it; false at the end of the fields.
    bool _readField(Range& area, unsigned language, std::size_t& at, FruField& field) {
        if (at >= area.fieldsEnd) {
            _fault(area, "has no end marker.");
            return false;
        }
        const unsigned typeLength = _byteAt(at);
        if (typeLength == EndOfFields)
            return false;
        field.encoding = encodingOf(typeLength, language);
        field.offset = at + 1;
        field.length = std::min<std::size_t>(typeLength & 0x3FU, area.fieldsEnd - field.offset);
        if (field.length != (typeLength & 0x3FU))
            _fault(area, "ends within a field.");
        field.text = decodeIpmiText(field.encoding,
                                    std::string_view(_bytes).substr(field.offset, field.length));
        at = field.offset + field.length;
        return field.length == (typeLength & 0x3FU);
    }

    // The fields from `at` on: those of the table, then the makers' own.
    template <class Area, std::size_t Count>
    void _readFields(Range& range, unsigned language, std::size_t at, Area& area,
                     FruField Area::*const (&fields)[Count]) {
        bool isMore = true;
        for (std::size_t i = 0; i < Count && isMore; ++i)
            isMore = _readField(range, language, at, area.*fields[i]);
        while (isMore) {
            FruField field;
            isMore = _readField(range, language, at, field);
            if (!field.text.empty())
                area.custom.push_back(field);
        }
        area.offset = range.start;
        area.length = range.end - range.start;
        range.area = &area;
        _ranges.push_back(range);
    }

    void _readChassis() {
        if (std::optional<Range> range = _findArea("chassis", ChassisPlace)) {
            FruChassis& area = _result.chassis.emplace();
            area.type = static_cast<unsigned char>(_byteAt(range->start + 2));
            _readFields(*range, 0, range->start + 3, area, ChassisFields);
        }
    }

    void _readBoard() {
        if (std::optional<Range> range = _findArea("board", BoardPlace)) {
            FruBoard& area = _result.board.emplace();
            const std::size_t start = range->start;
            area.language = static_cast<unsigned char>(_byteAt(start + 2));
            area.madeMinutes = wordAt(_bytes, start + 3) | _byteAt(start + 5) << 16U;
            _readFields(*range, area.language, start + 6, area, BoardFields);
        }
    }

    void _readProduct() {
        if (std::optional<Range> range = _findArea("product", ProductPlace)) {
            FruProduct& area = _result.product.emplace();
            area.language = static_cast<unsigned char>(_byteAt(range->start + 2));
            _readFields(*range, area.language, range->start + 3, area, ProductFields);
        }
    }

    // Which of two areas wrote over the other, nobody can say.
    void _findOverlaps() {
        for (std::size_t i = 0; i < _ranges.size(); ++i) {
            for (std::size_t j = i + 1; j < _ranges.size(); ++j) {
                Range& one = _ranges[i];
                Range& other = _ranges[j];
                if (one.start >= other.end || other.start >= one.end)
                    continue;
                other.isDamaged = true;
                _fault(one, ("overlaps the " + std::string(other.name) + " area.").c_str());
            }
        }
    }

    const std::string& _bytes;
    std::vector<Range> _ranges;
    FruInventory _result;
};

}  // namespace

FruInventory decodeFru(const std::string& bytes) {
    return Decoder(bytes).decode();
}

}  // namespace QZ
