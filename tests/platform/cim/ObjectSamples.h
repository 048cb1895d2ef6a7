// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>

#include <string>
#include <vector>

// Text of these code units, whatever they are.
inline Pegasus::String codeUnits(const std::vector<Pegasus::Uint16>& units) {
    Pegasus::String text;
    for (const Pegasus::Uint16 unit : units)
        text.append(Pegasus::Char16(unit));
    return text;
}

// An instance as clients create them: the three keys are its path's, too.
inline Pegasus::CIMInstance fruInstance(const Pegasus::String& number,
                                        const Pegasus::String& name = "Fan",
                                        const Pegasus::String& vendor = "Acme") {
    using namespace Pegasus;
    CIMInstance instance("TAVIRA_FRU");
    Array<CIMKeyBinding> keys;
    const String values[] = {number, "7", vendor};
    const char* const names[] = {"FRUNumber", "IdentifyingNumber", "Vendor"};
    for (int i = 0; i < 3; ++i) {
        instance.addProperty(CIMProperty(CIMName(names[i]), CIMValue(values[i])));
        keys.append(CIMKeyBinding(CIMName(names[i]), values[i], CIMKeyBinding::STRING));
    }
    instance.addProperty(CIMProperty(CIMName("Name"), CIMValue(name)));
    instance.setPath(CIMObjectPath("rack-1", "root/tavqz", "TAVIRA_FRU", keys));
    return instance;
}
