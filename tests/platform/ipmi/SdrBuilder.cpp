// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SdrBuilder.h"

#include "IpmiText.h"

namespace {

constexpr std::size_t HeaderLength = 5;
constexpr unsigned LocatorNamePlace = 15;
constexpr unsigned BmcAddress = 0x20;

char byteOf(unsigned value) {
    return static_cast<char>(value & 0xFFU);
}

// A record of zeros up to its name.
std::string startRecord(unsigned id, unsigned type, unsigned namePlace) {
    std::string record(namePlace, '\0');
    record[0] = byteOf(id);
    record[1] = byteOf(id >> 8U);
    record[2] = 0x51;
    record[3] = byteOf(type);
    return record;
}

std::string named(const std::string& record, unsigned namePlace, const std::string& name) {
    const std::string bytes = QZ::encodeIpmiText(QZ::IpmiEncoding::Latin1, name);
    return renamedRecord(record, namePlace, 0xC0U | static_cast<unsigned>(bytes.size()), bytes);
}

}  // namespace

std::string renamedRecord(std::string record, unsigned namePlace, unsigned typeLength,
                          const std::string& bytes) {
    record.resize(namePlace);
    record += byteOf(typeLength);
    record += bytes;
    record[4] = byteOf(static_cast<unsigned>(record.size() - HeaderLength));
    return record;
}

std::string fruLocatorRecord(const QZ::FruLocator& locator) {
    std::string record = startRecord(locator.recordId, 0x11, LocatorNamePlace);
    record[5] = byteOf(locator.address);
    record[6] = byteOf(locator.fruId);
    record[7] = byteOf((locator.isLogical ? 0x80U : 0U) | locator.lun * 8U);
    record[8] = byteOf(locator.channel * 16U);
    record[10] = byteOf(locator.deviceType);
    record[12] = byteOf(locator.entity.id);
    record[13] = byteOf(locator.entity.instance);
    return named(record, LocatorNamePlace, locator.name);
}

std::string controllerLocatorRecord(const QZ::ControllerLocator& locator) {
    std::string record = startRecord(locator.recordId, 0x12, LocatorNamePlace);
    record[5] = byteOf(locator.address);
    record[6] = byteOf(locator.channel);
    record[8] = byteOf(locator.hasFruData ? 0x08 : 0);
    record[12] = byteOf(locator.entity.id);
    record[13] = byteOf(locator.entity.instance);
    return named(record, LocatorNamePlace, locator.name);
}

std::string sensorRecord(unsigned type, const QZ::SensorRecord& sensor) {
    constexpr unsigned namePlaces[] = {0, 47, 31, 16};
    std::string record = startRecord(sensor.recordId, type, namePlaces[type]);
    record[5] = byteOf(sensor.owner);
    record[6] = byteOf(sensor.lun);
    record[7] = byteOf(sensor.number);
    record[8] = byteOf(sensor.entity.id);
    record[9] = byteOf(sensor.entity.instance);
    const std::size_t typePlace = type == 3 ? 10 : 12;
    record[typePlace] = byteOf(sensor.sensorType);
    record[typePlace + 1] = byteOf(sensor.eventReadingType);
    return named(record, namePlaces[type], sensor.name);
}

QZ::FruLocator fruLocator(unsigned record, unsigned fruId, unsigned entity,
                          const std::string& name) {
    QZ::FruLocator locator;
    locator.recordId = static_cast<std::uint16_t>(record);
    locator.address = BmcAddress;
    locator.fruId = static_cast<unsigned char>(fruId);
    locator.isLogical = true;
    locator.deviceType = 0x10;
    locator.entity = {static_cast<unsigned char>(entity), 1};
    locator.name = name;
    return locator;
}
