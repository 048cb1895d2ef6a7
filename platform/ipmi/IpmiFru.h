// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace QZ {

// One field-replaceable unit of the machine's IPMI inventory. A value; a text that the unit does
// not tell is empty. Texts are as the unit has them, blanks included, but for fields of nothing
// else.
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

    // Each text is the product area's, else the board's, else the chassis's: a blank field is none.
    // Part number and model are one field of a product ("Part/Model Number", Platform Management
    // FRU Information Storage Definition 1.0, 12), and so both are it.
    const std::string& getNumber() const { return _values.number; }
    const std::string& getIdentifyingNumber() const { return _values.identifyingNumber; }
    // A chassis has neither of these.
    const std::string& getVendor() const { return _values.vendor; }
    const std::string& getName() const { return _values.name; }
    // What the controller calls the unit; its name where it calls it nothing, and the other way
    // round.
    const std::string& getDescription() const { return _values.description; }
    int getEntityId() const { return _values.entityId; }

private:
    Values _values;
};

// The machine's units, in the order of Bmc::getFrus. Of one whose data are damaged, what could be
// read; one that says nothing is left out. Empty where there is no controller or it does not
// answer, which takes five seconds at most. Any thread may call it.
std::vector<IpmiFru> GetIpmiFruInstances();

}  // namespace QZ
