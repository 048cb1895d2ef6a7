// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruUnits.h"

#include <Pegasus/Common/Exception.h>

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
