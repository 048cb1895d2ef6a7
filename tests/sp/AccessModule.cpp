// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LogItem.h"
#include "tavqz/cBusComm.h"
#include "tavqz/cDeviceLib.h"

// A module's own part, beside the access layer that it carries.

class ModuleBus final : public cBusComm {
public:
    int getServiceProcessorCount() override { return 1; }
};

// So that the module has the types as a provider does.
extern "C" TAVQZ_EXPORT cBusComm* moduleBus() {
    static ModuleBus bus;
    return &bus;
}

extern "C" TAVQZ_EXPORT void moduleLogs() {
    QZ::logItem("module", std::string("hears"));
}
