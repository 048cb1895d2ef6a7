// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// What ComputerSystemDetails takes from the machine's firmware (DMTF DSP0134, structure type 1).

#include <cstdint>

#include "ComputerSystemDetails.h"
#include "GuestProbe.h"
#include "ProductName.h"
#include "TableTypes.h"
#include "Uuid.h"

namespace QZ {
namespace {

constexpr unsigned char _systemInformationType = 1;

// Offsets in the structure; the first two hold string indexes.
constexpr unsigned _productNameOffset = 5;
constexpr unsigned _serialNumberOffset = 7;
constexpr unsigned _uuidOffset = 8;
constexpr unsigned _uuidEnd = 24;

std::string _text(const TableType1& table, unsigned offset) {
    const char* text = table.getString(table.getByte(offset));
    return text != nullptr ? text : "";
}

}  // namespace

const SmBios::Table* ComputerSystemDetails::_systemInformation() const {
    for (const SmBios::Table& table : _smBios.getTables()) {
        if (table.getType() == _systemInformationType) {
            return &table;
        }
    }
    return nullptr;
}

std::string ComputerSystemDetails::getSystemSerialNumber() const {
    const SmBios::Table* table = _systemInformation();
    return table != nullptr ? _text(TableType1(*table), _serialNumberOffset) : std::string();
}

std::string ComputerSystemDetails::getSystemModelNumber() const {
    const SmBios::Table* table = _systemInformation();
    if (table == nullptr) {
        return {};
    }
    const ProductName name(_text(TableType1(*table), _productNameOffset));
    return name.getArchitectedData().empty() ? name.getUnarchitectedData()
                                             : name.getArchitectedData();
}

std::string ComputerSystemDetails::getSystemModelName() const {
    return getProductName();
}

std::string ComputerSystemDetails::getProductName() const {
    const SmBios smBios;
    // Eight bits on purpose: of more than 255 structures only the remainder is looked at.
    const auto count = static_cast<std::uint8_t>(smBios.getTables().size());
    for (std::uint8_t i = 0; i < count; ++i) {
        const SmBios::Table& table = smBios.getTables()[i];
        if (table.getType() == _systemInformationType) {
            return ProductName(_text(TableType1(table), _productNameOffset)).getUnarchitectedData();
        }
    }
    return {};
}

std::string ComputerSystemDetails::getSystemUuid() const {
    std::vector<unsigned char> bytes;
    if (const SmBios::Table* table = _systemInformation()) {
        for (unsigned at = _uuidOffset; at < table->getLength() && at < _uuidEnd; ++at) {
            bytes.push_back(table->getByte(at));
        }
    }
    const std::string text = Uuid(bytes).toString();
    return text.empty() ? ReadGuestUuid() : text;
}

}  // namespace QZ
