// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include <optional>

namespace QZ {

// What instances of "TAVIRA_FRU" have in common, wherever they come from.

// The class, and where it lives.
extern const Pegasus::String _fruClassName;
extern const Pegasus::String _fruNamespace;

// The string form of the property, if there is one; that of a null is empty.
std::optional<Pegasus::String> _propertyText(const Pegasus::CIMConstInstance& instance,
                                             const Pegasus::CIMName& name);

// The three keys "FRUNumber", "IdentifyingNumber" and "Vendor" out of the properties of these
// names; a missing one gives an empty key.
Pegasus::Array<Pegasus::CIMKeyBinding> _fruKeys(const Pegasus::CIMConstInstance& instance);

// The path on this machine of a unit with such keys.
Pegasus::CIMObjectPath _fruPath(const Pegasus::CIMConstInstance& instance);

}  // namespace QZ
