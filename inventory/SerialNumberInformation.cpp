// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SerialNumberInformation.h"

#include <cstddef>

namespace QZ {
namespace {

// Of no part.
constexpr int noIndex = -1;

}  // namespace

// Where a text's string number stands in the formatted area, and where the text goes.
struct SerialNumberInformation::Field {
    std::size_t offset;
    std::string& out;
};

SerialNumberInformation::SerialNumberInformation() : _tables(_smBios.getTables()) {}

bool SerialNumberInformation::getSystem(std::string& serial, std::string& manufacturer,
                                        std::string& product, std::string& version) const {
    return _read(1, 0, {{7, serial}, {4, manufacturer}, {5, product}, {6, version}});
}

bool SerialNumberInformation::getBaseBoard(int index, std::string& serial,
                                           std::string& manufacturer, std::string& product,
                                           std::string& version) const {
    return _read(2, index, {{7, serial}, {4, manufacturer}, {5, product}, {6, version}});
}

bool SerialNumberInformation::getSystemEnclosure(int index, std::string& serial,
                                                 std::string& manufacturer,
                                                 std::string& version) const {
    return _read(3, index, {{7, serial}, {4, manufacturer}, {6, version}});
}

bool SerialNumberInformation::getMemory(int index, std::string& serial,
                                        std::string& manufacturer) const {
    const unsigned major = _smBios.getMajorVersion();
    const bool hasFields = major > 2 || (major == 2 && _smBios.getMinorVersion() >= 3);
    return _read(17, hasFields ? index : noIndex, {{0x18, serial}, {0x17, manufacturer}});
}

bool SerialNumberInformation::getPortableBattery(int, std::string& serial,
                                                 std::string& manufacturer,
                                                 std::string& product) const {
    serial.clear();
    manufacturer.clear();
    product.clear();
    return false;
}

bool SerialNumberInformation::_read(unsigned char type, int index,
                                    std::initializer_list<Field> fields) const {
    for (const Field& field : fields) {
        field.out.clear();
    }
    int count = 0;
    for (const SmBios::Table& table : _tables) {
        if (table.getType() != type || count++ != index) {
            continue;
        }
        for (const Field& field : fields) {
            if (const char* text = table.getString(table.getByte(field.offset))) {
                field.out = text;
            }
        }
        return true;
    }
    return false;
}

}  // namespace QZ
