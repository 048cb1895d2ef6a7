// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace QZ {

// One field-replaceable unit of the machine's IPMI inventory. A value; a text that the unit does
// not tell is empty.
class IpmiFru {
public:
    struct Values {
        std::string number;
        std::string identifyingNumber;
        std::string vendor;
        std::string name;
        std::string description;
        int entityId = 0;  // IPMI 2.0, table 43-13
    };

    explicit IpmiFru(Values values) : _values(std::move(values)) {}

    // The part number under which the unit is replaced.
    const std::string& getNumber() const { return _values.number; }
    // The model number.
    const std::string& getIdentifyingNumber() const { return _values.identifyingNumber; }
    const std::string& getVendor() const { return _values.vendor; }
    const std::string& getName() const { return _values.name; }
    const std::string& getDescription() const { return _values.description; }
    int getEntityId() const { return _values.entityId; }

private:
    Values _values;
};

// The machine's units. Empty where its inventory cannot be read. Any thread may call it.
std::vector<IpmiFru> GetIpmiFruInstances();

}  // namespace QZ
