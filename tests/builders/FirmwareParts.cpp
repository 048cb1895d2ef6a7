// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FirmwareParts.h"

void addBios(SmBiosBuilder& firmware, const std::string& version, const std::string& date) {
    firmware.add(0, 0x18)
        .text(0x04, "Example Corp")
        .text(0x05, version)
        .word(0x06, 0xE000)
        .text(0x08, date)
        .byte(0x09, 0xFF)   // ROM of 16 MiB, in units of 64 KiB less one.
        .byte(0x0A, 0x80)   // Characteristics: PCI is supported.
        .byte(0x12, 0x01);  // ACPI is supported.
}

void addSystem(SmBiosBuilder& firmware, const FirmwareTexts& texts, const std::string& uuid) {
    firmware.add(1, 0x19)
        .text(0x04, texts.manufacturer)
        .text(0x05, texts.product)
        .text(0x06, texts.version)
        .text(0x07, texts.serial)
        .bytes(0x08, uuid)
        .byte(0x18, 6);  // Woken by the power switch.
}

void addBaseBoard(SmBiosBuilder& firmware, const FirmwareTexts& texts, unsigned kind) {
    firmware.add(2, 0x0F)
        .text(0x04, texts.manufacturer)
        .text(0x05, texts.product)
        .text(0x06, texts.version)
        .text(0x07, texts.serial)
        .byte(0x09, 0x08)  // Replaceable.
        .byte(0x0D, kind);
}

void addEnclosure(SmBiosBuilder& firmware, const FirmwareTexts& texts) {
    firmware.add(3, 0x15)
        .text(0x04, texts.manufacturer)
        .byte(0x05, 0x17)  // Rack mount chassis.
        .text(0x06, texts.version)
        .text(0x07, texts.serial)
        .byte(0x09, 3)  // Boot-up, power supply and thermal state: safe.
        .byte(0x0A, 3)
        .byte(0x0B, 3)
        .byte(0x0C, 3)   // Security: none.
        .byte(0x11, 2);  // Height in rack units.
}

void addProcessor(SmBiosBuilder& firmware, const std::string& socket, const FirmwareTexts& texts) {
    firmware.add(4, 0x2A)
        .text(0x04, socket)
        .byte(0x05, 3)     // A central processor
        .byte(0x06, 0x01)  // of another family.
        .text(0x07, texts.manufacturer)
        .text(0x10, texts.version)
        .word(0x14, 3600)
        .word(0x16, 2400)
        .byte(0x18, 0x41)  // Populated, enabled.
        .byte(0x19, 0x01)
        .word(0x1A, 0xFFFF)  // No cache structures.
        .word(0x1C, 0xFFFF)
        .word(0x1E, 0xFFFF)
        .text(0x20, texts.serial)
        .byte(0x23, 16)
        .byte(0x24, 16)
        .byte(0x25, 32)
        .word(0x26, 0x0004);  // 64-bit capable.
}

void addMemory(SmBiosBuilder& firmware, const std::string& place, const FirmwareTexts& texts,
               const std::string& partNumber) {
    firmware.add(17, 0x28)
        .word(0x04, 0xFFFE)  // No array and no error structure.
        .word(0x06, 0xFFFE)
        .word(0x08, 72)
        .word(0x0A, 64)
        .word(0x0C, 0x4000)  // MiB.
        .byte(0x0E, 9)       // DIMM.
        .text(0x10, place)
        .byte(0x12, 0x1A)    // DDR4
        .word(0x13, 0x2080)  // Registered, synchronous.
        .word(0x15, 3200)
        .text(0x17, texts.manufacturer)
        .text(0x18, texts.serial)
        .text(0x1A, partNumber)
        .word(0x20, 3200);
}

void addOldMemory(SmBiosBuilder& firmware, const std::string& place) {
    firmware.add(17, 0x15)
        .word(0x04, 0xFFFE)
        .word(0x06, 0xFFFE)
        .word(0x08, 72)
        .word(0x0A, 64)
        .word(0x0C, 256)
        .byte(0x0E, 9)
        .text(0x10, place)
        .byte(0x12, 0x0F);  // SDRAM.
}
