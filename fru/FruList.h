// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace QZ {

// The units of one answer, in order. It knows what its units of a FRU number are called and who
// told of them, so that another one is judged in a time that does not grow with the list.
class FruList {
public:
    // Without a question; a unit that lacks a property counts as having an empty one.
    void append(const Pegasus::CIMInstance& unit);

    const std::vector<Pegasus::CIMInstance>& getUnits() const { return _units; }

private:
    friend bool _insert(FruList& list, const Pegasus::CIMInstance& candidate);

    // Name and source of the units of one FRU number, as their first one has them.
    struct Number {
        std::u16string name;
        std::u16string source;
        bool isUniform = true;  // all the others have them, too
    };

    std::vector<Pegasus::CIMInstance> _units;
    std::unordered_map<std::u16string, Number> _numbers;
};

// Appends the candidate, and says so, unless a unit of the list has the same FRU number and another
// name or source: that one hides it. A candidate that equals a unit in all three goes in again. One
// that lacks one of the three does not.
bool _insert(FruList& list, const Pegasus::CIMInstance& candidate);

}  // namespace QZ
