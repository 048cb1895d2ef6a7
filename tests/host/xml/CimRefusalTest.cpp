// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "TestRequest.h"

namespace QZ {
namespace {

const std::string NOT_VALID = "400 request-not-valid";
const std::string NOT_WELL_FORMED = "400 request-not-well-formed";

std::string _replaced(std::string text, const std::string& what, const std::string& with) {
    text.replace(text.find(what), what.size(), with);
    return text;
}

std::string _instance(const std::string& content) {
    return requestText("CreateInstance", parameterText("NewInstance", "<INSTANCE CLASSNAME=\"A\">" +
                                                                          content + "</INSTANCE>"));
}

std::string _get(const std::string& keys) {
    return requestText(
        "GetInstance",
        parameterText("InstanceName", "<INSTANCENAME CLASSNAME=\"A\">" + keys + "</INSTANCENAME>"));
}

std::string _key(const std::string& attributes, const std::string& text) {
    return "<KEYBINDING NAME=\"K\"><KEYVALUE " + attributes + ">" + text +
           "</KEYVALUE></KEYBINDING>";
}

std::string _nested(int depth) {
    std::string path = _key("VALUETYPE=\"string\"", "x");
    for (int i = 0; i < depth; ++i) {
        path.insert(0, "<KEYBINDING NAME=\"K\"><VALUE.REFERENCE><INSTANCENAME CLASSNAME=\"A\">");
        path.append("</INSTANCENAME></VALUE.REFERENCE></KEYBINDING>");
    }
    return _get(path);
}

const std::string CALL = requestText("EnumerateClassNames", "");

}  // namespace

TEST(CimRefusal, TellsOtherVersions) {
    EXPECT_EQ(outcome(CALL), "");
    EXPECT_EQ(outcome(_replaced(CALL, "CIMVERSION=\"2.0\"", "CIMVERSION=\"3.0\"")),
              "501 unsupported-cim-version");
    EXPECT_EQ(outcome(_replaced(CALL, "DTDVERSION=\"2.0\"", "DTDVERSION=\"3.0\"")),
              "501 unsupported-dtd-version");
    EXPECT_EQ(outcome(_replaced(CALL, "PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"2.0\"")),
              "501 unsupported-protocol-version");
    for (const char* version : {"2", "2.", "2.x", "", ".2", "2.0.0.0", "2..0"}) {
        EXPECT_EQ(outcome(_replaced(CALL, "CIMVERSION=\"2.0\"",
                                    std::string("CIMVERSION=\"") + version + "\"")),
                  NOT_VALID)
            << version;
    }
    EXPECT_EQ(outcome(_replaced(CALL, "DTDVERSION=\"2.0\"", "DTDVERSION=\"2.3.1\"")), "");
}

TEST(CimRefusal, TakesOneRequestAtATime) {
    std::string text = _replaced(CALL, "<SIMPLEREQ>", "<MULTIREQ><SIMPLEREQ>");
    text = _replaced(text, "</SIMPLEREQ>", "</SIMPLEREQ></MULTIREQ>");
    EXPECT_EQ(outcome(text), "501 multiple-requests-unsupported");
}

TEST(CimRefusal, HoldsRequestsToTheDtd) {
    EXPECT_EQ(outcome(_replaced(CALL, "<MESSAGE ", "<MESSAGE X=\"\" ")), NOT_VALID);
    EXPECT_EQ(outcome(_replaced(CALL, " ID=\"7\"", "")), NOT_VALID);
    EXPECT_EQ(outcome(_replaced(CALL, "<SIMPLEREQ>", "<SIMPLEREQ>text")), NOT_VALID);
    EXPECT_EQ(outcome(_replaced(CALL, "<NAMESPACE NAME=\"root\"/>", "<X/>")), NOT_VALID);
    EXPECT_EQ(outcome("<CIM/>"), NOT_VALID);
    EXPECT_EQ(outcome("<X/>"), NOT_VALID);
    EXPECT_EQ(outcome(requestText("GetClass", "<LOCALNAMESPACEPATH/>")), NOT_VALID);
    EXPECT_EQ(outcome(_instance("<VALUE/>")), NOT_VALID);
    EXPECT_EQ(outcome(_instance("<PROPERTY NAME=\"P\"/>")), NOT_VALID);
    EXPECT_EQ(
        outcome(_instance("<PROPERTY NAME=\"P\" TYPE=\"string\"><VALUE/><VALUE/></PROPERTY>")),
        NOT_VALID);
    EXPECT_EQ(outcome(_instance("<PROPERTY NAME=\"P\" TYPE=\"string\"><VALUE/></PROPERTY>"
                                "<QUALIFIER NAME=\"Q\" TYPE=\"string\"/>")),
              NOT_VALID);
    EXPECT_EQ(outcome(_instance("<PROPERTY NAME=\"P\" TYPE=\"string\"><VALUE/></PROPERTY>")), "");
    EXPECT_EQ(outcome(_get("<KEYVALUE>x</KEYVALUE><KEYVALUE>y</KEYVALUE>")), NOT_VALID);
    EXPECT_EQ(outcome(_get("<KEYVALUE>x</KEYVALUE>")), "");
}

TEST(CimRefusal, TakesTheValuesThatTheDtdLists) {
    const auto property = [](const std::string& attributes) {
        return outcome(_instance("<PROPERTY NAME=\"P\" " + attributes + "/>"));
    };
    EXPECT_EQ(property("TYPE=\"uint8\" PROPAGATED=\"true\""), "");
    EXPECT_EQ(property("TYPE=\"UINT8\""), NOT_VALID);
    EXPECT_EQ(property("TYPE=\"uint\""), NOT_VALID);
    EXPECT_EQ(property("TYPE=\"\""), NOT_VALID);
    EXPECT_EQ(property("TYPE=\"boolean|string\""), NOT_VALID);
    EXPECT_EQ(property("TYPE=\"reference\""), NOT_VALID);
    EXPECT_EQ(property("TYPE=\"string\" PROPAGATED=\"maybe\""), NOT_VALID);
    EXPECT_EQ(property("TYPE=\"string\" EmbeddedObject=\"thing\""), NOT_VALID);
    EXPECT_EQ(property("TYPE=\"string\" EmbeddedObject=\"object\""), "CIM 4");
    EXPECT_EQ(outcome(_instance("<QUALIFIER NAME=\"Q\" TYPE=\"string\" OVERRIDABLE=\"1\"/>")),
              NOT_VALID);
}

TEST(CimRefusal, RefusesCallsItDoesNotKnow) {
    EXPECT_EQ(outcome(requestText("Reboot", "")), "CIM 7");
    EXPECT_EQ(outcome(requestText("GetClass", "")), "CIM 4");
    const std::string className = parameterText("ClassName", "<CLASSNAME NAME=\"A\"/>");
    EXPECT_EQ(outcome(requestText("GetClass", className)), "");
    EXPECT_EQ(outcome(requestText("GetClass", className + className)), "CIM 4");
    EXPECT_EQ(outcome(requestText("GetClass", className + parameterText("X", ""))), "CIM 4");
    EXPECT_EQ(outcome(requestText("GetClass",
                                  className + parameterText("LocalOnly", "<VALUE>1</VALUE>"))),
              "CIM 4");
    EXPECT_EQ(outcome(_replaced(CALL, "NAME=\"root\"", "NAME=\"ro ot\"")), "CIM 3");
    std::string extrinsic = _replaced(CALL, "<IMETHODCALL", "<METHODCALL");
    extrinsic = _replaced(extrinsic, "</IMETHODCALL", "</METHODCALL");
    extrinsic = _replaced(extrinsic, "<LOCALNAMESPACEPATH", "<LOCALCLASSPATH><LOCALNAMESPACEPATH");
    extrinsic = _replaced(extrinsic, "</LOCALNAMESPACEPATH>",
                          "</LOCALNAMESPACEPATH><CLASSNAME NAME=\"A\"/></LOCALCLASSPATH>");
    EXPECT_EQ(outcome(extrinsic), "CIM 7");
}

TEST(CimRefusal, RefusesObjectsWhosePartsDoNotGoTogether) {
    EXPECT_EQ(
        outcome(requestText("ModifyInstance",
                            parameterText("ModifiedInstance",
                                          "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"B\"/>"
                                          "<INSTANCE CLASSNAME=\"A\"/></VALUE.NAMEDINSTANCE>"))),
        "CIM 4");
    const std::string two = "<VALUE.ARRAY><VALUE>1</VALUE><VALUE>2</VALUE></VALUE.ARRAY>";
    const std::string array = "<PROPERTY.ARRAY NAME=\"P\" TYPE=\"uint8\" ARRAYSIZE=\"";
    EXPECT_EQ(outcome(_instance(array + "2\">" + two + "</PROPERTY.ARRAY>")), "");
    EXPECT_EQ(outcome(_instance(array + "3\">" + two + "</PROPERTY.ARRAY>")), "CIM 4");
    EXPECT_EQ(outcome(_instance(array + "x\">" + two + "</PROPERTY.ARRAY>")), "CIM 4");
    EXPECT_EQ(outcome(_instance(
                  "<PROPERTY.REFERENCE NAME=\"P\"><VALUE.REFERENCE><INSTANCEPATH><NAMESPACEPATH>"
                  "<HOST>a b/c</HOST><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/>"
                  "</LOCALNAMESPACEPATH></NAMESPACEPATH><INSTANCENAME CLASSNAME=\"A\"/>"
                  "</INSTANCEPATH></VALUE.REFERENCE></PROPERTY.REFERENCE>")),
              "CIM 4");
    const std::string property = "<PROPERTY NAME=\"P\" TYPE=\"string\"/>";
    EXPECT_EQ(outcome(_instance(property + property)), "CIM 4");
}

// Each is compared with all before it.
TEST(CimRefusal, BoundsPropertiesAndKeys) {
    const auto many = [](int count, const std::string& begin, const std::string& end) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text.append(begin).append(std::to_string(i)).append(end);
        }
        return text;
    };
    const auto properties = [&many](int count) {
        return outcome(_instance(many(count, "<PROPERTY TYPE=\"string\" NAME=\"P", "\"/>")));
    };
    EXPECT_EQ(properties(512), "");
    EXPECT_EQ(properties(513), "CIM 4");
    const auto keys = [&many](int count) {
        return outcome(
            _get(many(count, "<KEYBINDING NAME=\"K", "\"><KEYVALUE>x</KEYVALUE></KEYBINDING>")));
    };
    EXPECT_EQ(keys(512), "");
    EXPECT_EQ(keys(513), "CIM 4");
}

TEST(CimRefusal, ReadsKeysByTheirType) {
    EXPECT_EQ(outcome(_get(_key("VALUETYPE=\"numeric\"", "12"))), "");
    EXPECT_EQ(outcome(_get(_key("VALUETYPE=\"numeric\"", "-12"))), "");
    EXPECT_EQ(outcome(_get(_key("VALUETYPE=\"numeric\"", "twelve"))), "CIM 4");
    EXPECT_EQ(outcome(_get(_key("VALUETYPE=\"numeric\"", ""))), "CIM 4");
    EXPECT_EQ(outcome(_get(_key("TYPE=\"uint8\"", "256"))), "CIM 4");
    EXPECT_EQ(outcome(_get(_key("TYPE=\"boolean\"", "maybe"))), "CIM 4");
    EXPECT_EQ(outcome(_get(_key("TYPE=\"word\"", "x"))), NOT_VALID);
    EXPECT_EQ(outcome(_get(_key("VALUETYPE=\"string\" TYPE=\"uint8\"", "1"))), "CIM 4");
    EXPECT_EQ(outcome(_get(_key("VALUETYPE=\"numeric\" TYPE=\"string\"", "1"))), "CIM 4");
    EXPECT_EQ(outcome(_get(_key("VALUETYPE=\"string\" TYPE=\"datetime\"", "x"))), "");
    EXPECT_EQ(outcome(_get(_key("VALUETYPE=\"word\"", "x"))), NOT_VALID);
    const std::string key = _key("", "x");
    EXPECT_EQ(outcome(_get(key + _replaced(key, "\"K\"", "\"k\""))), "CIM 4");

    const auto keyType = [](const std::string& attributes, const std::string& text) {
        const CimRequest request = decodeRequest(_get(_key(attributes, text)), XmlLimits());
        return request.instanceName.getKeyBindings()[0].getType();
    };
    EXPECT_EQ(keyType("", "1"), Pegasus::CIMKeyBinding::STRING);
    EXPECT_EQ(keyType("TYPE=\"uint8\"", "1"), Pegasus::CIMKeyBinding::NUMERIC);
    EXPECT_EQ(keyType("TYPE=\"boolean\"", "TRUE"), Pegasus::CIMKeyBinding::BOOLEAN);
    EXPECT_EQ(keyType("VALUETYPE=\"string\" TYPE=\"string\"", "1"), Pegasus::CIMKeyBinding::STRING);
}

TEST(CimRefusal, BoundsPathsWithinPaths) {
    EXPECT_EQ(outcome(_nested(4)), "");
    EXPECT_EQ(outcome(_nested(5)), "CIM 4");
    EXPECT_EQ(outcome(_nested(18)), "CIM 4");
    std::string longKey = _nested(1);
    longKey = _replaced(longKey, ">x<", ">" + std::string(70000, 'x') + "<");
    EXPECT_EQ(outcome(longKey), "CIM 4");
}

TEST(CimRefusal, TellsWhatIsNoXml) {
    EXPECT_EQ(outcome(""), NOT_WELL_FORMED);
    EXPECT_EQ(outcome("<CIM"), NOT_WELL_FORMED);
    EXPECT_EQ(outcome(CALL + "<CIM/>"), NOT_WELL_FORMED);
}

}  // namespace QZ
