// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/OperationContext.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AssetIDProvider.h"
#include "Handlers.h"
#include "TestMachine.h"

// A provider on an empty test machine, asked as a server asks it.
class ProviderTest : public ::testing::Test {
protected:
    ProviderTest();
    ~ProviderTest() override;

    static Pegasus::CIMObjectPath path(const std::string& text);
    // An instance of the class that carries nothing.
    static Pegasus::CIMInstance instance(const std::string& className);

    std::vector<Pegasus::CIMInstance> enumerate(const std::string& className);
    std::vector<Pegasus::CIMInstance> get(const std::string& objectPath);
    std::vector<std::string> names(const std::string& className);
    void modify(const std::string& className, const Pegasus::CIMInstance& modified);

    // Status of the CIMException that the operation throws, and its message.
    template <class Operation>
    static std::pair<int, std::string> failure(Operation operation) {
        try {
            operation();
        } catch (const Pegasus::CIMException& exception) {
            const Pegasus::CString message = exception.getMessage().getCString();
            return {exception.getCode(), static_cast<const char*>(message)};
        }
        return {0, "no exception"};
    }

    TestMachine machine;
    QZ::AssetIDProvider* provider;
};

// The instance's property as text; "absent" where it has none.
std::string valueText(const Pegasus::CIMInstance& instance, const std::string& name);

template <class Value>
void add(Pegasus::CIMInstance& instance, const char* name, const Value& value) {
    instance.addProperty(Pegasus::CIMProperty(Pegasus::CIMName(name), Pegasus::CIMValue(value)));
}

// A value of text, and the point in time or interval of a CIM text.
Pegasus::String text(const std::string& value);
Pegasus::CIMDateTime date(const std::string& value);
