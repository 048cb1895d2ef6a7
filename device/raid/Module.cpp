// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The entry of the module: the server asks it for each provider of the registration by name.

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMProvider.h>

#include "CimLibraryCheck.h"
#include "RaidProvider.h"

extern "C" PEGASUS_EXPORT Pegasus::CIMProvider* PegasusCreateProvider(
    const Pegasus::String& providerName) {
    if (QZ::refusesOtherCimLibrary("libTavqzRaidProvider.so")) {
        return nullptr;
    }
    return Pegasus::String::equalNoCase(providerName, "RaidProvider") ? new QZ::RaidProvider
                                                                      : nullptr;
}
