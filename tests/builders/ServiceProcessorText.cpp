// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServiceProcessorText.h"

#include <iterator>

namespace {

// Vital product data of the kinds from 1, as many of each as the machine has.
constexpr int _components[] = {1, 1, 8, 1, 1, 1, 4, 1, 2, 1, 1, 1, 1, 2, 1, 1, 1};
constexpr const char* _firmware[] = {"application", "boot ROM", "remote graphics", "driver"};
constexpr int _firstFirmware = 18;

std::string _vpd(int kind, int instance, const std::string& field, const std::string& value) {
    return "vpd." + std::to_string(kind) + "." + std::to_string(instance) + "." + field + " = " +
           value + "\n";
}

std::string _component(int kind, int instance) {
    const std::string number = std::to_string(kind * 100 + instance);
    return _vpd(kind, instance, "EEPROM_FRU_NUMBER", "24P0" + number) +
           _vpd(kind, instance, "EEPROM_MANUFACTURER_ID", instance % 2 == 1 ? "EXMP" : "SMPL") +
           _vpd(kind, instance, "EEPROM_PART_NUMBER", "32R1" + number) +
           _vpd(kind, instance, "EEPROM_SERIAL_NUMBER", "J1EX" + number);
}

std::string _firmwareOf(int kind, const std::string& name) {
    const std::string number = std::to_string(kind);
    return _vpd(kind, 1, "FIRMWARE_IMAGE_FILENAME", "ex" + number + ".pkt") +
           _vpd(kind, 1, "FIRMWARE_IMAGE_BUILD_ID", "EXE" + number + "A") +
           _vpd(kind, 1, "FIRMWARE_IMAGE_VERSION", "1." + number + " (" + name + ")") +
           _vpd(kind, 1, "FIRMWARE_IMAGE_TIMESTAMP", "5 3 2024");
}

}  // namespace

std::string wholeServiceProcessor() {
    std::string text =
        "# A service processor of the Dogwood family.\n"
        "type = 8\n"
        "machine.uuid = 76543210BA98FEDC8001020304050611\n"
        "machine.type = EX21\n"
        "machine.model = 7A1\n"
        "machine.serial = S100417\n"
        "postbios.level = EX2U-2.14\n"
        "postbios.date = 03/02/2025\n"
        "postbios.version = 214\n"
        "state.hours = 14215\n"
        "state.restarts = 37\n"
        "state.status = 1\n"
        "state.current = 5\n"
        "watchdog.post = 300\n"
        "watchdog.loader = 240\n"
        "watchdog.os = 60\n"
        "watchdog.power = 0\n";
    for (std::size_t i = 0; i < std::size(_components); ++i) {
        for (int instance = 1; instance <= _components[i]; ++instance) {
            text += _component(static_cast<int>(i) + 1, instance);
        }
    }
    for (std::size_t i = 0; i < std::size(_firmware); ++i) {
        text += _firmwareOf(_firstFirmware + static_cast<int>(i), _firmware[i]);
    }
    return text;
}

std::string failingServiceProcessors() {
    return "count = 6\n"
           "fail.type = 5\n"
           "sp0.fail.vpd = 5\n"
           "sp1.fail.state = 1\n"
           "sp2.fail.machine = -1\n"
           "sp3.fail.watchdog = 2147483647\n"
           "sp4.fail.postbios = 2\n" +
           _component(1, 1) +
           // A third that a second one does not stand before.
           _component(3, 1) + _component(3, 3) +
           // Its first one is missing.
           _component(9, 2) +
           // Read, but not valid.
           _component(7, 1) + _vpd(7, 1, "invalid", "yes") + _firmwareOf(18, _firmware[0]) +
           _vpd(18, 1, "invalid", "yes") +
           // Without a date, and with one that is not known.
           _vpd(20, 1, "FIRMWARE_IMAGE_BUILD_ID", "EXE20A") +
           _vpd(21, 1, "FIRMWARE_IMAGE_TIMESTAMP", "-1 5 2004") +
           "watchdog.os = 60\n"
           "state.current = 8\n"
           "machine.uuid = SHORT\n";
}

std::string hostileServiceProcessor() {
    return "type = -2147483648\n"
           "machine.uuid = \\x00\\x01<script>\\x1B[31m\\xFF\\xFE ]]>&\\r\\n\\x7F\n"
           "machine.type = \\s\\t\\x00\"A\n"
           "machine.model = \xED\xA0\x80\n"
           "machine.serial = \xE2\x80\xAE%s%n\n"
           "postbios.level = <!-- ]]> -->\xC3\xA9\\x1B]0;\\x07\\xC3\n"
           "postbios.date = 99/99/9999\n"
           "postbios.version = -2147483648\n"
           "state.hours = 9223372036854775807\n"
           "state.restarts = 65535\n"
           "state.status = 65535\n"
           "state.current = 4294967295\n"
           "watchdog.post = -2147483648\n"
           "watchdog.loader = 2147483647\n"
           "watchdog.os = -2\n"
           "watchdog.power = -1\n" +
           _vpd(1, 1, "EEPROM_FRU_NUMBER", "\\x00\\x01\\x02\\t\\r\\n\\x1B[31m\\x7F EX\"1\"<&>") +
           _vpd(1, 1, "EEPROM_MANUFACTURER_ID", "\xFF\xFE\xC3\x28\xC0\xAF") +
           _vpd(1, 1, "EEPROM_PART_NUMBER", std::string(4000, 'A')) +
           _vpd(18, 1, "FIRMWARE_IMAGE_FILENAME", "../../etc/\\x00passwd") +
           _vpd(18, 1, "FIRMWARE_IMAGE_VERSION", "\\s\\s%s%n\xF5\x80\x80\x80\\s") +
           _vpd(18, 1, "FIRMWARE_IMAGE_BUILD_ID", ",;=\\t\"=1+1") +
           _vpd(18, 1, "FIRMWARE_IMAGE_TIMESTAMP", "-2147483648 2147483647 -2147483648");
}
