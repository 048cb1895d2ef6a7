// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "BmcValues.h"

#include <gtest/gtest.h>

namespace QZ {
namespace {

std::string _bytes(std::initializer_list<unsigned char> values) {
    return {values.begin(), values.end()};
}

// Every start of the reply that is too short is nothing.
template <class Value>
void _expectNothingBelow(std::size_t shortest, const std::string& data,
                         std::optional<Value> (*decode)(const std::string&)) {
    for (std::size_t length = 0; length < shortest; ++length) {
        EXPECT_FALSE(decode(data.substr(0, length))) << length;
    }
    EXPECT_TRUE(decode(data.substr(0, shortest)));
}

TEST(BmcValues, DecodeADeviceId) {
    const std::string data = _bytes(
        {0x20, 0x81, 0x02, 0x45, 0x02, 0x8F, 0x57, 0x01, 0xF0, 0x34, 0x12, 0xA, 0xB, 0xC, 0xD});
    const auto id = decodeDeviceId(data);
    ASSERT_TRUE(id);
    EXPECT_EQ(id->deviceId, 0x20);
    EXPECT_EQ(id->deviceRevision, 1);
    EXPECT_EQ(id->majorFirmware, 2);
    EXPECT_EQ(id->minorFirmware, 45);
    EXPECT_FALSE(id->isUpdating);
    EXPECT_EQ(id->ipmiVersion, 0x20);
    EXPECT_TRUE(id->hasFruData && id->hasSel && id->hasSdrRepository);
    EXPECT_EQ(id->manufacturer, 0x000157U);
    EXPECT_EQ(id->product, 0x1234);
    EXPECT_EQ(id->auxiliaryFirmware, "\x0A\x0B\x0C\x0D");
    EXPECT_EQ(decodeDeviceId(data.substr(0, 14))->auxiliaryFirmware, "");
    _expectNothingBelow(11, data, decodeDeviceId);
}

TEST(BmcValues, DecodeADeviceIdOfAControllerThatStarts) {
    const auto id = decodeDeviceId(_bytes({0, 0, 0x82, 0, 0x51, 0, 0, 0, 0, 0, 0}));
    EXPECT_TRUE(id->isUpdating);
    EXPECT_EQ(id->majorFirmware, 2);
    EXPECT_EQ(id->ipmiVersion, 0x15);
    EXPECT_FALSE(id->hasFruData || id->hasSel || id->hasSdrRepository);
}

TEST(BmcValues, DecodeAChassisStatus) {
    const auto status = decodeChassisStatus(_bytes({0x61, 0x10, 0x09}));
    EXPECT_TRUE(status->isOn && status->hasIntrusion && status->hasCoolingFault);
    EXPECT_FALSE(status->hasPowerFault || status->hasPowerOverload || status->hasDriveFault);
    EXPECT_EQ(status->lastPowerEvent, 0x10);
    EXPECT_TRUE(decodeChassisStatus(_bytes({0x08, 0, 0}))->hasPowerFault);
    EXPECT_TRUE(decodeChassisStatus(_bytes({0x02, 0, 0}))->hasPowerOverload);
    EXPECT_TRUE(decodeChassisStatus(_bytes({0, 0, 4}))->hasDriveFault);
    _expectNothingBelow(3, _bytes({1, 2, 3, 4}), decodeChassisStatus);
}

TEST(BmcValues, DecodeAWatchdog) {
    const std::string data = _bytes({0x43, 0x21, 5, 0x3E, 0x58, 0x02, 0x10, 0x01});
    const auto watchdog = decodeWatchdog(data);
    EXPECT_EQ(watchdog->use, BmcWatchdog::OsLoad);
    EXPECT_TRUE(watchdog->isRunning);
    EXPECT_EQ(watchdog->action, 1);
    EXPECT_EQ(watchdog->pretimeoutSeconds, 5U);
    EXPECT_EQ(watchdog->initialTenths, 600U);
    EXPECT_EQ(watchdog->presentTenths, 272U);
    // A simulated controller leaves out the last two bytes.
    EXPECT_FALSE(decodeWatchdog(data.substr(0, 6))->presentTenths);
    _expectNothingBelow(6, data, decodeWatchdog);
}

TEST(BmcValues, DecodePowerOnMinutes) {
    EXPECT_EQ(decodePowerOnMinutes(_bytes({60, 0x10, 0x27, 0, 0})), 600000U);
    EXPECT_EQ(decodePowerOnMinutes(_bytes({255, 0xFF, 0xFF, 0xFF, 0xFF})), 0xFEFFFFFF01U);
    _expectNothingBelow(5, _bytes({1, 2, 3, 4, 5}), decodePowerOnMinutes);
}

TEST(BmcValues, DecodeWhatTheEventLogHolds) {
    const std::string data = _bytes({0x51, 3, 1, 0, 0x10, 1, 0, 0, 0x40, 2, 0, 0, 0x50, 0x82});
    const auto info = decodeSelInfo(data);
    EXPECT_EQ(info->entries, 259U);
    EXPECT_EQ(info->freeBytes, 4096U);
    EXPECT_EQ(info->lastAdded, 0x40000001U);
    EXPECT_EQ(info->lastErased, 0x50000002U);
    EXPECT_TRUE(info->hasOverflowed);
    _expectNothingBelow(14, data, decodeSelInfo);
}

TEST(BmcValues, DecodeAnEvent) {
    const std::string data =
        _bytes({7, 0, 2, 4, 3, 2, 1, 0x20, 0, 4, 0x1D, 0x30, 0xEF, 0xC1, 5, 6});
    const auto entry = decodeSelEntry(data);
    EXPECT_EQ(entry->recordId, 7);
    EXPECT_EQ(entry->type, 2);
    EXPECT_EQ(entry->seconds, 0x01020304U);
    EXPECT_EQ(entry->generator, 0x20);
    EXPECT_EQ(entry->messageVersion, 4);
    EXPECT_EQ(entry->sensorType, 0x1D);
    EXPECT_EQ(entry->sensorNumber, 0x30);
    EXPECT_TRUE(entry->isDeassertion);
    EXPECT_EQ(entry->eventReadingType, 0x6F);
    EXPECT_EQ(entry->data[0], 0xC1);
    EXPECT_EQ(entry->data[2], 6);
    EXPECT_EQ(entry->bytes, data);
    _expectNothingBelow(16, data, decodeSelEntry);
}

TEST(BmcValues, WriteAnIdentifierAsFirmwareDoes) {
    std::string guid;
    for (char byte = 1; byte <= 16; ++byte) {
        guid += byte;
    }
    EXPECT_EQ(guidText(guid), "04030201-0605-0807-090a-0b0c0d0e0f10");
    for (const std::string& none :
         {std::string(16, '\0'), std::string(16, '\xFF'), guid.substr(1), std::string()}) {
        EXPECT_FALSE(guidText(none));
    }
}

}  // namespace
}  // namespace QZ
