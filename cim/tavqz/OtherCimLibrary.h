// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Provider/Linkage.h>

#include <string>

namespace QZ {

// The file of OpenPegasus's own library, if this process has loaded it; empty if not. Its names are
// those of this library, and the loader gives the same functions to both: a module that was built
// for this library must then touch no CIM object. Any thread may call.
PEGASUS_PROVIDER_LINKAGE std::string otherCimLibrary();

// As otherCimLibrary(), and where there is one, tells the administrator, on standard error and in
// the system's log, in one line that names the module. True where the module has to refuse.
PEGASUS_PROVIDER_LINKAGE bool refusesOtherCimLibrary(const char* module);

}  // namespace QZ
