// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ExportMessage.h"

#include <gmock/gmock.h>

using namespace QZ;
using namespace Pegasus;
using testing::HasSubstr;

namespace {

CIMInstance _alert() {
    CIMInstance alert{CIMName("TEST_Alert")};
    alert.addProperty(CIMProperty(CIMName("Description"), CIMValue(String("<&>"))));
    alert.addProperty(CIMProperty(CIMName("PerceivedSeverity"), CIMValue(Uint16(4))));
    alert.setPath(CIMObjectPath(String(), "root/tavqz", "TEST_Alert"));
    return alert;
}

template <class Thrown, class Call>
std::string _thrown(Call call) {
    try {
        call();
    } catch (const Thrown& error) {
        return error.what();
    }
    return "nothing";
}

std::string _answer(const std::string& id, const std::string& content) {
    return "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"" + id +
           "\" PROTOCOLVERSION=\"1.0\"><SIMPLEEXPRSP><EXPMETHODRESPONSE "
           "NAME=\"ExportIndication\">" +
           content + "</EXPMETHODRESPONSE></SIMPLEEXPRSP></MESSAGE></CIM>";
}

}  // namespace

TEST(ExportMessage, IsWhatTheStandardSays) {
    EXPECT_EQ(
        encodeExportRequest({"7", _alert()}),
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
        "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"7\" PROTOCOLVERSION=\"1.0\">"
        "<SIMPLEEXPREQ><EXPMETHODCALL NAME=\"ExportIndication\">"
        "<EXPPARAMVALUE NAME=\"NewIndication\"><INSTANCE CLASSNAME=\"TEST_Alert\">"
        "<PROPERTY NAME=\"Description\" TYPE=\"string\"><VALUE>&lt;&amp;&gt;</VALUE></PROPERTY>"
        "<PROPERTY NAME=\"PerceivedSeverity\" TYPE=\"uint16\"><VALUE>4</VALUE></PROPERTY>"
        "</INSTANCE></EXPPARAMVALUE></EXPMETHODCALL></SIMPLEEXPREQ></MESSAGE></CIM>\n");
    EXPECT_THAT(exportRequestHeaders(),
                testing::ElementsAre(testing::Pair("Content-Type", HasSubstr("application/xml")),
                                     testing::Pair("CIMExport", "MethodRequest"),
                                     testing::Pair("CIMProtocolVersion", "1.0"),
                                     testing::Pair("CIMExportMethod", "ExportIndication")));
}

TEST(ExportMessage, IsReadAsItWasWritten) {
    const ExportRequest request = decodeExportRequest(encodeExportRequest({"7", _alert()}));
    EXPECT_EQ(request.messageId, "7");
    ASSERT_EQ(request.alert.getPropertyCount(), 2U);
    EXPECT_EQ(request.alert.getClassName().getString(), String("TEST_Alert"));
    EXPECT_TRUE(request.alert.getProperty(0).getValue().equal(CIMValue(String("<&>"))));
    EXPECT_TRUE(request.alert.getProperty(1).getValue().equal(CIMValue(Uint16(4))));
    EXPECT_NO_THROW(checkExportAnswer(encodeExportAnswer("7"), "7"));
}

TEST(ExportMessage, IsNothingElse) {
    const std::string good = encodeExportRequest({"7", _alert()});
    const auto without = [&good](const std::string& part, const std::string& other) {
        std::string text = good;
        text.replace(text.find(part), part.size(), other);
        return _thrown<NoExportMessage>([&] { decodeExportRequest(text); });
    };
    EXPECT_THAT(_thrown<NoExportMessage>([] { decodeExportRequest("hello"); }), HasSubstr("1"));
    EXPECT_THAT(_thrown<NoExportMessage>([] { decodeExportRequest("<CIM/>"); }),
                HasSubstr("CIM holds no MESSAGE"));
    EXPECT_THAT(_thrown<NoExportMessage>([] { decodeExportRequest("<HTML/>"); }),
                HasSubstr("not HTML"));
    EXPECT_THAT(without("NAME=\"ExportIndication\"", "NAME=\"Other\""), HasSubstr("only Export"));
    EXPECT_THAT(without("NAME=\"NewIndication\"", "NAME=\"Other\""), HasSubstr("only Export"));
    EXPECT_NE(without(" ID=\"7\"", ""), "nothing");
    EXPECT_NE(without(">4<", ">four<"), "nothing");
    EXPECT_NE(without("CLASSNAME=\"TEST_Alert\"", "CLASSNAME=\"no name\""), "nothing");
}

TEST(ExportMessage, TellsARefusalFromNoAnswer) {
    EXPECT_EQ(_thrown<ExportRefused>([] {
                  checkExportAnswer(_answer("7", "<ERROR CODE=\"1\" DESCRIPTION=\"not today\"/>"),
                                    "7");
              }),
              "CIM status 1: not today");
    EXPECT_THAT(_thrown<NoExportMessage>([] { checkExportAnswer(_answer("8", ""), "7"); }),
                HasSubstr("another message"));
    EXPECT_NO_THROW(checkExportAnswer(_answer("7", ""), "7"));
}
