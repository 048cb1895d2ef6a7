// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <tavqz/CimOmHandleBackend.h>

#include "CimText.h"

using namespace Pegasus;

namespace {

// Answers with what it was asked.
class EchoBackend : public CimOmHandleBackend {
public:
    Array<CIMInstance> enumerateInstances(const OperationContext&,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMName& className, Boolean deepInheritance,
                                          Boolean localOnly, Boolean includeQualifiers,
                                          Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList) override {
        log = text(nameSpace.getString()) + " " + text(className.getString());
        for (const Boolean flag :
             {deepInheritance, localOnly, includeQualifiers, includeClassOrigin})
            log += flag ? " 1" : " 0";
        log += " " + text(propertyList.toString());
        return Array<CIMInstance>(2, CIMInstance(className));
    }
    CIMInstance getInstance(const OperationContext&, const CIMNamespaceName&,
                            const CIMObjectPath& instanceName, Boolean, Boolean, Boolean,
                            const CIMPropertyList&) override {
        return CIMInstance(instanceName.getClassName());
    }
    CIMClass getClass(const OperationContext&, const CIMNamespaceName&, const CIMName& className,
                      Boolean, Boolean, Boolean, const CIMPropertyList&) override {
        return CIMClass(className);
    }
    Array<CIMObjectPath> enumerateInstanceNames(const OperationContext&, const CIMNamespaceName&,
                                                const CIMName&) override {
        return Array<CIMObjectPath>(3);
    }
    CIMObjectPath createInstance(const OperationContext&, const CIMNamespaceName&,
                                 const CIMInstance& newInstance) override {
        return newInstance.getPath();
    }
    void modifyInstance(const OperationContext&, const CIMNamespaceName&,
                        const CIMInstance& modifiedInstance, Boolean,
                        const CIMPropertyList&) override {
        log = "modify " + text(modifiedInstance.getPath().toString());
    }
    void deleteInstance(const OperationContext&, const CIMNamespaceName&,
                        const CIMObjectPath& instanceName) override {
        log = "delete " + text(instanceName.toString());
    }
    void disallowProviderUnload() override { ++pins; }
    void allowProviderUnload() override { --pins; }

    std::string log;
    int pins = 0;
};

const CIMNamespaceName& root() {
    static const CIMNamespaceName name("root/tavqz");
    return name;
}

Uint32 enumerate(CIMOMHandle handle) {
    return handle
        .enumerateInstances(OperationContext(), root(), CIMName("Lamp"), true, false, true, false,
                            CIMPropertyList())
        .size();
}

TEST(CIMOMHandle, PassesEveryCallToItsBackend) {
    const auto backend = std::make_shared<EchoBackend>();
    CIMOMHandle handle(backend);
    const OperationContext context;
    const CIMPropertyList all;
    const CIMObjectPath lamp("Lamp.Id=1");
    EXPECT_EQ(2U, enumerate(handle));
    EXPECT_EQ("root/tavqz Lamp 1 0 1 0 NULL", backend->log);
    EXPECT_EQ(3U, handle.enumerateInstanceNames(context, root(), CIMName("Lamp")).size());
    EXPECT_TRUE(handle.getClass(context, root(), CIMName("Lamp"), false, false, false, all)
                    .identical(CIMClass(CIMName("Lamp"))));
    CIMInstance instance = handle.getInstance(context, root(), lamp, false, false, false, all);
    EXPECT_TRUE(instance.identical(CIMInstance(CIMName("Lamp"))));
    instance.setPath(lamp);
    EXPECT_TRUE(handle.createInstance(context, root(), instance) == lamp);
    handle.modifyInstance(context, root(), instance, false, all);
    EXPECT_EQ("modify Lamp.Id=1", backend->log);
    handle.deleteInstance(context, root(), lamp);
    EXPECT_EQ("delete Lamp.Id=1", backend->log);
}

TEST(CIMOMHandle, CountsUnloadHintsWhereTheBackendDoes) {
    const auto backend = std::make_shared<EchoBackend>();
    CIMOMHandle handle(backend);
    CIMOMHandle copy = handle;
    handle.disallowProviderUnload();
    copy.disallowProviderUnload();
    handle.allowProviderUnload();
    EXPECT_EQ(1, backend->pins);
}

TEST(CIMOMHandle, IsRefusedEverythingWithoutABackend) {
    CIMOMHandle handle;
    const OperationContext context;
    const CIMPropertyList all;
    const CIMInstance lamp(CIMName("Lamp"));
    const auto status = [](auto call) {
        try {
            call();
        } catch (const CIMException& e) {
            return e.getCode();
        }
        return CIM_ERR_SUCCESS;
    };
    const CIMStatusCode refused = CIM_ERR_NOT_SUPPORTED;
    EXPECT_EQ(refused, status([&] { enumerate(handle); }));
    EXPECT_EQ(refused, status([&] { enumerate(CIMOMHandle(nullptr)); }));
    EXPECT_EQ(refused, status([&] {
                  handle.getClass(context, root(), CIMName("L"), false, false, false, all);
              }));
    EXPECT_EQ(refused, status([&] {
                  handle.getInstance(context, root(), CIMObjectPath("L"), false, false, false, all);
              }));
    EXPECT_EQ(refused,
              status([&] { handle.enumerateInstanceNames(context, root(), CIMName("L")); }));
    EXPECT_EQ(refused, status([&] { handle.createInstance(context, root(), lamp); }));
    EXPECT_EQ(refused, status([&] { handle.modifyInstance(context, root(), lamp, false, all); }));
    EXPECT_EQ(refused, status([&] { handle.deleteInstance(context, root(), CIMObjectPath("L")); }));
    EXPECT_NO_THROW(handle.disallowProviderUnload());
    EXPECT_NO_THROW(handle.allowProviderUnload());
}

TEST(CIMOMHandle, SpeaksToTheInstalledBackendByDefault) {
    const CIMOMHandle before;
    CimOmHandleBackend::install(std::make_shared<EchoBackend>());
    const CIMOMHandle during;
    CimOmHandleBackend::install(nullptr);
    EXPECT_THROW(enumerate(before), CIMException);
    EXPECT_EQ(2U, enumerate(during));
    EXPECT_THROW(enumerate(CIMOMHandle()), CIMException);
}

}  // namespace
