// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// What the dispatch does for a service-processor class.

#include <memory>

#include "AssetIDProvider.h"
#include "LogItem.h"
#include "tavqz/cDeviceLib.h"

namespace QZ {

namespace {

constexpr const char* _component = "AssetIDProvider";

// The kind of a controller that speaks IPMI.
constexpr int _ipmiKind = 101;

}  // namespace

void AssetIDProvider::deliverSpInstances(const SpBranch& branch, const Pegasus::String& className,
                                         Pegasus::InstanceResponseHandler& handler) {
    logItem(_component, branch.asked);
    if (!foundSP()) {
        logItem(_component, "NO SP FOUND!!");
    }
    for (int spIndex = 0; foundSP() && spIndex < _spCount; ++spIndex) {
        SpBuilder builder = branch.builder;
        int kind = 0;
        if (branch.ipmiBuilder != nullptr && _spLibrary->getServiceProcessorType(kind) == 0 &&
            kind == _ipmiKind) {
            builder = branch.ipmiBuilder;
        }
        const std::unique_ptr<SpInstances> instances((this->*builder)(spIndex, className));
        logItem(_component, builder == branch.builder ? "looping thru vector instances"
                                                      : "looping thru IPMI instances");
        for (const Pegasus::CIMInstance& instance : *instances) {
            handler.deliver(instance);
        }
    }
    logItem(_component, "done with vpd instances");
}

}  // namespace QZ
