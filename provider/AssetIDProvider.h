// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMIndicationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <tavqz/VPD.h>
#include <tavqz/cSPCommonInt.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "Mutex.h"

namespace QZ {

class AssetIDIndicationThread;

// The instance and indication provider of the machine's asset information.
//
// The server calls it on any of its threads, several at once. What goes wrong leaves as a
// `Pegasus::CIMException`; nothing else does.
class AssetIDProvider : public Pegasus::CIMInstanceProvider, public Pegasus::CIMIndicationProvider {
public:
    // Binds the service processor's device library. Without one the provider works all the same
    // and its service-processor classes have no instances.
    AssetIDProvider();
    ~AssetIDProvider() override;
    AssetIDProvider(const AssetIDProvider&) = delete;
    AssetIDProvider& operator=(const AssetIDProvider&) = delete;

    void initialize(Pegasus::CIMOMHandle& handle) override;
    // Deletes the provider.
    void terminate() override;

    // Delivers every instance of the class with all its properties, whatever the flags and the
    // property list say. CIM_ERR_INVALID_CLASS for a class that is not served.
    void enumerateInstances(const Pegasus::OperationContext& context,
                            const Pegasus::CIMObjectPath& classPath,
                            const Pegasus::Boolean includeQualifiers,
                            const Pegasus::Boolean includeClassOrigin,
                            const Pegasus::CIMPropertyList& propertyList,
                            Pegasus::InstanceResponseHandler& handler) override;
    void enumerateInstanceNames(const Pegasus::OperationContext& context,
                                const Pegasus::CIMObjectPath& classPath,
                                Pegasus::ObjectPathResponseHandler& handler) override;
    // Delivers the instance whose class and keys are those of the path, or nothing.
    void getInstance(const Pegasus::OperationContext& context,
                     const Pegasus::CIMObjectPath& instanceName,
                     const Pegasus::Boolean includeQualifiers,
                     const Pegasus::Boolean includeClassOrigin,
                     const Pegasus::CIMPropertyList& propertyList,
                     Pegasus::InstanceResponseHandler& handler) override;
    // Applies every writable property that the instance carries and saves them. Each class has
    // one instance, so the keys, the flag and the property list are not looked at.
    void modifyInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instanceName,
                        const Pegasus::CIMInstance& modifiedInstance,
                        const Pegasus::Boolean includeQualifiers,
                        const Pegasus::CIMPropertyList& propertyList,
                        Pegasus::ResponseHandler& handler) override;
    // CIM_ERR_NOT_SUPPORTED for every class.
    void createInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instanceName,
                        const Pegasus::CIMInstance& instance,
                        Pegasus::ObjectPathResponseHandler& handler) override;
    // CIM_ERR_NOT_SUPPORTED for every class.
    void deleteInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instanceName,
                        Pegasus::ResponseHandler& handler) override;

    // The first enabling, counted over all provider objects of the module, starts the thread that
    // checks; the last disabling ends it, after a check that is under way, where it is this object
    // that has it. The handler is used until then.
    void enableIndications(Pegasus::IndicationResponseHandler& handler) override;
    void disableIndications() override;
    // One check; called by the thread alone.
    virtual void checkCondition();
    // What was reported is taken from the journal again, as after a restart of the process.
    static void forgetReported();
    // Every subscription is accepted.
    void createSubscription(const Pegasus::OperationContext& context,
                            const Pegasus::CIMObjectPath& subscriptionName,
                            const Pegasus::Array<Pegasus::CIMObjectPath>& classNames,
                            const Pegasus::CIMPropertyList& propertyList,
                            const Pegasus::Uint16 repeatNotificationPolicy) override;
    void modifySubscription(const Pegasus::OperationContext& context,
                            const Pegasus::CIMObjectPath& subscriptionName,
                            const Pegasus::Array<Pegasus::CIMObjectPath>& classNames,
                            const Pegasus::CIMPropertyList& propertyList,
                            const Pegasus::Uint16 repeatNotificationPolicy) override;
    void deleteSubscription(const Pegasus::OperationContext& context,
                            const Pegasus::CIMObjectPath& subscriptionName,
                            const Pegasus::Array<Pegasus::CIMObjectPath>& classNames) override;

    // Whether a service processor answered when the provider was made.
    bool foundSP() const { return _spFound; }

    // What the service processor of that index, from 0, says: an instance of the class for each
    // thing that it answers for, with a path of class and keys. What it fails to answer is left
    // out. The vector is the caller's to delete. Only where foundSP().
    using SpInstances = std::vector<Pegasus::CIMInstance>;
    SpInstances* getVigilPresentInstances(int spIndex, Pegasus::String className);
    SpInstances* getVigilPostBiosVPDInstances(int spIndex, Pegasus::String className);
    SpInstances* getVigilMachineLevelVPDInstances(int spIndex, Pegasus::String className);
    SpInstances* getVigilSystemStateInstances(int spIndex, Pegasus::String className);
    SpInstances* getVigilWatchdogInstances(int spIndex, Pegasus::String className);
    SpInstances* getVigilManagementProcessorVPDInstances(int spIndex, Pegasus::String className);
    SpInstances* getVigilComponentVPDInstances(int spIndex, Pegasus::String className);
    // The same, from the FRUs of a controller that speaks IPMI.
    SpInstances* getIPMIVigilComponentVPDInstances(int spIndex, Pegasus::String className);

    // The codes of service processors as texts in the user's language, and as other codes. A code
    // that is not known has the text of "MSGID_UNKNOWN", of a state not known, or none; the
    // numbers are 0.
    std::wstring getStringForDeviceType(VPD_INST_TYPE type);
    std::wstring getStringForSPType(int spType, bool abbreviated);
    std::wstring getStringForSysState(int state);
    int getDeviceTypeForDeviceType(VPD_INST_TYPE type);
    VPD_INST_TYPE getInstTypeForIPMIEntityID(int entityId);

    // A service-processor class in the dispatch: what the log says that a client asked for, and
    // who builds. ipmiBuilder is for processors of the kind that speaks IPMI, if not null.
    using SpBuilder = SpInstances* (AssetIDProvider::*)(int spIndex, Pegasus::String className);
    struct SpBranch {
        const char* asked;
        SpBuilder builder;
        SpBuilder ipmiBuilder;
    };

    // Delivers what is built of each service processor in turn; nothing where there is none.
    void deliverSpInstances(const SpBranch& branch, const Pegasus::String& className,
                            Pegasus::InstanceResponseHandler& handler);

private:
    // Enables less disables, over all provider objects of the module.
    static std::atomic<int> _refCnt;

    static Pegasus::CIMOMHandle* _serverHandle();
    void _stopThread();

    Pegasus::IndicationResponseHandler* _indicationHandler = nullptr;
    Mutex _threadMutex;  // starting and ending the thread
    std::unique_ptr<AssetIDIndicationThread> _indicationThread;
    int _spCount = 1;
    bool _spFound = false;
    cDeviceLib* _spLibrary = nullptr;
    cSPCommonInt _spCommon;
};

}  // namespace QZ
