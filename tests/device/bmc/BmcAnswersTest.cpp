// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "BmcAnswers.h"

#include <gtest/gtest.h>

#include "FirmwareParts.h"
#include "TestMachine.h"

using namespace QZ;

namespace {

const std::string _uuid("\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xAA\xBB\xCC\xDD\xEE\x0F", 16);

std::vector<SmBios::Table> _tables(const std::string& product, const std::string& serial,
                                   const std::string& uuid) {
    const TestMachine machine;
    SmBiosBuilder firmware(SmBiosBuilder::EntryPoint::Version3, 3, 5);
    addBios(firmware, "EX2U-2.14 with a very long name", "03/02/2025");
    addSystem(firmware, {"Example Corp", product, "04", serial}, uuid);
    firmware.addEnd().writeBelow(machine.folder().path());
    return SmBios().getTables();
}

template <std::size_t Size>
std::string _text(const char (&room)[Size]) {
    return std::string(room, Size - 1);
}

BmcWatchdog _watchdog(unsigned char use, bool isRunning = true) {
    BmcWatchdog watchdog;
    watchdog.use = use;
    watchdog.isRunning = isRunning;
    watchdog.initialTenths = 605;
    return watchdog;
}

std::vector<std::int32_t> _timers(const BmcWatchdog& watchdog) {
    WatchdogRecord record{};
    fillWatchdog(watchdog, record);
    return {record.postTimeout, record.loaderTimeout, record.osTimeout, record.powerTimeout};
}

}  // namespace

TEST(BmcAnswers, WriteTheFirmwaresVersionAsPeopleDo) {
    BmcDeviceId id;
    id.majorFirmware = 2;
    id.minorFirmware = 4;
    EXPECT_EQ(firmwareVersion(id), "2.04");
    EXPECT_EQ(firmwareBuild(id), "");
    id.auxiliaryFirmware = std::string("\x00\x1A\xFF\x07", 4);
    EXPECT_EQ(firmwareBuild(id), "001AFF07");
}

TEST(BmcAnswers, TakeTheMachineFromItsFirmware) {
    MachineLevelRecord record{};
    EXPECT_TRUE(
        fillMachineLevel(_tables("Server -[8840-25X]-", "99A0001", _uuid), std::nullopt, record));
    EXPECT_EQ(_text(record.uuid), "00112233445566778899AABBCCDDEE0F");
    EXPECT_EQ(_text(record.machineType), "8840");
    EXPECT_EQ(_text(record.machineModel), "25X");
    EXPECT_EQ(_text(record.serialNumber), "99A0001");
}

TEST(BmcAnswers, PadAndCutTextsToTheirRoom) {
    MachineLevelRecord record{};
    const std::pair<const char*, const char*> products[] = {
        {"Server", "       "},   {"-[88]-", "88     "},
        {"-[8840]-", "8840   "}, {"]- Server -[884025XYZ]-", "884025X"},
        {"-[8840", "       "},   {"-[]-", "       "}};
    for (const auto& [product, expected] : products) {
        EXPECT_TRUE(fillMachineLevel(_tables(product, "99A", _uuid), std::nullopt, record));
        EXPECT_EQ(_text(record.machineType) + _text(record.machineModel), expected) << product;
    }
    EXPECT_EQ(_text(record.serialNumber), "99A    ");
    EXPECT_TRUE(fillMachineLevel(_tables("Server", "99A0001234", _uuid), std::nullopt, record));
    EXPECT_EQ(_text(record.serialNumber), "99A0001");
}

TEST(BmcAnswers, TakeTheControllersIdentifierWhereTheFirmwareHasNone) {
    MachineLevelRecord record{};
    const std::string none(16, '\xFF');
    EXPECT_TRUE(fillMachineLevel(_tables("", "", none), _uuid, record));
    EXPECT_EQ(_text(record.uuid), "00112233445566778899AABBCCDDEE0F");
    EXPECT_TRUE(fillMachineLevel({}, _uuid, record));
    EXPECT_EQ(_text(record.uuid), "00112233445566778899AABBCCDDEE0F");
    EXPECT_TRUE(fillMachineLevel(_tables("", "", none), std::nullopt, record));
    EXPECT_EQ(_text(record.uuid), std::string(32, ' '));
    EXPECT_FALSE(fillMachineLevel({}, std::nullopt, record));
}

TEST(BmcAnswers, TakePostAndBiosFromTheFirmware) {
    PostBiosRecord record{};
    EXPECT_TRUE(fillPostBios(_tables("", "", _uuid), record));
    EXPECT_EQ(std::string(record.buildLevel, sizeof record.buildLevel),
              "EX2U-2.14 with a very long");
    EXPECT_EQ(std::string(record.buildDate, sizeof record.buildDate), "03/02/2025");
    EXPECT_FALSE(fillPostBios({}, record));

    const TestMachine machine;
    SmBiosBuilder firmware(SmBiosBuilder::EntryPoint::Version3, 3, 5);
    firmware.add(0, 0x18).byte(0x14, 2).byte(0x15, 14);
    firmware.addEnd().writeBelow(machine.folder().path());
    EXPECT_TRUE(fillPostBios(SmBios().getTables(), record));
    EXPECT_EQ(record.version, 214);
    EXPECT_STREQ(record.buildLevel, "");
    SmBiosBuilder silent(SmBiosBuilder::EntryPoint::Version3, 3, 5);
    silent.add(0, 0x18).byte(0x14, 0xFF).byte(0x15, 0xFF);
    silent.addEnd().writeBelow(machine.folder().path());
    EXPECT_TRUE(fillPostBios(SmBios().getTables(), record));
    EXPECT_EQ(record.version, 0);
}

TEST(BmcAnswers, TellWhetherTheMachineIsOn) {
    SystemStateRecord record{};
    BmcChassisStatus chassis;
    chassis.isOn = true;
    EXPECT_TRUE(fillSystemState(chassis, 125, 7, record));
    EXPECT_EQ(record.powerOnHours, 2U);
    EXPECT_EQ(record.restartCount, 7);
    EXPECT_EQ(record.statusInfo, 3);
    EXPECT_EQ(record.currentState, 5U);
    chassis.isOn = false;
    EXPECT_TRUE(fillSystemState(chassis, std::nullopt, 0, record));
    EXPECT_EQ(record.powerOnHours, 0U);
    EXPECT_EQ(record.statusInfo, 4);
    EXPECT_EQ(record.currentState, 0U);
    EXPECT_TRUE(fillSystemState(std::nullopt, 60, 0, record));
    EXPECT_EQ(record.powerOnHours, 1U);
    EXPECT_EQ(record.statusInfo, 2);
    EXPECT_FALSE(fillSystemState(std::nullopt, std::nullopt, 9, record));
}

TEST(BmcAnswers, TakeTheWatchdogForThatOfItsUse) {
    using Timers = std::vector<std::int32_t>;
    EXPECT_EQ(_timers(_watchdog(BmcWatchdog::Frb2)), (Timers{60, -1, -1, -1}));
    EXPECT_EQ(_timers(_watchdog(BmcWatchdog::Post)), (Timers{60, -1, -1, -1}));
    EXPECT_EQ(_timers(_watchdog(BmcWatchdog::OsLoad)), (Timers{-1, 60, -1, -1}));
    EXPECT_EQ(_timers(_watchdog(BmcWatchdog::System)), (Timers{-1, -1, 60, -1}));
    EXPECT_EQ(_timers(_watchdog(BmcWatchdog::Oem)), (Timers{-1, -1, -1, 60}));
    for (const int use : {0, 6, 7}) {
        EXPECT_EQ(_timers(_watchdog(static_cast<unsigned char>(use))), (Timers{-1, -1, -1, -1}))
            << use;
    }
    EXPECT_EQ(_timers(_watchdog(BmcWatchdog::System, false)), (Timers{-1, -1, -1, -1}));
}
