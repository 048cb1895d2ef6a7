// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/SystemEventRecord.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "BuildPaths.h"
#include "tavqz/AccessHelpers.h"

namespace {

std::vector<std::string> logged;

}  // namespace

// In the place of the module's.
void addLogItem(char* tag, char* text) {
    logged.push_back(std::string(tag) + ": " + text);
}

namespace {

constexpr const char* NOT_FOUND = "geteventstring: Could not find the event string";

SystemEventRecord _record(std::uint32_t readingType, std::uint32_t sensorType,
                          std::uint32_t offset) {
    ipmiEvent event{};
    event.eventReadingType = readingType;
    event.sensorType = sensorType;
    event.eventOffset = offset;
    logged.clear();
    return SystemEventRecord(&event);
}

SystemEventRecord _reading(double value, std::uint8_t present, std::uint8_t threshold) {
    ipmiEvent event{};
    event.reading = value;
    event.readingPresent = present;
    event.thresholdPresent = threshold;
    return SystemEventRecord(&event);
}

// What tests/sp/event-keys.txt says, a key a line: "sensor-type CODE KEY", "reading-type CODE KEY",
// "generic TYPE OFFSET KEY", "sensor SENSOR-TYPE OFFSET KEY".
class EventKeyList {
public:
    EventKeyList() {
        std::ifstream file(TAVQZ_SOURCE_DIR "/tests/sp/event-keys.txt");
        std::string line;
        while (std::getline(file, line)) {
            std::istringstream words(line);
            std::string kind;
            words >> kind;
            if (kind == "generic" || kind == "sensor") {
                std::pair<std::uint32_t, std::uint32_t> at;
                words >> at.first >> at.second >> (kind == "generic" ? generic : sensor)[at];
            } else if (kind == "sensor-type" || kind == "reading-type") {
                std::uint32_t code = 0;
                words >> code >> (kind == "sensor-type" ? sensorTypes : readingTypes)[code];
            }
        }
    }

    std::string event(std::uint32_t readingType, std::uint32_t sensorType,
                      std::uint32_t offset) const {
        const bool specific = readingType == 111;
        const auto& keys = specific ? sensor : generic;
        const auto found = keys.find({specific ? sensorType : readingType, offset});
        return found == keys.end() ? " " : found->second;
    }

    std::map<std::uint32_t, std::string> sensorTypes;
    std::map<std::uint32_t, std::string> readingTypes;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::string> generic;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::string> sensor;
};

std::string _keyOf(const std::map<std::uint32_t, std::string>& keys, std::uint32_t code) {
    const auto found = keys.find(code);
    return found == keys.end() ? "" : found->second;
}

TEST(SystemEventRecord, KnowsTheLastThresholdAndNoneBehindIt) {
    EXPECT_EQ(_record(1, 0, 11).getEventString(), "IPMI_EVENT_ERC_THOLD_UNRH");
    EXPECT_EQ(_record(1, 0, 12).getEventString(), " ");
    EXPECT_EQ(logged, std::vector<std::string>{"geteventstring: The eventstring is [ ]"});
}

TEST(SystemEventRecord, KeepsTheMixedCaseOfAFullLog) {
    EXPECT_EQ(_record(111, 16, 3).getEventString(), "IPMI_EVENT_STC_ELOG_All");
    EXPECT_EQ(logged, std::vector<std::string>{
                          "geteventstring: The eventstring is [IPMI_EVENT_STC_ELOG_All]"});
}

TEST(SystemEventRecord, HasNoEventsOfATemperatureSensorsOwn) {
    EXPECT_EQ(_record(111, 1, 0).getEventString(), " ");
    EXPECT_EQ(logged, std::vector<std::string>{"geteventstring: The eventstring is [ ]"});
}

TEST(SystemEventRecord, SaysThatAReadingTypeIsUnknown) {
    EXPECT_EQ(_record(50, 1, 0).getEventString(), " ");
    EXPECT_EQ(logged, std::vector<std::string>{NOT_FOUND});
    EXPECT_EQ(_record(50, 1, 0).getEventReadingCodeString(), "");
}

TEST(SystemEventRecord, SaysOnlyOfUnlistedCodesThatTheyAreUnknown) {
    for (const std::uint32_t sensorType : {0U, 42U}) {
        EXPECT_EQ(_record(111, sensorType, 0).getEventString(), " ");
        EXPECT_EQ(logged, std::vector<std::string>{NOT_FOUND});
    }
    for (const auto& [readingType, sensorType] :
         {std::pair{0U, 5U}, std::pair{112U, 5U}, std::pair{111U, 44U}, std::pair{111U, 255U}}) {
        EXPECT_EQ(_record(readingType, sensorType, 0).getEventString(), " ");
        EXPECT_EQ(logged, std::vector<std::string>{"geteventstring: The eventstring is [ ]"});
    }
}

TEST(SystemEventRecord, SaysOfEveryCodeWhatItFound) {
    constexpr const char* EMPTY = "geteventstring: The eventstring is [ ]";
    for (std::uint32_t readingType = 0; readingType < 256; ++readingType) {
        const bool isListed = readingType <= 12 || readingType == 111 || readingType == 112;
        // No list is so long, nor is there one for this sensor.
        EXPECT_EQ(_record(readingType, 1, 200).getEventString(), " ");
        EXPECT_EQ(logged, std::vector<std::string>{isListed ? EMPTY : NOT_FOUND}) << readingType;
    }
    for (std::uint32_t sensorType = 0; sensorType < 256; ++sensorType) {
        const bool isListed = sensorType != 0 && sensorType != 42;
        EXPECT_EQ(_record(111, sensorType, 200).getEventString(), " ");
        EXPECT_EQ(logged, std::vector<std::string>{isListed ? EMPTY : NOT_FOUND}) << sensorType;
    }
}

TEST(SystemEventRecord, NamesEveryTypeAsTheListDoes) {
    const EventKeyList list;
    ASSERT_EQ(list.sensorTypes.size(), 42U);
    ASSERT_EQ(list.readingTypes.size(), 15U);
    for (std::uint32_t code = 0; code < 256; ++code) {
        EXPECT_EQ(_record(0, code, 0).getSensorTypeCodeString(), _keyOf(list.sensorTypes, code));
        EXPECT_EQ(_record(code, 0, 0).getEventReadingCodeString(), _keyOf(list.readingTypes, code));
    }
}

// All 16.8 million combinations, in as many parts as keep each short.
constexpr std::uint32_t READING_TYPES_AT_ONCE = 16;

class EveryCombination : public testing::TestWithParam<std::uint32_t> {};

INSTANTIATE_TEST_SUITE_P(SystemEventRecord, EveryCombination,
                         testing::Range(0U, 256U, READING_TYPES_AT_ONCE));

TEST_P(EveryCombination, AgreesWithTheList) {
    const EventKeyList list;
    ASSERT_GT(list.generic.size(), 50U);
    ASSERT_GT(list.sensor.size(), 140U);
    ipmiEvent event{};
    std::uint32_t compared = 0;
    for (std::uint32_t type = GetParam(); type < GetParam() + READING_TYPES_AT_ONCE; ++type) {
        for (std::uint32_t sensor = 0; sensor < 256; ++sensor) {
            for (std::uint32_t offset = 0; offset < 256; ++offset, ++compared) {
                event.eventReadingType = type;
                event.sensorType = sensor;
                event.eventOffset = offset;
                logged.clear();
                const std::string key = SystemEventRecord(&event).getEventString();
                if (key != list.event(type, sensor, offset)) {
                    FAIL() << key << ": type " << type << " sensor " << sensor << " offset "
                           << offset;
                }
            }
        }
    }
    EXPECT_EQ(compared, READING_TYPES_AT_ONCE << 16U);
}

TEST(SystemEventRecord, TakesCodesBeyondAByte) {
    constexpr std::uint32_t HIGHEST = std::numeric_limits<std::uint32_t>::max();
    EXPECT_EQ(_record(HIGHEST, HIGHEST, HIGHEST).getEventString(), " ");
    EXPECT_EQ(_record(1, 0, HIGHEST).getEventString(), " ");
    EXPECT_EQ(_record(111, 256 + 5, 0).getEventString(), " ");
    EXPECT_EQ(_record(0, HIGHEST, 0).getSensorTypeCodeString(), "");
    EXPECT_EQ(_record(HIGHEST, 0, 0).getEventReadingCodeString(), "");
}

TEST(SystemEventRecord, WritesTheHalvesOfAReadingsBits) {
    EXPECT_EQ(_reading(1.0, 1, 1).getData0String(), "value 0 threshold [1072693248]");
    EXPECT_EQ(_reading(-1.0, 1, 255).getData0String(), "value 0 threshold [-1074790400]");
    EXPECT_EQ(_reading(0.1, 1, 1).getData0String(), "value -1717986918 threshold [1069128089]");
}

// A floating-point register would make a quiet one of it.
TEST(SystemEventRecord, KeepsTheBitsOfASignallingNaN) {
    constexpr std::uint64_t SIGNALLING = 0xFFF0000080000001ULL;
    ipmiEvent event{};
    event.readingPresent = 1;
    event.thresholdPresent = 1;
    std::memcpy(&event.reading, &SIGNALLING, sizeof SIGNALLING);
    const SystemEventRecord record(&event);
    const SystemEventRecord copied(record);
    SystemEventRecord assigned(nullptr);
    assigned = copied;
    EXPECT_EQ(record.getData0String(), "value -2147483647 threshold [-1048576]");
    EXPECT_EQ(copied.getData0String(), record.getData0String());
    EXPECT_EQ(assigned.getData0String(), record.getData0String());
}

TEST(SystemEventRecord, HasNoReadingWithoutBothFlags) {
    EXPECT_EQ(_reading(1.0, 0, 1).getData0String(), " ");
    EXPECT_EQ(_reading(1.0, 1, 0).getData0String(), " ");
    EXPECT_EQ(_reading(1.0, 0, 0).getData0String(), " ");
}

TEST(SystemEventRecord, HasNoOtherData) {
    EXPECT_EQ(_reading(1.0, 1, 1).getData1String(), " ");
    EXPECT_EQ(_reading(1.0, 1, 1).getRawDataString(), "");
}

TEST(SystemEventRecord, KeepsItsEventWhenItIsCopied) {
    ipmiEvent event{};
    event.eventReadingType = 111;
    event.sensorType = 8;
    event.eventOffset = 3;
    const SystemEventRecord first(&event);
    event.eventOffset = 0;
    const SystemEventRecord copied(first);
    SystemEventRecord assigned(&event);
    assigned = copied;
    EXPECT_EQ(assigned.getEventString(), "IPMI_EVENT_STC_PWRSUP_ACLOST");
}

TEST(SystemEventRecord, IsAllZerosWithoutAnEvent) {
    const SystemEventRecord record(nullptr);
    EXPECT_EQ(record.getSensorTypeCodeString(), "");
    EXPECT_EQ(record.getEventReadingCodeString(), "IPMI_ERC_UNKNOWN");
    EXPECT_EQ(record.getData0String(), " ");
}

}  // namespace
