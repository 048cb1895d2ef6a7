// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ProviderTest.h"

using namespace Pegasus;

ProviderTest::ProviderTest() : provider(new QZ::AssetIDProvider) {}

ProviderTest::~ProviderTest() {
    provider->terminate();
}

CIMObjectPath ProviderTest::path(const std::string& text) {
    CIMObjectPath result{String(text.c_str())};
    result.setHost("server.example");
    result.setNameSpace(CIMNamespaceName("root/tavqz"));
    return result;
}

CIMInstance ProviderTest::instance(const std::string& className) {
    return CIMInstance(CIMName(className.c_str()));
}

std::vector<CIMInstance> ProviderTest::enumerate(const std::string& className) {
    Instances handler;
    provider->enumerateInstances(OperationContext(), path(className), false, false,
                                 CIMPropertyList(), handler);
    EXPECT_TRUE(handler.isWhole());
    return handler.all;
}

std::vector<CIMInstance> ProviderTest::get(const std::string& objectPath) {
    Instances handler;
    provider->getInstance(OperationContext(), path(objectPath), false, false, CIMPropertyList(),
                          handler);
    EXPECT_TRUE(handler.isWhole());
    return handler.all;
}

std::vector<std::string> ProviderTest::names(const std::string& className) {
    Paths handler;
    provider->enumerateInstanceNames(OperationContext(), path(className), handler);
    EXPECT_TRUE(handler.isWhole());
    std::vector<std::string> result;
    for (const CIMObjectPath& found : handler.all) {
        result.emplace_back(static_cast<const char*>(found.toString().getCString()));
    }
    return result;
}

void ProviderTest::modify(const std::string& className, const CIMInstance& modified) {
    Acknowledgement handler;
    provider->modifyInstance(OperationContext(), path(className), modified, false,
                             CIMPropertyList(), handler);
}

std::string valueText(const CIMInstance& instance, const std::string& name) {
    const Uint32 index = instance.findProperty(CIMName(name.c_str()));
    if (index == PEG_NOT_FOUND) {
        return "absent";
    }
    const String value = instance.getProperty(index).getValue().toString();
    return static_cast<const char*>(value.getCString());
}

String text(const std::string& value) {
    return String(value.c_str());
}

CIMDateTime date(const std::string& value) {
    return CIMDateTime(String(value.c_str()));
}
