// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SimpleInstanceResponseHandler.h"

#include <Pegasus/Common/CIMName.h>
#include <gtest/gtest.h>

namespace QZ {
namespace {

using Pegasus::CIMInstance;
using Pegasus::CIMName;

TEST(SimpleInstanceResponseHandler, CollectsInTheOrderOfDelivery) {
    SimpleInstanceResponseHandler handler;
    handler.processing();
    handler.deliver(CIMInstance(CIMName("A")));
    Pegasus::Array<CIMInstance> more;
    more.append(CIMInstance(CIMName("B")));
    more.append(CIMInstance(CIMName("C")));
    handler.deliver(more);
    handler.deliver(Pegasus::Array<CIMInstance>());
    handler.complete();
    const auto& instances = handler.getInstances();
    ASSERT_EQ(instances.size(), 3U);
    EXPECT_TRUE(instances[0].getClassName().equal(CIMName("A")));
    EXPECT_TRUE(instances[1].getClassName().equal(CIMName("B")));
    EXPECT_TRUE(instances[2].getClassName().equal(CIMName("C")));
}

}  // namespace
}  // namespace QZ
