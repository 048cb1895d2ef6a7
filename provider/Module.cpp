// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The entry of the module: the server asks it for each provider of the registration by name.

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMProvider.h>
#include <tavqz/AccessHelpers.h>

#include "AssetIDProvider.h"
#include "CimLibraryCheck.h"
#include "FruProvider.h"
#include "LogItem.h"

extern "C" PEGASUS_EXPORT Pegasus::CIMProvider* PegasusCreateProvider(
    const Pegasus::String& providerName) {
    if (QZ::refusesOtherCimLibrary("libAssetIDProvider.so")) {
        return nullptr;
    }
    char logName[] = "AssetIDProvider.log";
    initLog(logName);
    if (Pegasus::String::equalNoCase(providerName, "AssetIDProvider")) {
        QZ::logItem("AssetIDProviderMain", "about to load AssetIDProvider");
        return new QZ::AssetIDProvider;
    }
    if (Pegasus::String::equalNoCase(providerName, "FruProvider")) {
        QZ::logItem("AssetIDProviderMain", "about to load FruProvider");
        return new QZ::FruProvider;
    }
    return nullptr;
}
