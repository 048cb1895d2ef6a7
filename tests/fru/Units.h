// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMProperty.h>
#include <gmock/gmock.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "CimText.h"

// An instance of a class with these texts as properties, in this order; null for a null one.
inline Pegasus::CIMInstance unitOf(
    const char* className, std::initializer_list<std::pair<const char*, const char*>> properties) {
    using namespace Pegasus;
    CIMInstance unit{CIMName(className)};
    for (const auto& [name, text] : properties) {
        const CIMValue value =
            text == nullptr ? CIMValue(CIMTYPE_STRING, false) : CIMValue(String(text));
        unit.addProperty(CIMProperty(CIMName(name), value));
    }
    return unit;
}

inline Pegasus::CIMInstance fruOf(
    std::initializer_list<std::pair<const char*, const char*>> properties) {
    return unitOf("TAVIRA_FRU", properties);
}

// A unit's properties as "Name=text" in their order.
inline std::vector<std::string> propertiesOf(const Pegasus::CIMInstance& unit) {
    std::vector<std::string> texts;
    texts.reserve(unit.getPropertyCount());
    for (Pegasus::Uint32 i = 0; i < unit.getPropertyCount(); ++i) {
        const Pegasus::CIMConstProperty property = unit.getProperty(i);
        texts.push_back(QZ::make_string(property.getName().getString()) + "=" +
                        QZ::make_string(property.getValue().toString()));
    }
    return texts;
}

// The text of one of its properties, "-" where there is none.
inline std::string textOf(const Pegasus::CIMInstance& unit, const char* name) {
    const Pegasus::Uint32 index = unit.findProperty(name);
    return index == Pegasus::PEG_NOT_FOUND
               ? "-"
               : QZ::make_string(unit.getProperty(index).getValue().toString());
}

// What units say of one property, in their order.
inline std::vector<std::string> textsOf(const std::vector<Pegasus::CIMInstance>& units,
                                        const char* name) {
    std::vector<std::string> texts;
    texts.reserve(units.size());
    for (const Pegasus::CIMInstance& unit : units)
        texts.push_back(textOf(unit, name));
    return texts;
}
