// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SdrDecoder.h"

#include <algorithm>
#include <string_view>

#include "IpmiBytes.h"
#include "IpmiText.h"

namespace QZ {

namespace {

// All places count from the record's start, its header of five bytes included.
enum Place : std::size_t { IdPlace = 0, TypePlace = 3, LengthPlace = 4, BodyPlace = 5 };

enum RecordType : unsigned {
    FullSensor = 0x01,
    CompactSensor = 0x02,
    EventOnlySensor = 0x03,
    FruDevice = 0x11,
    Controller = 0x12,
};

unsigned char narrow(unsigned value) {
    return static_cast<unsigned char>(value);
}

class Decoder {
public:
    explicit Decoder(SdrContents& result) : _result(result) {}

    void decode(std::string_view record) {
        const std::size_t length = BodyPlace + byteAt(record, LengthPlace);
        _result.isDamaged = _result.isDamaged || record.size() < length;
        record = record.substr(0, length);
        switch (byteAt(record, TypePlace)) {
            case FullSensor:
                _readSensor(record, 47);
                break;
            case CompactSensor:
                _readSensor(record, 31);
                break;
            case EventOnlySensor:
                _readEventOnly(record);
                break;
            case FruDevice:
                _readFruLocator(record);
                break;
            case Controller:
                _readController(record);
                break;
            default:
                break;
        }
    }

private:
    // False, and noted, where the record has nothing at that place.
    bool _reaches(std::string_view record, std::size_t place) {
        const bool isThere = place < record.size();
        _result.isDamaged = _result.isDamaged || !isThere;
        return isThere;
    }

    // A type/length byte and its text (43.15).
    std::string _nameAt(std::string_view record, std::size_t place) {
        constexpr IpmiEncoding encodings[] = {IpmiEncoding::Utf16, IpmiEncoding::BcdPlus,
                                              IpmiEncoding::SixBitAscii, IpmiEncoding::Latin1};
        const unsigned typeLength = byteAt(record, place);
        const std::size_t length = typeLength & 0x1FU;
        if (!_reaches(record, place) || length == 0)
            return {};
        const std::string_view text = record.substr(place + 1, length);
        _result.isDamaged = _result.isDamaged || text.size() < length;
        return decodeIpmiText(encodings[typeLength >> 6U], text);
    }

    static IpmiEntity _entityAt(std::string_view record, std::size_t place) {
        return {narrow(byteAt(record, place)), narrow(byteAt(record, place + 1))};
    }

    SensorRecord _startSensor(std::string_view record) {
        SensorRecord sensor;
        sensor.recordId = wordAt(record, IdPlace);
        sensor.owner = narrow(byteAt(record, 5));
        sensor.lun = narrow(byteAt(record, 6) & 3U);
        sensor.number = narrow(byteAt(record, 7));
        sensor.entity = _entityAt(record, 8);
        return sensor;
    }

    void _readSensor(std::string_view record, std::size_t namePlace) {
        if (!_reaches(record, 13))
            return;
        SensorRecord sensor = _startSensor(record);
        sensor.sensorType = narrow(byteAt(record, 12));
        sensor.eventReadingType = narrow(byteAt(record, 13));
        sensor.name = _nameAt(record, namePlace);
        _result.sensors.push_back(sensor);
    }

    void _readEventOnly(std::string_view record) {
        if (!_reaches(record, 11))
            return;
        SensorRecord sensor = _startSensor(record);
        sensor.sensorType = narrow(byteAt(record, 10));
        sensor.eventReadingType = narrow(byteAt(record, 11));
        sensor.name = _nameAt(record, 16);
        _result.sensors.push_back(sensor);
    }

    void _readFruLocator(std::string_view record) {
        if (!_reaches(record, 13))
            return;
        const unsigned access = byteAt(record, 7);
        FruLocator locator;
        locator.recordId = wordAt(record, IdPlace);
        locator.address = narrow(byteAt(record, 5) & 0xFEU);
        locator.fruId = narrow(byteAt(record, 6));
        locator.isLogical = (access & 0x80U) != 0;
        locator.lun = narrow(access >> 3U & 3U);
        locator.channel = narrow(byteAt(record, 8) >> 4U);
        locator.deviceType = narrow(byteAt(record, 10));
        locator.entity = _entityAt(record, 12);
        locator.name = _nameAt(record, 15);
        _result.fruLocators.push_back(locator);
    }

    void _readController(std::string_view record) {
        if (!_reaches(record, 13))
            return;
        constexpr unsigned FruCapability = 0x08;
        ControllerLocator controller;
        controller.recordId = wordAt(record, IdPlace);
        controller.address = narrow(byteAt(record, 5) & 0xFEU);
        controller.channel = narrow(byteAt(record, 6) & 0xFU);
        controller.hasFruData = (byteAt(record, 8) & FruCapability) != 0;
        controller.entity = _entityAt(record, 12);
        controller.name = _nameAt(record, 15);
        _result.controllers.push_back(controller);
    }

    SdrContents& _result;
};

}  // namespace

SdrContents decodeSdr(const std::vector<std::string>& records) {
    SdrContents contents;
    Decoder decoder(contents);
    for (const std::string& record : records)
        decoder.decode(record);
    return contents;
}

}  // namespace QZ
