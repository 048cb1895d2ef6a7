// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/SystemEventRecord.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

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
