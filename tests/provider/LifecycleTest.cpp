// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Provider/CIMOMHandle.h>

#include "ProviderTest.h"

using namespace Pegasus;

namespace {

using Lifecycle = ProviderTest;

class Indications : public IndicationResponseHandler, public Framing {
public:
    void processing() override { Framing::processing(); }
    void complete() override { Framing::complete(); }
    void deliver(const CIMIndication&) override {}
    void deliver(const Array<CIMIndication>&) override {}
    void deliver(const OperationContext&, const CIMIndication&) override {}
    void deliver(const OperationContext&, const Array<CIMIndication>&) override {}
};

TEST_F(Lifecycle, RefusesToCreateInstancesOfAnyClass) {
    for (const char* name : {"TAVIRA_Lease", "TAVIRA_VigilPresent", "CIM_Other"}) {
        Paths handler;
        const auto [status, message] = failure([&] {
            provider->createInstance(OperationContext(), path(name), instance(name), handler);
        });
        EXPECT_EQ(status, CIM_ERR_NOT_SUPPORTED) << name;
        EXPECT_EQ(message, "AssetIDProvider::createInstance") << name;
    }
}

TEST_F(Lifecycle, RefusesToDeleteInstancesOfAnyClass) {
    for (const char* name : {"TAVIRA_Lease", "TAVIRA_VigilPresent", "CIM_Other"}) {
        Acknowledgement handler;
        const auto [status, message] =
            failure([&] { provider->deleteInstance(OperationContext(), path(name), handler); });
        EXPECT_EQ(status, CIM_ERR_NOT_SUPPORTED) << name;
        EXPECT_EQ(message, "AssetIDProvider::deleteInstance") << name;
    }
}

TEST_F(Lifecycle, AcceptsEverySubscription) {
    const CIMObjectPath subscription = path("CIM_IndicationSubscription");
    Array<CIMObjectPath> classes;
    classes.append(path("TAVIRA_LeaseExpirationEvent"));
    EXPECT_NO_THROW({
        provider->createSubscription(OperationContext(), subscription, classes, CIMPropertyList(),
                                     0);
        provider->modifySubscription(OperationContext(), subscription, classes, CIMPropertyList(),
                                     0);
        provider->deleteSubscription(OperationContext(), subscription, classes);
    });
}

TEST_F(Lifecycle, OpensAndClosesTheIndicationHandlerOnce) {
    Indications handler;
    provider->enableIndications(handler);
    provider->enableIndications(handler);
    EXPECT_EQ(handler.processingCalls, 1);
    provider->disableIndications();
    EXPECT_EQ(handler.completeCalls, 0);
    provider->disableIndications();
    EXPECT_EQ(handler.completeCalls, 1);
}

TEST_F(Lifecycle, AcceptsTheServersHandle) {
    CIMOMHandle handle;
    EXPECT_NO_THROW(provider->initialize(handle));
}

}  // namespace
