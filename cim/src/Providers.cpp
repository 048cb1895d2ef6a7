// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Provider/CIMIndicationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMProvider.h>

namespace Pegasus {

// Out of line, so that this library alone holds the type information of each base: the host finds
// out by a cast what a module's provider can do.
CIMProvider::CIMProvider() = default;
CIMProvider::~CIMProvider() = default;
CIMInstanceProvider::CIMInstanceProvider() = default;
CIMInstanceProvider::~CIMInstanceProvider() = default;
CIMIndicationProvider::CIMIndicationProvider() = default;
CIMIndicationProvider::~CIMIndicationProvider() = default;

}  // namespace Pegasus
