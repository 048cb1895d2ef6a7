// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RestartCounter.h"

#include <gtest/gtest.h>

#include "TestBmc.h"

using namespace QZ;

namespace {

// A system event of that sensor type.
std::string _event(unsigned char id, char sensorType, char eventType = '\x6F', char type = 2) {
    std::string record(16, '\0');
    record[0] = static_cast<char>(id);
    record[2] = type;
    record[10] = sensorType;
    record[12] = eventType;
    return record;
}

// What the controller says of a log with so many entries, erased at that time.
std::string _info(unsigned char entries, const std::string& erased = "01 00 00 00") {
    char text[96];
    (void)std::snprintf(text, sizeof text, "00 51 %02X 00 00 10 01 00 00 00 %s 02",
                        unsigned(entries), erased.c_str());
    return text;
}

constexpr const char* _infoCommand = "0A 40";

}  // namespace

TEST(RestartCounter, CountsStartsAmongOtherEvents) {
    TestBmc controller;
    controller.reply(_infoCommand, _info(5));
    controller.event(_event(1, '\x1D'))
        .event(_event(2, '\x04'))
        .event(_event(3, '\x1D'))
        .event(_event(4, '\x1D', '\xEF'))           // taken back
        .event(_event(5, '\x1D', '\x6F', '\xC0'));  // no system event
    Bmc bmc;
    RestartCounter counter;
    EXPECT_EQ(counter.count(bmc), 2);
}

TEST(RestartCounter, ReadsWhatIsNewAlone) {
    TestBmc controller;
    controller.reply(_infoCommand, _info(2));
    controller.event(_event(1, '\x1D')).event(_event(2, '\x1D'));
    Bmc bmc;
    RestartCounter counter;
    EXPECT_EQ(counter.count(bmc), 2);
    controller.event(_event(3, '\x1D'));
    controller.forgetAsked();
    EXPECT_EQ(counter.count(bmc), 3);
    EXPECT_EQ(controller.countAsked("0a 43"), 2U) << "the last one known, and the new one";
    EXPECT_EQ(counter.count(bmc), 3);
}

TEST(RestartCounter, StartsAnewWithAnErasedLog) {
    TestBmc controller;
    controller.reply(_infoCommand, _info(1));
    controller.event(_event(1, '\x1D'));
    RestartCounter counter;
    Bmc before;
    EXPECT_EQ(counter.count(before), 1);
    controller.reply(_infoCommand, _info(1, "02 00 00 00"));
    Bmc after;
    EXPECT_EQ(counter.count(after), 1);
}

TEST(RestartCounter, CountsNoneWithoutALog) {
    TestBmc controller;
    Bmc bmc;
    RestartCounter counter;
    EXPECT_EQ(counter.count(bmc), 0);
    controller.reply(_infoCommand, _info(0));
    Bmc empty;
    EXPECT_EQ(counter.count(empty), 0);
}
