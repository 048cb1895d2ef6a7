// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "SmBios.h"

namespace QZ {

// Maker, product, version and serial number of the machine's parts, as its SMBIOS tables stood
// when this object was made.
//
// Every query clears its outputs, then answers whether the part is there; the index counts the
// parts of a kind from 0. A text that the firmware leaves out stays empty, any other is passed on
// as it is.
class SerialNumberInformation {
public:
    SerialNumberInformation();

    bool getSystem(std::string& serial, std::string& manufacturer, std::string& product,
                   std::string& version) const;
    bool getBaseBoard(int index, std::string& serial, std::string& manufacturer,
                      std::string& product, std::string& version) const;
    bool getSystemEnclosure(int index, std::string& serial, std::string& manufacturer,
                            std::string& version) const;

    // False for every index below SMBIOS 2.3, whose memory devices have neither field.
    bool getMemory(int index, std::string& serial, std::string& manufacturer) const;

    // No battery is ever reported.
    bool getPortableBattery(int index, std::string& serial, std::string& manufacturer,
                            std::string& product) const;

private:
    struct Field;

    bool _read(unsigned char type, int index, std::initializer_list<Field> fields) const;

    SmBios _smBios;
    std::vector<SmBios::Table> _tables;
};

}  // namespace QZ
