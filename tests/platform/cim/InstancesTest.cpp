// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Instances.h"

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>
#include <tavqz/CimOmHandleBackend.h>

#include <memory>

#include "CimText.h"

namespace QZ {
namespace {

using namespace Pegasus;

// A server that knows one class, "Alert", and keeps all others to itself.
class OneClass : public CimOmHandleBackend {
public:
    CIMClass getClass(const OperationContext&, const CIMNamespaceName& nameSpace,
                      const CIMName& className, Boolean, Boolean, Boolean,
                      const CIMPropertyList&) override {
        if (!nameSpace.equal(CIMNamespaceName("root/tavqz")) || !className.equal(CIMName("Alert")))
            throw CIMException(CIM_ERR_ACCESS_DENIED);
        CIMClass alert(className);
        alert.addProperty(CIMProperty(CIMName("Severity"), CIMValue(Uint16(2))));
        alert.addProperty(CIMProperty(CIMName("Text"), CIMValue(CIMTYPE_STRING, false)));
        return alert;
    }
};

class Instances : public ::testing::Test {
protected:
    CIMInstance spawn(const char* className, CIMOMHandle* from) {
        return spawnInstance(from, CIMNamespaceName("root/tavqz"), CIMName(className));
    }
    static std::string path(const CIMInstance& instance) {
        return make_string(instance.getPath().toString());
    }

    CIMOMHandle handle{std::make_shared<OneClass>()};
};

TEST_F(Instances, HaveWhatTheServersClassHas) {
    const CIMInstance alert = spawn("Alert", &handle);
    ASSERT_EQ(alert.getPropertyCount(), 2U);
    EXPECT_TRUE(alert.getProperty(0).getValue() == CIMValue(Uint16(2)));
    EXPECT_TRUE(alert.getProperty(1).getValue().isNull());
    EXPECT_EQ(path(alert), "root/tavqz:Alert");
}

TEST_F(Instances, AreBareWhereNoServerTellsTheClass) {
    for (CIMOMHandle* const from : {&handle, static_cast<CIMOMHandle*>(nullptr)}) {
        const CIMInstance other = spawn("Other", from);
        EXPECT_TRUE(other.getClassName().equal(CIMName("Other")));
        EXPECT_EQ(other.getPropertyCount(), 0U);
        EXPECT_EQ(path(other), "root/tavqz:Other");
    }
}

TEST_F(Instances, AreGivenPropertiesInPlaceOrAtTheirEnd) {
    CIMInstance alert = spawn("Alert", &handle);
    setProperty(alert, CIMName("text"), CIMValue(String("expired")));
    setProperty(alert, CIMName("Trending"), CIMValue(Uint16(1)));
    ASSERT_EQ(alert.getPropertyCount(), 3U);
    EXPECT_TRUE(alert.getProperty(1).getValue() == CIMValue(String("expired")));
    EXPECT_TRUE(alert.getProperty(2).getName().equal(CIMName("Trending")));
    EXPECT_THROW(setProperty(alert, CIMName("Severity"), CIMValue(String("2"))),
                 TypeMismatchException);
}

}  // namespace
}  // namespace QZ
