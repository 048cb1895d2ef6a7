// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RecordInstance.h"

namespace QZ {

using namespace Pegasus;

CIMObjectPath makeInstancePath(const CIMObjectPath& asked, const CIMInstance& instance,
                               const std::vector<CIMName>& keys) {
    Array<CIMKeyBinding> bindings;
    for (const CIMName& name : keys) {
        bindings.append(
            CIMKeyBinding(name, instance.getProperty(instance.findProperty(name)).getValue()));
    }
    CIMObjectPath path = asked;
    path.setKeyBindings(bindings);
    return path;
}

void requireDay(const CIMInstance& modified, const char* name) {
    const Uint32 index = modified.findProperty(CIMName(name));
    if (index == PEG_NOT_FOUND) {
        return;
    }
    const CIMValue value = modified.getProperty(index).getValue();
    if (value.getType() != CIMTYPE_DATETIME || value.isArray() || value.isNull()) {
        return;
    }
    CIMDateTime date;
    value.get(date);
    if (!date.isInterval() && !make_DateTime(date).isSet()) {
        throw CIMException(CIM_ERR_INVALID_PARAMETER,
                           String(name) + ": " + date.toString() +
                               " is no day of the calendar; send a whole date, or an interval to "
                               "clear it");
    }
}

}  // namespace QZ
