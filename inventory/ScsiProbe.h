// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace QZ {

struct SCSIInfo {
    std::string serialNumber;
    std::string manufacturer;
    std::string model;
};

// Each asks the disk of that index, counted from 0 for "sda": 1, or 0 with the outputs as they
// were. Texts are padded with blanks as the disk sends them.
int getSCSIManufacturerModel(int index, std::string& manufacturer, std::string& model);
int getSCSISerialNumber(int index, std::string& serial);

// Appends a record for each of the disks "sda" to "sdz" that answers for its serial number, be it
// with an empty one; a disk that does not is left out.
void getSCSIInfo(std::vector<SCSIInfo>& disks);

// The serial number in a vital product data page 80h (SPC-4, 7.8.18), at most 79 characters of
// it. False, with the output as it was, where a character is not ASCII. Shorter pages are taken
// as if zeros followed.
bool decodeSerialNumberPage(const unsigned char* page, std::size_t size, std::string& serial);

}  // namespace QZ
