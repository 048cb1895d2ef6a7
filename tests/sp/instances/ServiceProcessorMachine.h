// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "AssetIDProvider.h"
#include "BuildPaths.h"
#include "Handlers.h"
#include "ScopedWorkingFolder.h"
#include "TestMachine.h"

// A machine with the service processors of a description, and a provider that was made there.
class ServiceProcessorMachine {
public:
    explicit ServiceProcessorMachine(const std::string& description) {
        describe(description);
        provider = std::make_unique<QZ::AssetIDProvider>();
    }

    void describe(const std::string& description) const {
        _machine.folder().write("etc/tavqz/service-processor.txt", description);
    }

    std::vector<Pegasus::CIMInstance> enumerate(const std::string& className) const {
        Pegasus::CIMObjectPath path{Pegasus::String(className.c_str())};
        path.setNameSpace(Pegasus::CIMNamespaceName("root/tavqz"));
        Instances handler;
        provider->enumerateInstances(Pegasus::OperationContext(), path, false, false,
                                     Pegasus::CIMPropertyList(), handler);
        return handler.all;
    }

private:
    TestMachine _machine;
    ScopedWorkingFolder _work{TAVQZ_BINARY_DIR "/lib/simulated/lib"};

public:
    std::unique_ptr<QZ::AssetIDProvider> provider;
};

inline constexpr const char* serviceProcessorClasses[] = {
    "TAVIRA_VigilComponentVPD", "TAVIRA_VigilMachineLevelVPD", "TAVIRA_VigilManagementProcessorVPD",
    "TAVIRA_VigilPostBiosVPD",  "TAVIRA_VigilPresent",         "TAVIRA_VigilWatchdog",
    "TAVIRA_VigilSystemState"};
