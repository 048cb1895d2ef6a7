// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SelEvent.h"

#include <gtest/gtest.h>

#include <ctime>

#include "ScopedEnvironment.h"
#include "SelBuilder.h"

using namespace QZ;

namespace {

SelEvent _describe(const std::string& bytes, const std::vector<SensorRecord>& sensors = {}) {
    return describeEvent(*decodeSelEntry(bytes), sensors);
}

// The key of an event by the numbers of IPMI 2.0, tables 42-2 and 42-3.
std::string _key(unsigned readingType, unsigned sensorType, unsigned offset) {
    return _describe(selRecord({1, 0, sensorType, 0, readingType, offset})).key;
}

SensorRecord _sensor(unsigned owner, unsigned lun, unsigned number, const std::string& name) {
    SensorRecord sensor;
    sensor.owner = static_cast<unsigned char>(owner);
    sensor.lun = static_cast<unsigned char>(lun);
    sensor.number = static_cast<unsigned char>(number);
    sensor.sensorType = 1;
    sensor.name = name;
    return sensor;
}

std::string _sensorName(unsigned generator, unsigned number, unsigned type = 1) {
    const std::vector<SensorRecord> sensors = {
        _sensor(0x20, 0, 0x30, "BMC 30h"), _sensor(0x20, 1, 0x30, "BMC unit 1"),
        _sensor(0x82, 0, 0x30, "satellite"), _sensor(0x41, 0, 0x31, "software")};
    return _describe(selRecord({1, 0, type, number, 1, 0, false, generator}), sensors).sensor;
}

}  // namespace

TEST(SelEvent, NamesGenericEventsAsTheStandardNumbersThem) {
    EXPECT_EQ(_key(0x01, 1, 9), "IPMI_EVENT_ERC_THOLD_UCH");
    EXPECT_EQ(_key(0x03, 1, 0), "IPMI_EVENT_ERC_STATE_DASRT");
    EXPECT_EQ(_key(0x03, 1, 1), "IPMI_EVENT_ERC_STATE_ASRT");
    EXPECT_EQ(_key(0x04, 1, 0), "IPMI_EVENT_ERC_PFAIL_DASRT");
    EXPECT_EQ(_key(0x04, 1, 1), "IPMI_EVENT_ERC_PFAIL_ASRT");
    EXPECT_EQ(_key(0x05, 1, 1), "IPMI_EVENT_ERC_LIMIT_EXCEED");
    EXPECT_EQ(_key(0x08, 1, 0), "IPMI_EVENT_ERC_DEVPRES_EXT");
    EXPECT_EQ(_key(0x08, 1, 1), "IPMI_EVENT_ERC_DEVPRES_INS");
    EXPECT_EQ(_key(0x09, 1, 0), "IPMI_EVENT_ERC_DEVST_DIS");
    EXPECT_EQ(_key(0x09, 1, 1), "IPMI_EVENT_ERC_DEVST_ENA");
    EXPECT_EQ(_key(0x0B, 8, 1), "IPMI_EVENT_ERC_REDUN_LST");
    EXPECT_EQ(_key(0x0C, 1, 3), "IPMI_EVENT_ERC_ACPI_D3");
}

TEST(SelEvent, NamesASensorsOwnEventsAsTheStandardNumbersThem) {
    constexpr const char* powerUnit[] = {"OFF",    "CYCLE", "240DWN", "ILOCKDWN",
                                         "ACLOST", "SOFT",  "FAIL",   "PFAIL"};
    for (unsigned offset = 0; offset < 8; ++offset) {
        EXPECT_EQ(_key(0x6F, 0x09, offset),
                  std::string("IPMI_EVENT_STC_PWRUNIT_") + powerUnit[offset]);
    }
    EXPECT_EQ(_key(0x6F, 0x22, 12), "IPMI_EVENT_STC_ACPIPS_OFF");
    EXPECT_EQ(_key(0x6F, 0x22, 14), "IPMI_EVENT_STC_ACPIPS_UNK");
    EXPECT_EQ(_key(0x6F, 0x23, 3), "IPMI_EVENT_STC_WDOG2_PCYCLE");
    EXPECT_EQ(_key(0x6F, 0x23, 8), "IPMI_EVENT_STC_WDOG2_INT");
    EXPECT_EQ(_key(0x6F, 0x25, 1), "IPMI_EVENT_STC_ENT_ABSENT");
    EXPECT_EQ(_key(0x6F, 0x25, 2), "IPMI_EVENT_STC_ENT_DISABLED");
    EXPECT_EQ(_key(0x6F, 0x08, 3), "IPMI_EVENT_STC_PWRSUP_ACLOST");
}

TEST(SelEvent, HasNoNameForReservedAndUnlistedOffsets) {
    for (const unsigned offset : {13U, 15U}) {
        EXPECT_EQ(_key(0x6F, 0x22, offset), "") << offset;
    }
    for (const unsigned offset : {4U, 5U, 6U, 7U, 9U, 15U}) {
        EXPECT_EQ(_key(0x6F, 0x23, offset), "") << offset;
    }
    for (const auto& [readingType, sensorType, offset] : {std::tuple(0x6FU, 0x25U, 0U),
                                                          {0x6FU, 0x25U, 3U},
                                                          {0x6FU, 0x09U, 8U},
                                                          {0x03U, 1U, 2U},
                                                          {0x01U, 1U, 12U},
                                                          {0x6FU, 1U, 0U},
                                                          {0x6FU, 0x2AU, 1U},
                                                          {0x70U, 0xC0U, 0U},
                                                          {0x00U, 1U, 0U},
                                                          {0x6FU, 0xC0U, 0U}}) {
        EXPECT_EQ(_key(readingType, sensorType, offset), "") << readingType << " " << sensorType;
    }
}

// The high half of the first data byte says what the other two hold.
TEST(SelEvent, TakesTheOffsetFromTheLowHalfOfItsByte) {
    EXPECT_EQ(_key(0x01, 1, 0x59), "IPMI_EVENT_ERC_THOLD_UCH");
    EXPECT_EQ(_key(0x6F, 0x0C, 0xA1), "IPMI_EVENT_STC_MEM_UNCERR");
}

TEST(SelEvent, TellsEndFromBeginning) {
    const SelEvent end = _describe(selRecord({7, 0, 8, 0x41, 0x6F, 1, true}));
    EXPECT_EQ(end.key, "IPMI_EVENT_STC_PWRSUP_FAIL");
    EXPECT_EQ(end.isAsserted, false);
    EXPECT_EQ(_describe(selRecord({7, 0, 8, 0x41, 0x6F, 1})).isAsserted, true);
    EXPECT_EQ(end.record, 7U);
    EXPECT_EQ(end.sensorNumber, 0x41);
    EXPECT_EQ(end.sensorTypeKey, "IPMI_STC_PWRSUP");
}

TEST(SelEvent, KnowsASensorByOwnerUnitAndNumber) {
    EXPECT_EQ(_sensorName(0x0020, 0x30), "BMC 30h");
    EXPECT_EQ(_sensorName(0x0120, 0x30), "BMC unit 1");
    EXPECT_EQ(_sensorName(0x0082, 0x30), "satellite");
    EXPECT_EQ(_sensorName(0x0041, 0x31), "software");
    EXPECT_EQ(_sensorName(0x0041, 0x30), "");
    EXPECT_EQ(_sensorName(0x0020, 0x31), "");
    EXPECT_EQ(_sensorName(0x0220, 0x30), "");
    EXPECT_EQ(_sensorName(0x0020, 0x30, 2), "") << "a record of another sensor's type";
}

TEST(SelEvent, WritesTheTimeInTheMachinesZone) {
    const ScopedEnvironment zone("TZ", "UTC-1");
    tzset();
    EXPECT_EQ(_describe(selRecord({1, 1795161600})).time, "2026-11-20T09:00:00+01:00");
    // Beyond what a signed 32-bit number holds.
    EXPECT_EQ(_describe(selRecord({1, 0xFFFFFFFE})).time, "2106-02-07T07:28:14+01:00");
}

TEST(SelEvent, CountsFromTheStartBeforeTheClockWasSet) {
    const SelEvent first = _describe(selRecord({1, 0}));
    EXPECT_EQ(first.time, "");
    EXPECT_EQ(first.sinceStart, 0U);
    EXPECT_EQ(_describe(selRecord({1, 0x20000000})).sinceStart, 0x20000000U);
    const SelEvent later = _describe(selRecord({1, 0x20000001}));
    EXPECT_FALSE(later.sinceStart);
    EXPECT_NE(later.time, "");
    const SelEvent unknown = _describe(selRecord({1, 0xFFFFFFFF}));
    EXPECT_FALSE(unknown.sinceStart);
    EXPECT_EQ(unknown.time, "");
}

TEST(SelEvent, TakesNothingButTimeAndBytesFromOtherTypes) {
    for (const unsigned type : {0xC0U, 0xDFU}) {
        const SelEvent timed = _describe(otherSelRecord(3, type, std::string("\x10\0\0\0", 4)));
        EXPECT_EQ(timed.sinceStart, 16U) << type;
        EXPECT_FALSE(timed.sensorNumber);
        EXPECT_FALSE(timed.isAsserted);
        EXPECT_EQ(timed.key + timed.sensorTypeKey + timed.sensor, "");
    }
    for (const unsigned type : {0x00U, 0x01U, 0x03U, 0xBFU, 0xE0U, 0xFFU}) {
        const SelEvent bare = _describe(otherSelRecord(0x1234, type, std::string("\x10\0\0\0", 4)));
        EXPECT_FALSE(bare.sinceStart) << type;
        EXPECT_EQ(bare.time, "") << type;
        EXPECT_EQ(bare.type, type);
        EXPECT_EQ(bare.bytes.substr(0, 5), "34 12");
        EXPECT_EQ(bare.bytes.size(), 47U);
    }
}

TEST(SelEvent, DescribesEveryByte) {
    for (unsigned value = 0; value < 256; ++value) {
        const SelEvent event = _describe(std::string(16, static_cast<char>(value)));
        EXPECT_EQ(event.bytes.size(), 47U);
    }
}
