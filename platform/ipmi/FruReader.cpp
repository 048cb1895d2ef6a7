// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <optional>

#include "BmcReaders.h"
#include "IpmiBytes.h"

namespace QZ {

namespace {

constexpr unsigned char GetAreaInfo = 0x10;
constexpr unsigned char ReadData = 0x11;

constexpr std::size_t HeaderLength = 8;
constexpr std::size_t Unit = 8;
constexpr unsigned SmallestRead = 8;
constexpr unsigned EndOfFields = 0xC1;

// Places of the areas in the common header (chapter 8 of the FRU's storage definition).
constexpr std::size_t FirstPlace = 1;
constexpr std::size_t ChassisPlace = 2;
constexpr std::size_t BoardPlace = 3;
constexpr std::size_t ProductPlace = 4;
constexpr std::size_t LastPlace = 5;
constexpr unsigned FarthestPlace = 0xFF;

class Reading {
public:
    Reading(IpmiSession& session, BmcReadSize& size, const FruLocator& unit)
        : _session(session), _size(size), _unit(unit) {}

    FruBytes read() {
        const std::optional<std::string> info = _session.askForData(
            _request(GetAreaInfo, std::string(1, static_cast<char>(_unit.fruId))));
        if (!info || info->size() < 2)
            return {};
        _total = wordAt(*info, 0);
        _isInWords = (byteAt(*info, 2) & 1U) != 0;
        _result.isPresent = true;
        _result.isComplete = _readAreas();
        return std::move(_result);
    }

private:
    IpmiRequest _request(unsigned char command, const std::string& data) const {
        IpmiRequest request;
        request.function = IpmiFunction::Storage;
        request.command = command;
        request.data = data;
        request.address = _unit.address;
        request.channel = _unit.channel;
        request.lun = _unit.lun;
        return request;
    }

    // Header, and of each area that it names first the length and then the whole. What a read
    // brought along is not read again; what the controller refuses costs its own area alone.
    bool _readAreas() {
        if (!_fill(0, HeaderLength))
            return false;
        const bool isErased = _result.bytes.find_first_not_of('\xFF') == std::string::npos;
        if (isErased || _result.bytes.size() < HeaderLength)
            return true;
        std::array<std::size_t, 3> places = {ChassisPlace, BoardPlace, ProductPlace};
        std::sort(places.begin(), places.end(), [this](std::size_t one, std::size_t other) {
            return _startOf(one) < _startOf(other);
        });
        bool isComplete = true;
        for (const std::size_t place : places)
            isComplete = _readArea(place) && isComplete;
        return isComplete;
    }

    std::size_t _startOf(std::size_t place) const { return byteAt(_result.bytes, place) * Unit; }

    bool _readArea(std::size_t place) {
        const std::size_t start = _startOf(place);
        // One that is not there is the decoder's to note.
        if (start == 0 || start + 2 > _total)
            return true;
        if (!_fill(start, start + 2)) {
            _moveBeyondEnd(place);
            return false;
        }
        const std::size_t length = byteAt(_result.bytes, start + 1) * Unit;
        return length == 0 ? _readFields(place) : _fill(start, start + length);
    }

    // The fields of an area that tells no length, up to their end marker, and no farther than the
    // next area or the longest that there may be.
    bool _readFields(std::size_t place) {
        const std::size_t start = _startOf(place);
        std::size_t end = std::min(start + FarthestPlace * Unit, _total);
        for (std::size_t other = FirstPlace; other <= LastPlace; ++other) {
            if (_startOf(other) > start)
                end = std::min(end, _startOf(other));
        }
        for (std::size_t at = start + (place == BoardPlace ? 6 : 3); at < end;) {
            if (!_fill(start, at + 1))
                return false;
            const unsigned typeLength = byteAt(_result.bytes, at);
            if (typeLength == EndOfFields)
                return true;
            at += 1 + (typeLength & 0x3FU);
        }
        return _fill(start, end);
    }

    // So that the decoder takes no other area's bytes for those of one that could not be read. The
    // header's checksum stays as right or wrong as it was.
    void _moveBeyondEnd(std::size_t place) {
        const unsigned moved = FarthestPlace - byteAt(_result.bytes, place);
        const unsigned checksum = byteAt(_result.bytes, HeaderLength - 1) - moved;
        _result.bytes[place] = static_cast<char>(FarthestPlace);
        _result.bytes[HeaderLength - 1] = static_cast<char>(checksum & 0xFFU);
    }

    // Reads from start to end what was not read before; the data grow by it, with zeros in between,
    // at which the text of a field ends that a refusal cut.
    bool _fill(std::size_t start, std::size_t end) {
        end = std::min(end, _total);
        // Areas are read in their order: all behind this one's start that is there was read.
        std::size_t at = std::max(start, _result.bytes.size());
        const BmcReadSize before = _size;
        while (at < end) {
            const std::size_t count = std::min<std::size_t>(_size.bytes(), _total - at);
            const std::optional<IpmiReply> reply = _ask(at, count);
            if (!reply)
                return false;
            const std::string bytes = _bytesOf(*reply);
            if (bytes.empty()) {
                if (_size.shrinkFor(*reply))
                    continue;
                // Where other reads went well the size was not the reason.
                if (!_result.bytes.empty())
                    _size = before;
                return false;
            }
            _result.bytes.resize(std::max(_result.bytes.size(), at), '\0');
            _result.bytes.replace(at, bytes.size(), bytes);
            at += bytes.size();
        }
        return true;
    }

    std::optional<IpmiReply> _ask(std::size_t offset, std::size_t count) {
        if (_isInWords) {
            offset /= 2;
            count = (count + 1) / 2;
        }
        const std::string data = {static_cast<char>(_unit.fruId), static_cast<char>(offset & 0xFFU),
                                  static_cast<char>(offset >> 8U), static_cast<char>(count)};
        return _session.ask(_request(ReadData, data));
    }

    // Without the count in front, which a controller may have got wrong.
    std::string _bytesOf(const IpmiReply& reply) const {
        if (reply.completion != IpmiNormal || reply.data.empty())
            return {};
        const std::size_t count = byteAt(reply.data, 0);
        return reply.data.substr(1, _isInWords ? 2 * count : count);
    }

    IpmiSession& _session;
    BmcReadSize& _size;
    const FruLocator& _unit;
    std::size_t _total = 0;
    bool _isInWords = false;
    FruBytes _result;
};

}  // namespace

bool BmcReadSize::shrinkFor(const IpmiReply& refusal) {
    switch (refusal.completion) {
        case IpmiLengthInvalid:
        case IpmiLengthExceeded:
        case IpmiCannotReturnLength:
        case IpmiUnspecified:
            break;
        default:
            return false;
    }
    if (_bytes <= SmallestRead)
        return false;
    _bytes /= 2;
    return true;
}

FruBytes readFru(IpmiSession& session, BmcReadSize& size, const FruLocator& unit) {
    return Reading(session, size, unit).read();
}

}  // namespace QZ
