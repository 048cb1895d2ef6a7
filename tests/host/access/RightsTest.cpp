// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Rights.h"

#include <gtest/gtest.h>

namespace QZ {
namespace {

TEST(Rights, AreReadAndWrittenAsNames) {
    ASSERT_TRUE(parseRights("subscribe,read"));
    EXPECT_EQ("read,subscribe", parseRights("subscribe,read")->text());
    EXPECT_EQ("read,write,subscribe", Rights::all().text());
    EXPECT_EQ("", Rights::none().text());
}

TEST(Rights, AreNotGuessed) {
    for (const char* text : {"", "read,", ",read", "reading", "Read", "read write", "all"}) {
        EXPECT_FALSE(parseRights(text)) << text;
    }
}

TEST(Rights, DoNotContainOneAnother) {
    const Rights write = Rights().with(Right::Write);
    EXPECT_TRUE(write.has(Right::Write));
    EXPECT_FALSE(write.has(Right::Read));
    EXPECT_FALSE(write.has(Right::Subscribe));
}

TEST(RequiredRight, IsToWriteForWhatChangesAssetData) {
    for (const char* method :
         {"CreateInstance", "DeleteInstance", "ModifyInstance", "SetProperty", "setproperty"}) {
        EXPECT_EQ(Right::Write, requiredRight(method, "TAVIRA_Lease")) << method;
    }
}

TEST(RequiredRight, IsToSubscribeForWhatASubscriptionIsMadeOf) {
    for (const char* name :
         {"CIM_IndicationFilter", "CIM_ListenerDestinationCIMXML", "CIM_IndicationSubscription",
          "CIM_FormattedIndicationSubscription", "CIM_ListenerDestination", "CIM_IndicationHandler",
          "CIM_IndicationHandlerCIMXML", "cim_indicationfilter"}) {
        EXPECT_EQ(Right::Subscribe, requiredRight("CreateInstance", name)) << name;
        EXPECT_EQ(Right::Read, requiredRight("EnumerateInstances", name)) << name;
    }
    EXPECT_EQ(Right::Write, requiredRight("CreateInstance", "CIM_IndicationFilterOfMine"));
}

TEST(RequiredRight, IsToReadForAllElse) {
    for (const char* method :
         {"GetInstance", "EnumerateClasses", "PullInstances", "NoSuchMethod"}) {
        EXPECT_EQ(Right::Read, requiredRight(method, "TAVIRA_Lease")) << method;
    }
}

}  // namespace
}  // namespace QZ
