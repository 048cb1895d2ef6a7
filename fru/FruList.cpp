// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruList.h"

#include "FruUnits.h"
#include "LogItem.h"

namespace QZ {

using namespace Pegasus;

namespace {

const char* const _component = "FRUProvider::_insert";

// For a hash and a comparison that tell any two texts apart.
std::u16string _units16(const String& text) {
    std::u16string units(text.size(), u'\0');
    for (Uint32 i = 0; i < text.size(); ++i)
        units[i] = Uint16(text[i]);
    return units;
}

std::u16string _textOf(const CIMInstance& unit, const char* name) {
    return _units16(_propertyText(unit, name).value_or(String()));
}

}  // namespace

void FruList::append(const CIMInstance& unit) {
    Number unitsOwn = {_textOf(unit, "Name"), _textOf(unit, "ElementName")};
    const auto [found, isNew] = _numbers.try_emplace(_textOf(unit, "FRUNumber"), unitsOwn);
    Number& number = found->second;
    if (!isNew && (number.name != unitsOwn.name || number.source != unitsOwn.source))
        number.isUniform = false;
    _units.push_back(unit);
}

bool _insert(FruList& list, const CIMInstance& candidate) {
    const auto name = _propertyText(candidate, "Name");
    const auto fruNumber = _propertyText(candidate, "FRUNumber");
    const auto source = _propertyText(candidate, "ElementName");
    if (!name || !fruNumber || !source)
        return false;
    const auto found = list._numbers.find(_units16(*fruNumber));
    if (found != list._numbers.end()) {
        const FruList::Number& number = found->second;
        if (!number.isUniform || number.name != _units16(*name) ||
            number.source != _units16(*source)) {
            logItem(_component, "returning false");
            return false;
        }
    }
    list.append(candidate);
    logItem(_component, "returning true");
    return true;
}

}  // namespace QZ
