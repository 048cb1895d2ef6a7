// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The dispatch: the one place where a class that a client asks for becomes instances. Getting one
// instance and listing names ask it and choose from what it delivers.

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include "AssetIDProvider.h"
#include "Boundary.h"
#include "ClassNames.h"
#include "Error.h"
#include "Locale.h"
#include "LogItem.h"
#include "RecordInstance.h"
#include "RequestLanguage.h"
#include "SerialNumberInstances.h"
#include "SimpleInstanceResponseHandler.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr const char* _component = "AssetIDProvider";

// Delivers the instance of a record class. Saving the record back may fail, on a disk that is
// full or read-only, and the client has its answer all the same.
template <class Record, const RecordClass<Record>& recordClass>
void _deliverRecord(AssetIDProvider&, const CIMObjectPath& classPath,
                    InstanceResponseHandler& handler) {
    static const InstanceBuilder<Record> builder(recordClass);
    bool delivered = false;
    try {
        const Record record;
        handler.deliver(builder.build(record, classPath));
        delivered = true;
    } catch (const Error& failure) {
        if (!delivered) {
            throw;
        }
        logItem(_component, failure.what());
    }
}

void _deliverSerialNumbers(AssetIDProvider&, const CIMObjectPath& classPath,
                           InstanceResponseHandler& handler) {
    deliverSerialNumbers(classPath, handler);
}

constexpr AssetIDProvider::SpBranch _componentVpd = {
    "user asked for component vpd instances", &AssetIDProvider::getVigilComponentVPDInstances,
    &AssetIDProvider::getIPMIVigilComponentVPDInstances};
constexpr AssetIDProvider::SpBranch _machineLevelVpd = {
    "user asked for chassis (machine level) vpd instances",
    &AssetIDProvider::getVigilMachineLevelVPDInstances, nullptr};
constexpr AssetIDProvider::SpBranch _managementProcessorVpd = {
    "user asked for management processor vpd instances",
    &AssetIDProvider::getVigilManagementProcessorVPDInstances, nullptr};
constexpr AssetIDProvider::SpBranch _postBiosVpd = {"user asked for post/bios vpd instances",
                                                    &AssetIDProvider::getVigilPostBiosVPDInstances,
                                                    nullptr};
constexpr AssetIDProvider::SpBranch _present = {
    "user asked for vigil present instances", &AssetIDProvider::getVigilPresentInstances, nullptr};
constexpr AssetIDProvider::SpBranch _watchdog = {
    "user asked for watchdog instances", &AssetIDProvider::getVigilWatchdogInstances, nullptr};
constexpr AssetIDProvider::SpBranch _systemState = {"user asked for system state instances",
                                                    &AssetIDProvider::getVigilSystemStateInstances,
                                                    nullptr};

template <const AssetIDProvider::SpBranch& branch>
void _deliverSp(AssetIDProvider& provider, const CIMObjectPath& classPath,
                InstanceResponseHandler& handler) {
    provider.deliverSpInstances(branch, classPath.getClassName().getString(), handler);
}

struct DispatchRow {
    const String& className;
    void (*deliver)(AssetIDProvider& provider, const CIMObjectPath& classPath,
                    InstanceResponseHandler& handler);
};

const DispatchRow _dispatch[] = {
    {ClassName::VigilComponentVPD, _deliverSp<_componentVpd>},
    {ClassName::VigilMachineLevelVPD, _deliverSp<_machineLevelVpd>},
    {ClassName::VigilManagementProcessorVPD, _deliverSp<_managementProcessorVpd>},
    {ClassName::VigilPostBiosVPD, _deliverSp<_postBiosVpd>},
    {ClassName::VigilPresent, _deliverSp<_present>},
    {ClassName::VigilWatchdog, _deliverSp<_watchdog>},
    {ClassName::VigilSystemState, _deliverSp<_systemState>},
    {ClassName::Lease, _deliverRecord<Lease, leaseClass>},
    {ClassName::Warranty, _deliverRecord<Warranty, warrantyClass>},
    {ClassName::ComputerSystemDetails,
     _deliverRecord<ComputerSystemDetails, computerSystemDetailsClass>},
    {ClassName::SerialNumberInformation, _deliverSerialNumbers},
};

const DispatchRow& _findRow(const String& className) {
    for (const DispatchRow& row : _dispatch) {
        if (String::equalNoCase(className, row.className)) {
            return row;
        }
    }
    throw CIMException(CIM_ERR_INVALID_CLASS, String());
}

// A path of nothing but class and keys, by which instances are told apart.
CIMObjectPath _localPath(const CIMName& className, const CIMObjectPath& path) {
    return CIMObjectPath(String(), CIMNamespaceName(), className, path.getKeyBindings());
}

}  // namespace

void AssetIDProvider::enumerateInstances(const OperationContext& context,
                                         const CIMObjectPath& classPath, const Boolean,
                                         const Boolean, const CIMPropertyList&,
                                         InstanceResponseHandler& handler) {
    atBoundary([&] {
        const LanguageScope language(requestLanguage(context));
        handler.processing();
        _findRow(classPath.getClassName().getString()).deliver(*this, classPath, handler);
        handler.complete();
        logItem(_component, "enumerateInstances() exiting");
    });
}

void AssetIDProvider::enumerateInstanceNames(const OperationContext& context,
                                             const CIMObjectPath& classPath,
                                             ObjectPathResponseHandler& handler) {
    atBoundary([&] {
        logItem(_component, "enumerateInstanceNames() entered");
        handler.processing();
        SimpleInstanceResponseHandler collected;
        enumerateInstances(context, classPath, false, false, CIMPropertyList(), collected);
        const Array<CIMInstance>& instances = collected.getInstances();
        for (Uint32 i = 0; i < instances.size(); ++i) {
            handler.deliver(instances[i].getPath());
        }
        handler.complete();
        logItem(_component, "enumerateInstanceNames() exiting");
    });
}

void AssetIDProvider::getInstance(const OperationContext& context,
                                  const CIMObjectPath& instanceName,
                                  const Boolean includeQualifiers, const Boolean includeClassOrigin,
                                  const CIMPropertyList&, InstanceResponseHandler& handler) {
    atBoundary([&] {
        logItem(_component, "getInstance() entered");
        handler.processing();
        SimpleInstanceResponseHandler collected;
        enumerateInstances(context, instanceName, includeQualifiers, includeClassOrigin,
                           CIMPropertyList(), collected);
        const CIMObjectPath asked = _localPath(instanceName.getClassName(), instanceName);
        const Array<CIMInstance>& instances = collected.getInstances();
        for (Uint32 i = 0; i < instances.size(); ++i) {
            if (_localPath(instances[i].getClassName(), instances[i].getPath()) == asked) {
                handler.deliver(instances[i]);
                break;
            }
        }
        handler.complete();
        logItem(_component, "getInstance() exiting");
    });
}

}  // namespace QZ
