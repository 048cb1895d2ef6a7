// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "TestCaller.h"

namespace QZ {
namespace {

using Caller = TestCaller;

class ClassOperations : public testing::Test {
protected:
    std::string names(const std::string& parameters) {
        std::string text;
        for (const XmlElement& element : server.call("EnumerateClassNames", parameters).values) {
            text += *element.attribute("NAME") + " ";
        }
        return text;
    }

    TestCaller server;
};

TEST_F(ClassOperations, NameTheClassesBelowOne) {
    EXPECT_EQ(names(Caller::className("TEST_Base")), "TEST_Middle TEST_Unserved ");
    EXPECT_EQ(names(Caller::className("TEST_Base") + Caller::value("DeepInheritance", "TRUE")),
              "TEST_Middle TEST_Left TEST_Right TEST_Unserved ");
    EXPECT_EQ(names("").find("TEST_Left"), std::string::npos);
    EXPECT_NE(names(Caller::value("DeepInheritance", "TRUE")).find("TEST_Left"), std::string::npos);
    EXPECT_EQ(server.call("EnumerateClassNames", Caller::className("TEST_No")).error, 5);
}

TEST_F(ClassOperations, GiveAClassItsOwnPropertiesUnlessAskedForAll) {
    const auto own = server.call("GetClass", Caller::className("TEST_Right"));
    ASSERT_EQ(own.values.size(), 1U);
    EXPECT_EQ(*own.values[0].attribute("SUPERCLASS"), "TEST_Middle");
    EXPECT_EQ(Caller::propertyNames(own.values[0]), "Own");
    const auto all = server.call(
        "GetClass", Caller::className("test_right") + Caller::value("LocalOnly", "FALSE"));
    EXPECT_EQ(*all.values[0].attribute("NAME"), "TEST_Right");
    EXPECT_EQ(Caller::propertyNames(all.values[0]), "Id, Common, Own");
    EXPECT_EQ(*all.values[0].child("PROPERTY")->attribute("PROPAGATED"), "true");
    EXPECT_EQ(server.call("GetClass", Caller::className("TEST_No")).error, 6);
}

TEST_F(ClassOperations, GiveQualifiersUnlessTheyAreNotWanted) {
    const auto with = server.call("GetClass", Caller::className("TEST_Base"));
    const XmlElement* const key = with.values.at(0).child("PROPERTY")->child("QUALIFIER");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(*key->attribute("NAME"), "Key");
    EXPECT_EQ(*key->attribute("OVERRIDABLE"), "false");
    const auto without = server.call(
        "GetClass", Caller::className("TEST_Base") + Caller::value("IncludeQualifiers", "FALSE"));
    EXPECT_EQ(without.values.at(0).child("QUALIFIER"), nullptr);
    EXPECT_EQ(without.values.at(0).child("PROPERTY")->child("QUALIFIER"), nullptr);
}

TEST_F(ClassOperations, EnumerateWholeClasses) {
    const auto below = server.call("EnumerateClasses", Caller::className("TEST_Middle"));
    ASSERT_EQ(below.values.size(), 2U);
    EXPECT_EQ(below.values[0].name, "CLASS");
    EXPECT_EQ(Caller::propertyNames(below.values[0]), "Id");
}

TEST_F(ClassOperations, DeclareTheQualifiers) {
    const auto all = server.call("EnumerateQualifiers", "");
    ASSERT_EQ(all.values.size(), 6U);
    const auto one = server.call("GetQualifier", Caller::value("QualifierName", "key"));
    ASSERT_EQ(one.values.size(), 1U);
    const XmlElement& key = one.values[0];
    EXPECT_EQ(key.name, "QUALIFIER.DECLARATION");
    EXPECT_EQ(*key.attribute("TYPE"), "boolean");
    EXPECT_EQ(*key.attribute("ISARRAY"), "false");
    EXPECT_EQ(*key.child("SCOPE")->attribute("PROPERTY"), "true");
    EXPECT_EQ(key.child("SCOPE")->attribute("CLASS"), nullptr);
    EXPECT_EQ(key.child("VALUE")->text, "FALSE");
    EXPECT_EQ(server.call("GetQualifier", Caller::value("QualifierName", "No")).error, 6);
}

TEST_F(ClassOperations, LetAClientFindTheServerInTheInteropNamespace) {
    const auto spaces =
        server.call("EnumerateInstanceNames", Caller::className("CIM_Namespace"), "root/interop");
    EXPECT_EQ(spaces.values.size(), 2U);
    const auto manager =
        server.call("EnumerateInstances", Caller::className("CIM_ObjectManager"), "root/interop");
    EXPECT_EQ(manager.values.size(), 1U);
    const auto profiles = server.call("EnumerateInstances",
                                      Caller::className("CIM_RegisteredProfile"), "root/interop");
    EXPECT_EQ(profiles.values.size(), 1U);
    const auto capabilities = server.call(
        "EnumerateInstances", Caller::className("PG_ProviderCapabilities"), "root/interop");
    EXPECT_EQ(capabilities.values.size(), 18U);
    const auto one =
        server.call("GetInstance",
                    Caller::instanceName(Caller::named("PG_ProviderModule", "Name", "TestModule")),
                    "root/interop");
    EXPECT_EQ(one.values.size(), 1U);
    EXPECT_EQ(
        server
            .call("DeleteInstance",
                  Caller::instanceName(Caller::named("PG_ProviderModule", "Name", "TestModule")),
                  "root/interop")
            .error,
        7);
}

}  // namespace
}  // namespace QZ
