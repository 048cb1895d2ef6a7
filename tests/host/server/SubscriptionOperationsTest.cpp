// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// Subscribing as a client does: by instance operations, in either namespace.

#include <gmock/gmock.h>

#include "BuildPaths.h"
#include "Subscriptions.h"
#include "TestCaller.h"
#include "TestMachine.h"

using namespace QZ;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr const char* _interop = "root/interop";

std::string _property(const char* name, const std::string& value) {
    return std::string("<PROPERTY NAME=\"") + name + "\" TYPE=\"string\"><VALUE>" + value +
           "</VALUE></PROPERTY>";
}

std::string _reference(const char* name, const std::string& instanceName) {
    return std::string("<PROPERTY.REFERENCE NAME=\"") + name + "\"><VALUE.REFERENCE>" +
           instanceName + "</VALUE.REFERENCE></PROPERTY.REFERENCE>";
}

std::string _instance(const std::string& className, const std::string& properties) {
    return "<INSTANCE CLASSNAME=\"" + className + "\">" + properties + "</INSTANCE>";
}

std::string _new(const std::string& className, const std::string& properties) {
    return "<IPARAMVALUE NAME=\"NewInstance\">" + _instance(className, properties) +
           "</IPARAMVALUE>";
}

std::string _filter(const std::string& name) {
    return _new("CIM_IndicationFilter",
                _property("Name", name) + _property("SourceNamespace", "root/tavqz") +
                    _property("Query", "SELECT * FROM TAVIRA_LeaseExpirationEvent") +
                    _property("QueryLanguage", "WQL"));
}

std::string _destination(const std::string& name) {
    return _new("CIM_ListenerDestinationCIMXML",
                _property("Name", name) + _property("Destination", "http://127.0.0.1:1/"));
}

std::string _named(const char* className, const std::string& name) {
    std::string xml = std::string("<INSTANCENAME CLASSNAME=\"") + className + "\">";
    for (const auto& [key, value] : std::initializer_list<std::pair<const char*, std::string>>{
             {"SystemCreationClassName", "CIM_ComputerSystem"},
             {"SystemName", "box"},
             {"CreationClassName", className},
             {"Name", name}}) {
        xml.append("<KEYBINDING NAME=\"").append(key);
        xml.append("\"><KEYVALUE VALUETYPE=\"string\">").append(value);
        xml += "</KEYVALUE></KEYBINDING>";
    }
    return xml + "</INSTANCENAME>";
}

// A server that serves this machine with its own module.
class SubscriptionOperationsTest : public testing::Test {
protected:
    CallResult call(const std::string& method, const std::string& parameters,
                    const std::string& space = _interop) {
        MemoryReply reply;
        handler.handle(TestCaller::request(method, parameters, space), reply);
        return TestCaller::result(method, reply.answer.body);
    }

    std::size_t count(const char* className, const std::string& space = _interop) {
        return call("EnumerateInstances", TestCaller::className(className), space).values.size();
    }

    // A subscription of a filter and a destination of its name.
    std::string subscribe(const std::string& name) {
        EXPECT_EQ(call("CreateInstance", _filter(name)).error, 0);
        EXPECT_EQ(call("CreateInstance", _destination(name)).error, 0);
        const std::string properties =
            _reference("Filter", _named("CIM_IndicationFilter", name)) +
            _reference("Handler", _named("CIM_ListenerDestinationCIMXML", name));
        EXPECT_EQ(call("CreateInstance", _new("CIM_IndicationSubscription", properties)).error, 0);
        const auto key = [](const char* property, const std::string& path) {
            return std::string("<KEYBINDING NAME=\"") + property + "\"><VALUE.REFERENCE>" + path +
                   "</VALUE.REFERENCE></KEYBINDING>";
        };
        return "<INSTANCENAME CLASSNAME=\"CIM_IndicationSubscription\">" +
               key("Filter", _named("CIM_IndicationFilter", name)) +
               key("Handler", _named("CIM_ListenerDestinationCIMXML", name)) + "</INSTANCENAME>";
    }

    TestMachine machine;
    const std::string _hostName = machine.folder().write("etc/hostname", "box\n");
    InProcessServer providers{Schema::load(TAVQZ_SOURCE_DIR "/schema"),
                              [](const std::string&) { return SHIPPED_MODULE; }};
    std::vector<std::string> log;
    Subscriptions subscriptions{providers, machine.folder().file("data/indications.mof"),
                                [this](const std::string& line) { log.push_back(line); }};
    RequestHandler handler{providers, {}, &subscriptions};
};

}  // namespace

TEST_F(SubscriptionOperationsTest, CreateListGetAndDelete) {
    const std::string path = subscribe("a");
    EXPECT_EQ(count("CIM_IndicationFilter"), 1U);
    EXPECT_EQ(count("CIM_ListenerDestination"), 1U) << "also by its superclass";
    EXPECT_EQ(count("CIM_IndicationSubscription"), 1U);
    EXPECT_EQ(count("CIM_IndicationFilter", "root/tavqz"), 0U);
    EXPECT_THAT(
        call("EnumerateInstanceNames", TestCaller::className("CIM_IndicationSubscription")).values,
        SizeIs(1));
    const CallResult found = call("GetInstance", TestCaller::instanceName(path));
    EXPECT_THAT(TestCaller::propertyNames(found.values.at(0)), HasSubstr("SubscriptionState"));

    const CallResult used =
        call("DeleteInstance", TestCaller::instanceName(_named("CIM_IndicationFilter", "a")));
    EXPECT_EQ(used.error, 1);
    EXPECT_THAT(used.description, HasSubstr("delete that first"));
    EXPECT_EQ(call("DeleteInstance", TestCaller::instanceName(path)).error, 0);
    EXPECT_EQ(call("DeleteInstance", TestCaller::instanceName(path)).error, 6);
    EXPECT_EQ(call("GetInstance", TestCaller::instanceName(path)).error, 6);
    EXPECT_EQ(
        call("DeleteInstance", TestCaller::instanceName(_named("CIM_IndicationFilter", "a"))).error,
        0);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SubscriptionOperationsTest, AnswerWithThePathThatWasMade) {
    const CallResult created = call("CreateInstance", _filter("a"));
    ASSERT_THAT(created.values, SizeIs(1));
    EXPECT_EQ(created.values[0].name, "INSTANCENAME");
    EXPECT_THAT(created.values[0].children, SizeIs(4));
    EXPECT_EQ(call("CreateInstance", _filter("a")).error, 11);
    EXPECT_EQ(call("CreateInstance", _filter("a"), "root/tavqz").error, 0);
    EXPECT_EQ(count("CIM_IndicationFilter", "root/tavqz"), 1U);
}

TEST_F(SubscriptionOperationsTest, RefuseWhatCannotBe) {
    const auto refused = [this](const std::string& query, const char* language) {
        return call(
                   "CreateInstance",
                   _new("CIM_IndicationFilter", _property("Name", "f") + _property("Query", query) +
                                                    _property("QueryLanguage", language)),
                   "root/tavqz")
            .error;
    };
    EXPECT_EQ(refused("SELECT", "WQL"), 15);
    EXPECT_EQ(refused("SELECT * FROM TAVIRA_Lease", "WQL"), 7);
    EXPECT_EQ(refused("SELECT * FROM TAVIRA_LeaseExpirationEvent", "CQL"), 14);
    EXPECT_EQ(call("CreateInstance", _new("CIM_ListenerDestination", _property("Name", "d"))).error,
              7);
    EXPECT_EQ(call("CreateInstance", _new("CIM_IndicationFilter", _property("Name", "f"))).error,
              4);
}

TEST_F(SubscriptionOperationsTest, ModifyAndSetAProperty) {
    const std::string path = subscribe("a");
    const std::string disabled = _instance(
        "CIM_IndicationSubscription",
        "<PROPERTY NAME=\"SubscriptionState\" TYPE=\"uint16\"><VALUE>4</VALUE></PROPERTY>");
    EXPECT_EQ(
        call("ModifyInstance", "<IPARAMVALUE NAME=\"ModifiedInstance\"><VALUE.NAMEDINSTANCE>" +
                                   path + disabled + "</VALUE.NAMEDINSTANCE></IPARAMVALUE>")
            .error,
        0);
    const auto state = [&] {
        return call("GetProperty", TestCaller::instanceName(path) +
                                       TestCaller::value("PropertyName", "SubscriptionState"))
            .values.at(0)
            .text;
    };
    EXPECT_EQ(state(), "4");
    EXPECT_EQ(call("SetProperty", TestCaller::instanceName(path) +
                                      TestCaller::value("PropertyName", "SubscriptionState") +
                                      TestCaller::value("NewValue", "2"))
                  .error,
              0);
    EXPECT_EQ(state(), "2");
    EXPECT_EQ(call("SetProperty", TestCaller::instanceName(path) +
                                      TestCaller::value("PropertyName", "SubscriptionStartTime") +
                                      TestCaller::value("NewValue", "20270131000000.000000+000"))
                  .error,
              7)
        << "read only";
}

TEST_F(SubscriptionOperationsTest, FindOutWhoseAlertsThereAre) {
    const CallResult found =
        call("EnumerateInstances", TestCaller::className("PG_ProviderCapabilities"));
    std::size_t indications = 0;
    for (const XmlElement& instance : found.values) {
        for (const XmlElement& property : instance.children.at(1).children) {
            indications += *property.attribute("NAME") == "ProviderType" &&
                           property.children.at(0).children.at(0).text == "4";
        }
    }
    EXPECT_EQ(indications, 2U);
}

TEST_F(SubscriptionOperationsTest, LeaveTheRestOfTheInteropNamespaceAlone) {
    EXPECT_EQ(call("CreateInstance", _new("CIM_Namespace", _property("Name", "x"))).error, 7);
    EXPECT_EQ(count("CIM_Namespace"), 2U);
}
