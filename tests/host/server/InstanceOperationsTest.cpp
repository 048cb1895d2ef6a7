// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "TestCaller.h"

namespace QZ {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using Caller = TestCaller;

class InstanceOperations : public testing::Test {
protected:
    TestCaller server;
};

std::string _classOf(const XmlElement& element) {
    const XmlElement* const instance = element.child("INSTANCE");
    return *(instance ? *instance : element).attribute("CLASSNAME");
}

std::string _text(const XmlElement& instance, const std::string& property) {
    for (const XmlElement& child : instance.children) {
        const std::string* const name = child.attribute("NAME");
        if (name && *name == property) {
            const XmlElement* const value = child.child("VALUE");
            return value ? value->text : "(null)";
        }
    }
    return "(none)";
}

std::string _modified(const std::string& path, const std::string& properties,
                      const std::string& className = "TEST_Settings") {
    return "<IPARAMVALUE NAME=\"ModifiedInstance\"><VALUE.NAMEDINSTANCE>" + path +
           "<INSTANCE CLASSNAME=\"" + className + "\">" + properties +
           "</INSTANCE></VALUE.NAMEDINSTANCE></IPARAMVALUE>";
}

TEST_F(InstanceOperations, EnumeratesEachInstanceWithItsPath) {
    const CallResult result = server.call("EnumerateInstances", Caller::className("TEST_Several"));
    ASSERT_EQ(result.values.size(), 2U);
    EXPECT_EQ(result.values[0].name, "VALUE.NAMEDINSTANCE");
    EXPECT_EQ(result.values[0].children[0].name, "INSTANCENAME");
    EXPECT_EQ(_text(result.values[1].children[1], "Name"), "second");
}

TEST_F(InstanceOperations, AsksTheProvidersOfSubclasses) {
    const CallResult result = server.call("EnumerateInstances", Caller::className("TEST_Base"));
    ASSERT_EQ(result.values.size(), 2U);
    EXPECT_EQ(_classOf(result.values[0]), "TEST_Left");
    EXPECT_EQ(_classOf(result.values[1]), "TEST_Right");
    const CallResult names =
        server.call("EnumerateInstanceNames", Caller::className("TEST_Middle"));
    ASSERT_EQ(names.values.size(), 2U);
    EXPECT_EQ(*names.values[1].attribute("CLASSNAME"), "TEST_Right");
}

TEST_F(InstanceOperations, HasNoInstancesOfAClassThatNobodyServes) {
    const CallResult result = server.call("EnumerateInstances", Caller::className("TEST_Unserved"));
    EXPECT_EQ(result.error, 0);
    EXPECT_TRUE(result.returnsSomething);
    EXPECT_TRUE(result.values.empty());
    EXPECT_EQ(
        server.call("GetInstance", Caller::instanceName(Caller::named("TEST_Unserved", "Id", "1")))
            .error,
        6);
}

TEST_F(InstanceOperations, SendsWhatTheListNames) {
    const auto names = [&](const std::string& more) {
        const auto result =
            server.call("EnumerateInstances", Caller::className("TEST_Settings") + more);
        return Caller::propertyNames(result.values.at(0));
    };
    EXPECT_EQ(names(""), "Id, Text, First, Second");
    EXPECT_EQ(names(Caller::properties({"first", "ID", "Unknown"})), "Id, First");
    EXPECT_EQ(names(Caller::properties({})), "");
}

TEST_F(InstanceOperations, LeavesInheritedPropertiesOutWhereAsked) {
    const auto names = [&](const char* name, const std::string& more) {
        const auto result = server.call("EnumerateInstances", Caller::className(name) + more);
        return Caller::propertyNames(result.values.at(0));
    };
    // The property is declared anew on the left, and only inherited on the right.
    EXPECT_EQ(names("TEST_Left", Caller::value("LocalOnly", "TRUE")), "Id");
    EXPECT_EQ(names("TEST_Right", Caller::value("LocalOnly", "true")), "");
    EXPECT_EQ(names("TEST_Right", ""), "Id");
    EXPECT_EQ(names("TEST_Right", Caller::value("LocalOnly", "false")), "Id");
}

TEST_F(InstanceOperations, DropsWhatTheNamedClassDoesNotHaveWithoutDeepInheritance) {
    TestCaller shipped(TestCaller::Shipped);
    const std::string base = Caller::className("CIM_Product");
    const auto deep = shipped.call("EnumerateInstances", base);
    const auto shallow =
        shipped.call("EnumerateInstances", base + Caller::value("DeepInheritance", "FALSE"));
    ASSERT_EQ(shallow.values.size(), 1U);
    EXPECT_THAT(Caller::propertyNames(deep.values.at(0)), HasSubstr("SystemLocation"));
    EXPECT_EQ(Caller::propertyNames(shallow.values.at(0)),
              "IdentifyingNumber, Name, Vendor, Version");
}

TEST_F(InstanceOperations, TellsWhereAPropertyComesFromWhereAsked) {
    const auto plain = server.call("EnumerateInstances", Caller::className("TEST_Right"));
    const auto asked =
        server.call("EnumerateInstances", Caller::className("TEST_Right") +
                                              Caller::value("IncludeClassOrigin", "TRUE") +
                                              Caller::value("IncludeQualifiers", "TRUE"));
    const XmlElement& without = plain.values.at(0).children.at(1);
    const XmlElement& with = asked.values.at(0).children.at(1);
    EXPECT_EQ(without.children.at(0).attribute("CLASSORIGIN"), nullptr);
    EXPECT_EQ(without.children.at(0).child("QUALIFIER"), nullptr);
    const XmlElement* const property = with.child("PROPERTY");
    ASSERT_NE(property, nullptr);
    EXPECT_EQ(*property->attribute("CLASSORIGIN"), "TEST_Base");
    EXPECT_NE(property->child("QUALIFIER"), nullptr);
}

TEST_F(InstanceOperations, KeepsTheQualifiersThatAProviderDelivers) {
    const auto result =
        server.call("EnumerateInstances", Caller::className("TEST_Qualified") +
                                              Caller::value("IncludeQualifiers", "TRUE"));
    ASSERT_EQ(result.values.size(), 1U) << result.description;
    const XmlElement& instance = result.values[0].children.at(1);
    EXPECT_EQ(*instance.child("QUALIFIER")->attribute("NAME"), "description");
    EXPECT_EQ(instance.child("QUALIFIER")->child("VALUE")->text, "the provider's");
    std::string names;
    for (const XmlElement& child : instance.child("PROPERTY")->children) {
        const std::string* const name = child.attribute("NAME");
        names += (name ? *name : child.name) + " ";
    }
    EXPECT_EQ(names, "KEY Description VALUE ");
}

TEST_F(InstanceOperations, GetsOneInstanceOrSaysThatThereIsNone) {
    const auto found = server.call(
        "GetInstance", Caller::instanceName(Caller::named("TEST_Settings", "Id", "one")));
    ASSERT_EQ(found.values.size(), 1U);
    EXPECT_EQ(found.values[0].name, "INSTANCE");
    EXPECT_EQ(_text(found.values[0], "Text"), "before");
    EXPECT_EQ(server
                  .call("GetInstance",
                        Caller::instanceName(Caller::named("TEST_Settings", "Id", "missing")))
                  .error,
              6);
    EXPECT_EQ(
        server.call("GetInstance", Caller::instanceName(Caller::named("TEST_No", "Id", "one")))
            .error,
        5);
}

TEST_F(InstanceOperations, NamesClassesAsTheyAreDeclared) {
    const auto found = server.call(
        "GetInstance", Caller::instanceName(Caller::named("test_SEVERAL", "Number", "1")));
    ASSERT_EQ(found.values.size(), 1U) << found.description;
    EXPECT_EQ(_classOf(found.values[0]), "TEST_Several");
    // The path is the provider's, or made of the keys.
    for (const char* name : {"TEST_Settings", "TEST_Right"}) {
        std::string lower = name;
        lower.replace(0, 4, "test");
        const auto created =
            server.call("CreateInstance",
                        "<IPARAMVALUE NAME=\"NewInstance\"><INSTANCE CLASSNAME=\"" + lower +
                            "\"><PROPERTY NAME=\"Id\" TYPE=\"string\"><VALUE>one</VALUE></PROPERTY>"
                            "</INSTANCE></IPARAMVALUE>");
        ASSERT_EQ(created.values.size(), 1U) << created.description;
        EXPECT_EQ(*created.values[0].attribute("CLASSNAME"), name);
    }
}

TEST_F(InstanceOperations, TakesAnOnlyKeyWithoutItsName) {
    const auto found =
        server.call("GetInstance", Caller::instanceName("<INSTANCENAME CLASSNAME=\"TEST_Settings\">"
                                                        "<KEYVALUE>one</KEYVALUE></INSTANCENAME>"));
    EXPECT_EQ(found.error, 0);
    EXPECT_EQ(found.values.size(), 1U);
}

TEST_F(InstanceOperations, GetsAProperty) {
    const std::string path = Caller::instanceName(Caller::named("TEST_Settings", "Id", "one"));
    const auto text = server.call("GetProperty", path + Caller::value("PropertyName", "text"));
    ASSERT_EQ(text.values.size(), 1U);
    EXPECT_EQ(text.values[0].text, "before");
    const auto null = server.call("GetProperty", path + Caller::value("PropertyName", "Fixed"));
    EXPECT_EQ(null.error, 0);
    EXPECT_TRUE(null.values.empty());
    EXPECT_EQ(server.call("GetProperty", path + Caller::value("PropertyName", "No")).error, 12);
}

TEST_F(InstanceOperations, SendsEveryTypeAsTheStandardHasIt) {
    const auto result = server.call("EnumerateInstances", Caller::className("TEST_Everything"));
    const XmlElement& instance = result.values.at(0).children.at(1);
    EXPECT_EQ(_text(instance, "Truth"), "TRUE");
    EXPECT_EQ(_text(instance, "S8"), "-128");
    EXPECT_EQ(_text(instance, "U64"), "18446744073709551615");
    EXPECT_EQ(_text(instance, "S64"), "-9223372036854775808");
    EXPECT_EQ(_text(instance, "Letter"), "\xC3\xA9");
    // The escape character is nothing that XML has.
    EXPECT_EQ(_text(instance, "Text"), "a \"quoted\", \\ line\n\xEF\xBF\xBD[31m \xE2\x82\xAC");
    EXPECT_EQ(_text(instance, "Moment"), "20270131100203.000000+060");
    EXPECT_EQ(_text(instance, "Nothing"), "(null)");
    EXPECT_EQ(_text(instance, "NoText"), "(none)");
    EXPECT_NE(instance.child("PROPERTY.REFERENCE"), nullptr);
    EXPECT_NE(instance.child("PROPERTY.ARRAY"), nullptr);
}

TEST_F(InstanceOperations, PassesARefusalOnWithItsStatusAndMessage) {
    for (const char* name : {"TEST_ThrowsPegasus", "TEST_ThrowsStandard", "TEST_ThrowsNumber",
                             "TEST_NeverCompletes"}) {
        const auto result = server.call("EnumerateInstances", Caller::className(name));
        EXPECT_EQ(result.error, 1) << name;
        EXPECT_NE(result.description, "") << name;
    }
    const auto refused = server.call("EnumerateInstances", Caller::className("TEST_ThrowsCim"));
    EXPECT_GT(refused.error, 1);
}

TEST_F(InstanceOperations, SendsNoInstanceThatCannotBeNamed) {
    for (const char* method : {"EnumerateInstances", "OpenEnumerateInstances"}) {
        const auto result = server.call(method, Caller::className("TEST_DeliversForeign"));
        EXPECT_EQ(result.error, 1) << method;
        EXPECT_THAT(result.description, HasSubstr("TEST_Nowhere, which is no class")) << method;
    }
}

TEST_F(InstanceOperations, AnswersAProviderThatAsksWhileItIsAsked) {
    const auto result = server.call("EnumerateInstances", Caller::className("TEST_AsksBack"));
    EXPECT_EQ(result.values.size(), 2U);
}

TEST_F(InstanceOperations, RefusesWhatCannotBeSet) {
    const std::string path = Caller::instanceName(Caller::named("TEST_Settings", "Id", "one"));
    const auto set = [&](const char* property, const std::string& value) {
        return server.call("SetProperty", path + Caller::value("PropertyName", property) + value)
            .error;
    };
    EXPECT_EQ(set("Fixed", Caller::value("NewValue", "x")), 7);
    EXPECT_EQ(set("Unknown", Caller::value("NewValue", "x")), 12);
    EXPECT_EQ(set("U8", Caller::value("NewValue", "256")), 13);
    EXPECT_EQ(set("U8", Caller::value("NewValue", "many")), 13);
    EXPECT_EQ(set("Text", "<IPARAMVALUE NAME=\"NewValue\"><VALUE.ARRAY/></IPARAMVALUE>"), 13);
}

TEST_F(InstanceOperations, HandsAModificationAndItsListOnAsTheyCame) {
    const TemporaryFolder folder;
    const ScopedEnvironment file("TAVQZ_TEST_MODIFIED", folder.file("modified"));
    const std::string path =
        "<INSTANCENAME CLASSNAME=\"TEST_Settings\"><KEYBINDING NAME=\"Id\">"
        "<KEYVALUE VALUETYPE=\"string\">one</KEYVALUE></KEYBINDING></INSTANCENAME>";
    const std::string both =
        "<PROPERTY NAME=\"U8\" TYPE=\"uint8\"><VALUE>7</VALUE></PROPERTY>"
        "<PROPERTY NAME=\"U16\" TYPE=\"uint16\"><VALUE>8</VALUE></PROPERTY>";
    const std::string expected = "U8 uint8 7\nU16 uint16 8\n";
    const auto modify = [&](const std::string& list) {
        EXPECT_EQ(server.call("ModifyInstance", _modified(path, both) + list).error, 0);
        return folder.read("modified");
    };
    EXPECT_THAT(modify(Caller::properties({"U16"})), EndsWith("\nU16\n" + expected));
    EXPECT_THAT(modify(Caller::properties({})), EndsWith("\nEMPTY\n" + expected));
    EXPECT_THAT(modify(""), EndsWith("\nNULL\n" + expected));
}

TEST_F(InstanceOperations, RefusesUnknownClassesAndNamespaces) {
    EXPECT_EQ(server.call("EnumerateInstances", Caller::className("TEST_No")).error, 5);
    EXPECT_EQ(server.call("EnumerateInstances", Caller::className("TEST_Left"), "root/no").error,
              3);
    EXPECT_EQ(server
                  .call("CreateInstance",
                        "<IPARAMVALUE NAME=\"NewInstance\"><INSTANCE CLASSNAME=\"TEST_No\"/>"
                        "</IPARAMVALUE>")
                  .error,
              5);
    EXPECT_EQ(
        server
            .call("ModifyInstance", _modified(Caller::named("TEST_No", "Id", "one"), "", "TEST_No"))
            .error,
        5);
}

// What the server has not at all comes before what the namespace has not, as DSP0200 orders the
// status codes of a call.
TEST_F(InstanceOperations, HasNoOtherOperationsInAnyNamespace) {
    for (const char* space : {"root/tavqz", "root/interop", "root/no"}) {
        EXPECT_EQ(server.call("Reboot", "", space).error, 7) << space;
        EXPECT_EQ(server.call("ExecQuery", "", space).error, 7) << space;
    }
    EXPECT_EQ(server.call("EnumerateClassNames", "", "root/no").error, 3);
}

TEST_F(InstanceOperations, ReportsWhatFailsAfterMuchWasSentByCuttingOff) {
    MemoryReply reply;
    reply.startsAt = std::size_t(64) << 10;
    server.handler.handle(
        TestCaller::request("EnumerateInstances", Caller::className("TEST_ManyThenThrows")), reply);
    EXPECT_TRUE(reply.started);
    const HttpHeaders expected{{"CIMStatusCode", "2"}, {"CIMStatusCodeDescription", "enough"}};
    EXPECT_EQ(reply.trailers, expected);
}

TEST_F(InstanceOperations, KeepsNoMoreOfALongAnswerThanAPiece) {
    MemoryReply reply;
    reply.startsAt = std::size_t(64) << 10;
    server.handler.handle(TestCaller::request("EnumerateInstances", Caller::className("TEST_Many")),
                          reply);
    EXPECT_GT(reply.written, std::size_t(1'000'000));
    EXPECT_LT(reply.answer.body.size(), std::size_t(100'000));
}

}  // namespace
}  // namespace QZ
