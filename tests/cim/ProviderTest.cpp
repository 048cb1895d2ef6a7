// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Provider/CIMIndicationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <gtest/gtest.h>

#include <memory>

#include "CimText.h"

using namespace Pegasus;

namespace {

// What a module's provider looks like to the compiler.
class LampProvider : public CIMInstanceProvider, public CIMIndicationProvider {
public:
    explicit LampProvider(bool& deleted) : _deleted(deleted) {}
    ~LampProvider() override { _deleted = true; }

    void initialize(CIMOMHandle& cimom) override { cimom.disallowProviderUnload(); }
    void terminate() override { delete this; }

    void getInstance(const OperationContext&, const CIMObjectPath& instanceReference, const Boolean,
                     const Boolean, const CIMPropertyList&,
                     InstanceResponseHandler& handler) override {
        handler.processing();
        handler.deliver(CIMInstance(instanceReference.getClassName()));
        handler.complete();
    }
    void enumerateInstances(const OperationContext&, const CIMObjectPath& classReference,
                            const Boolean, const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override {
        const CIMInstance lamp(classReference.getClassName());
        handler.processing();
        handler.deliver(Array<CIMInstance>(3, lamp));
        handler.complete();
    }
    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath&,
                                ObjectPathResponseHandler& handler) override {
        handler.processing();
        handler.complete();
    }
    void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        const Boolean, const CIMPropertyList&, ResponseHandler&) override {
        throw CIMNotSupportedException("lamps stay as they are");
    }
    void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        ObjectPathResponseHandler&) override {}
    void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override {}

    void enableIndications(IndicationResponseHandler&) override {}
    void disableIndications() override {}
    void createSubscription(const OperationContext&, const CIMObjectPath&,
                            const Array<CIMObjectPath>&, const CIMPropertyList&,
                            const Uint16) override {}
    void modifySubscription(const OperationContext&, const CIMObjectPath&,
                            const Array<CIMObjectPath>&, const CIMPropertyList&,
                            const Uint16) override {}
    void deleteSubscription(const OperationContext&, const CIMObjectPath&,
                            const Array<CIMObjectPath>&) override {}

private:
    bool& _deleted;
};

class CountingHandler : public InstanceResponseHandler {
public:
    void processing() override { log += "p"; }
    void complete() override { log += "c"; }
    void deliver(const CIMInstance&) override { log += "1"; }
    void deliver(const Array<CIMInstance>& instances) override {
        log += std::to_string(instances.size());
    }
    OperationContext context() const { return getContext(); }

    std::string log;
};

TEST(Provider, IsFoundToServeInstancesAndIndications) {
    bool deleted = false;
    CIMProvider* const provider = new LampProvider(deleted);
    EXPECT_TRUE(dynamic_cast<CIMInstanceProvider*>(provider));
    EXPECT_TRUE(dynamic_cast<CIMIndicationProvider*>(provider));
    CIMOMHandle handle;
    EXPECT_NO_THROW(provider->initialize(handle));
    provider->terminate();
    EXPECT_TRUE(deleted);
}

TEST(Provider, AnswersThroughItsHandler) {
    bool deleted = false;
    LampProvider provider(deleted);
    CountingHandler handler;
    CIMInstanceProvider& served = provider;
    const CIMObjectPath lamp("root/tavqz:Lamp");
    served.enumerateInstances(OperationContext(), lamp, false, false, CIMPropertyList(), handler);
    served.getInstance(OperationContext(), lamp, false, false, CIMPropertyList(), handler);
    EXPECT_EQ("p3cp1c", handler.log);
    ResponseHandler& plain = handler;
    EXPECT_TRUE(dynamic_cast<InstanceResponseHandler*>(&plain));
    EXPECT_FALSE(dynamic_cast<ObjectPathResponseHandler*>(&plain));
}

TEST(Provider, RefusesWithACimException) {
    bool deleted = false;
    LampProvider provider(deleted);
    CountingHandler handler;
    try {
        provider.modifyInstance(OperationContext(), CIMObjectPath("Lamp"), CIMInstance("Lamp"),
                                false, CIMPropertyList(), handler);
        FAIL() << "nothing was thrown";
    } catch (const CIMException& e) {
        EXPECT_EQ(CIM_ERR_NOT_SUPPORTED, e.getCode());
        EXPECT_NE(std::string::npos, text(e.getMessage()).find("lamps stay as they are"));
    }
}

TEST(ProviderException, HasTheStatusOfItsName) {
    EXPECT_EQ(CIM_ERR_FAILED, CIMOperationFailedException("x").getCode());
    EXPECT_EQ(CIM_ERR_ACCESS_DENIED, CIMAccessDeniedException("x").getCode());
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, CIMInvalidParameterException("x").getCode());
    EXPECT_EQ(CIM_ERR_NOT_FOUND, CIMObjectNotFoundException("x").getCode());
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED, CIMNotSupportedException("x").getCode());
    EXPECT_EQ(CIM_ERR_ALREADY_EXISTS, CIMObjectAlreadyExistsException("x").getCode());
    EXPECT_EQ(CIM_ERR_NO_SUCH_PROPERTY, CIMPropertyNotFoundException("x").getCode());
    EXPECT_EQ(CIM_ERR_METHOD_NOT_FOUND, CIMMethodNotFoundException("x").getCode());
    EXPECT_THROW(throw CIMAccessDeniedException("x"), CIMOperationFailedException);
}

TEST(ResponseHandler, CarriesAContext) {
    CountingHandler handler;
    EXPECT_FALSE(handler.context().contains(IdentityContainer::NAME));
    OperationContext context;
    context.insert(IdentityContainer("ada"));
    handler.setContext(context);
    const CountingHandler copy = handler;
    handler.setContext(OperationContext());
    EXPECT_TRUE(copy.context().contains(IdentityContainer::NAME));
    EXPECT_FALSE(handler.context().contains(IdentityContainer::NAME));
}

}  // namespace
