// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SdrDecoder.h"

#include <gtest/gtest.h>

#include "SdrBuilder.h"

namespace QZ {
namespace {

constexpr unsigned _locatorName = 15;

std::string _locator() {
    return fruLocatorRecord(fruLocator(7, 3, 10, "PSU 1"));
}

TEST(SdrDecoder, FindsFruLocators) {
    FruLocator other = fruLocator(0x1234, 200, 15, "Backplane");
    other.address = 0xB4;
    other.isLogical = false;
    other.lun = 2;
    other.channel = 6;
    const SdrContents contents = decodeSdr({_locator(), fruLocatorRecord(other)});
    EXPECT_FALSE(contents.isDamaged);
    ASSERT_EQ(contents.fruLocators.size(), 2U);
    const FruLocator& first = contents.fruLocators[0];
    EXPECT_EQ(first.recordId, 7);
    EXPECT_EQ(first.address, 0x20);
    EXPECT_EQ(first.fruId, 3);
    EXPECT_TRUE(first.isLogical);
    EXPECT_EQ(first.deviceType, 0x10);
    EXPECT_EQ(first.entity.id, 10);
    EXPECT_EQ(first.entity.instance, 1);
    EXPECT_EQ(first.name, "PSU 1");
    const FruLocator& second = contents.fruLocators[1];
    EXPECT_EQ(second.recordId, 0x1234);
    EXPECT_EQ(second.address, 0xB4);
    EXPECT_FALSE(second.isLogical);
    EXPECT_EQ(second.lun, 2);
    EXPECT_EQ(second.channel, 6);
}

TEST(SdrDecoder, FindsManagementControllers) {
    ControllerLocator locator;
    locator.recordId = 9;
    locator.address = 0x2C;
    locator.channel = 6;
    locator.hasFruData = true;
    locator.entity = {46, 1};
    locator.name = "Node";
    const SdrContents contents = decodeSdr({controllerLocatorRecord(locator)});
    EXPECT_FALSE(contents.isDamaged);
    ASSERT_EQ(contents.controllers.size(), 1U);
    EXPECT_EQ(contents.controllers[0].address, 0x2C);
    EXPECT_EQ(contents.controllers[0].channel, 6);
    EXPECT_TRUE(contents.controllers[0].hasFruData);
    EXPECT_EQ(contents.controllers[0].entity.id, 46);
    EXPECT_EQ(contents.controllers[0].name, "Node");
}

TEST(SdrDecoder, KnowsWhichSensorEachKindOfRecordDescribes) {
    SensorRecord sensor;
    sensor.recordId = 3;
    sensor.owner = 0x20;
    sensor.lun = 1;
    sensor.number = 0x30;
    sensor.entity = {7, 2};
    sensor.sensorType = 0x1D;
    sensor.eventReadingType = 0x6F;
    sensor.name = "Restart";
    for (const unsigned type : {1U, 2U, 3U}) {
        const SdrContents contents = decodeSdr({sensorRecord(type, sensor)});
        EXPECT_FALSE(contents.isDamaged);
        ASSERT_EQ(contents.sensors.size(), 1U) << type;
        const SensorRecord& found = contents.sensors[0];
        EXPECT_EQ(found.recordId, 3);
        EXPECT_EQ(found.owner, 0x20);
        EXPECT_EQ(found.lun, 1);
        EXPECT_EQ(found.number, 0x30);
        EXPECT_EQ(found.entity.id, 7);
        EXPECT_EQ(found.entity.instance, 2);
        EXPECT_EQ(found.sensorType, 0x1D);
        EXPECT_EQ(found.eventReadingType, 0x6F);
        EXPECT_EQ(found.name, "Restart");
    }
}

TEST(SdrDecoder, TakesNamesInEveryEncoding) {
    const struct {
        unsigned typeLength;
        std::string bytes;
        std::string name;
    } cases[] = {{0xC0, "", ""},
                 {0xC1, "A", "A"},
                 {0xC4, "M\xFC\x20 ", "M\xC3\xBC  "},
                 {0x83, "\x29\xDC\xA6", "IPMI"},
                 {0x42, "\x01\xB2", "01-2"},
                 {0x04, std::string("A\0B\0", 4), "AB"},
                 {0xC5, std::string("PS\0\0\0", 5), "PS"}};
    for (const auto& [typeLength, bytes, name] : cases) {
        const SdrContents contents =
            decodeSdr({renamedRecord(_locator(), _locatorName, typeLength, bytes)});
        EXPECT_FALSE(contents.isDamaged);
        ASSERT_EQ(contents.fruLocators.size(), 1U);
        EXPECT_EQ(contents.fruLocators[0].name, name);
    }
}

TEST(SdrDecoder, KeepsALocatorWhoseNameIsCutOff) {
    const std::string whole = _locator();
    for (std::size_t length = 14; length < whole.size(); ++length) {
        const SdrContents contents = decodeSdr({whole.substr(0, length)});
        EXPECT_TRUE(contents.isDamaged) << length;
        ASSERT_EQ(contents.fruLocators.size(), 1U);
        EXPECT_EQ(contents.fruLocators[0].entity.id, 10);
        EXPECT_EQ(std::string("PSU 1").find(contents.fruLocators[0].name), 0U);
    }
}

TEST(SdrDecoder, LeavesOutWhatEndsBeforeItsEntityIsTold) {
    for (std::size_t length = 4; length < 14; ++length) {
        const SdrContents contents = decodeSdr({_locator().substr(0, length), _locator()});
        EXPECT_TRUE(contents.isDamaged) << length;
        EXPECT_EQ(contents.fruLocators.size(), 1U);
    }
}

TEST(SdrDecoder, BelievesTheLengthInTheHeader) {
    std::string record = _locator();
    record[4] = static_cast<char>(record[4] - 2);
    const SdrContents contents = decodeSdr({record});
    EXPECT_TRUE(contents.isDamaged);
    EXPECT_EQ(contents.fruLocators[0].name, "PSU");
    EXPECT_EQ(decodeSdr({_locator() + "beyond"}).fruLocators[0].name, "PSU 1");
}

TEST(SdrDecoder, PassesOverOtherRecords) {
    std::string oem = _locator();
    oem[3] = '\xC0';
    const SdrContents contents = decodeSdr({oem, _locator(), ""});
    EXPECT_EQ(contents.fruLocators.size(), 1U);
    EXPECT_TRUE(contents.isDamaged) << "a record of no bytes";
    EXPECT_FALSE(decodeSdr({oem}).isDamaged);
}

}  // namespace
}  // namespace QZ
