// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruUnits.h"

#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <iterator>

#include "CimText.h"
#include "System.h"

namespace QZ {

using namespace Pegasus;

const String _fruClassName("TAVIRA_FRU");
const String _fruNamespace("root/tavqz");

std::optional<String> _propertyText(const CIMConstInstance& instance, const CIMName& name) {
    const Uint32 index = instance.findProperty(name);
    if (index == PEG_NOT_FOUND)
        return std::nullopt;
    return instance.getProperty(index).getValue().toString();
}

Array<CIMKeyBinding> _fruKeys(const CIMConstInstance& instance) {
    Array<CIMKeyBinding> keys;
    for (const char* const name : {"FRUNumber", "IdentifyingNumber", "Vendor"}) {
        keys.append(CIMKeyBinding(CIMName(name), _propertyText(instance, name).value_or(String()),
                                  CIMKeyBinding::STRING));
    }
    return keys;
}

void _requireProperties(const CIMConstInstance& instance) {
    constexpr const char* known[] = {"FRUNumber",   "IdentifyingNumber", "Vendor",     "Name",
                                     "Description", "ElementName",       "InstanceID", "Caption"};
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        const CIMConstProperty property = instance.getProperty(i);
        const CIMName& name = property.getName();
        const bool isKnown = std::any_of(std::begin(known), std::end(known),
                                         [&](const char* own) { return name == CIMName(own); });
        if (!isKnown)
            throw CIMException(CIM_ERR_INVALID_PARAMETER,
                               _fruClassName + String(" has no property ") + name.getString());
        if (property.getType() != CIMTYPE_STRING || property.isArray())
            throw CIMException(
                CIM_ERR_INVALID_PARAMETER,
                _fruClassName + String(".") + name.getString() + String(" is a string"));
    }
}

CIMObjectPath _fruPath(const CIMConstInstance& instance) {
    CIMObjectPath path(String(), CIMNamespaceName(_fruNamespace), CIMName(_fruClassName),
                       _fruKeys(instance));
    try {
        path.setHost(make_String(System::getName()));
    } catch (const MalformedObjectNameException&) {
        // A machine may have a name that no path can have; its units are found all the same.
    }
    return path;
}

}  // namespace QZ
