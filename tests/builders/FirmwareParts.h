// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "SmBiosBuilder.h"

// The structures that test machines are made of, with the fields that DSP0134 gives them in the
// version that the formatted length belongs to.

struct FirmwareTexts {
    std::string manufacturer;
    std::string product;
    std::string version;
    std::string serial;
};

void addBios(SmBiosBuilder& firmware, const std::string& version, const std::string& date);

// uuid: the sixteen bytes as they stand in the structure.
void addSystem(SmBiosBuilder& firmware, const FirmwareTexts& texts, const std::string& uuid);

// kind: one of the board types of the standard's table.
constexpr unsigned daughterBoard = 0x09;
constexpr unsigned motherboard = 0x0A;
void addBaseBoard(SmBiosBuilder& firmware, const FirmwareTexts& texts, unsigned kind = motherboard);

// A rack-mount enclosure of two units; it has no product.
void addEnclosure(SmBiosBuilder& firmware, const FirmwareTexts& texts);

void addProcessor(SmBiosBuilder& firmware, const std::string& socket, const FirmwareTexts& texts);

// A memory device of 16 GiB has no product and no version, but a place and a part number.
void addMemory(SmBiosBuilder& firmware, const std::string& place, const FirmwareTexts& texts,
               const std::string& partNumber);

// As before SMBIOS 2.3: place and size alone.
void addOldMemory(SmBiosBuilder& firmware, const std::string& place);
