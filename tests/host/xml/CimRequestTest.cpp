// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "BuildPaths.h"
#include "CimAnswer.h"
#include "CimRequestWriter.h"
#include "CimResponseWriter.h"
#include "TestRequest.h"

namespace QZ {
namespace {

const std::filesystem::path REQUESTS = TAVQZ_SOURCE_DIR "/tests/host/xml/requests";

std::string _read(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

CimRequest _request(const std::string& method) {
    return decodeRequest(_read(REQUESTS / (method + ".xml")), XmlLimits());
}

}  // namespace

TEST(CimRequest, IsReadForEveryMethod) {
    std::set<std::string> methods;
    for (const auto& entry : std::filesystem::directory_iterator(REQUESTS)) {
        const std::string method = entry.path().stem().string();
        EXPECT_EQ(_request(method).call.method, method);
        methods.insert(method);
    }
    EXPECT_EQ(methods.size(), 18U);
}

TEST(CimRequest, IsTheSameWhenWrittenAndReadAgain) {
    for (const auto& entry : std::filesystem::directory_iterator(REQUESTS)) {
        const CimRequest request = decodeRequest(_read(entry.path()), XmlLimits());
        const std::string text = encodeRequest(request);
        EXPECT_EQ(encodeRequest(decodeRequest(text, XmlLimits())), text) << entry.path();
    }
}

TEST(CimRequest, HoldsWhatTheClientGave) {
    const CimRequest request = _request("EnumerateInstances");
    EXPECT_EQ(request.call.messageId, "7");
    EXPECT_EQ(request.nameSpace.getString(), Pegasus::String("root/tavqz"));
    EXPECT_EQ(request.className.getString(), Pegasus::String("TEST_A"));
    EXPECT_EQ(request.localOnly, false);
    EXPECT_EQ(request.deepInheritance, std::nullopt);
    ASSERT_EQ(request.propertyList.size(), 1U);
    EXPECT_EQ(_request("PullInstancesWithPath").maxObjectCount, 10U);
    EXPECT_EQ(_request("PullInstancesWithPath").enumerationContext, "ctx");
    EXPECT_EQ(_request("SetProperty").newValue.texts.at(0), "new");
    EXPECT_EQ(_request("GetQualifier").qualifierName, "Key");
    EXPECT_TRUE(_request("EnumerateClassNames").className.isNull());
}

TEST(CimAnswer, HoldsWhatTheServerWrote) {
    const CimRequest request = _request("ModifyInstance");
    const Pegasus::CIMInstance& instance = request.instance;
    std::string text;
    CimResponseWriter writer(request.call, [&](std::string_view bytes) { text += bytes; });
    writer.namedInstance(instance.getPath(), instance, XmlForm());
    writer.parameter("EndOfSequence", "boolean", "TRUE");
    writer.end();
    const CimAnswer answer = decodeAnswer(text, request.call);
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_TRUE(answer.instances[0].identical(instance));
    EXPECT_TRUE(answer.instances[0].getPath() == instance.getPath());
    EXPECT_EQ(answer.parameters.at("EndOfSequence"), "TRUE");
}

TEST(CimAnswer, IsAnErrorWhereTheServerSaysSo) {
    const CimCall call{"7", "GetClass"};
    try {
        decodeAnswer(CimResponseWriter::error(call, 6, "no <such> class"), call);
        FAIL();
    } catch (const Pegasus::CIMException& error) {
        EXPECT_EQ(error.getCode(), Pegasus::CIM_ERR_NOT_FOUND);
    }
    EXPECT_THROW(decodeAnswer("<html/>", call), NoCimAnswer);
    EXPECT_THROW(decodeAnswer("", call), NoCimAnswer);
    EXPECT_THROW(decodeAnswer(CimResponseWriter::error(call, 6, ""), {"8", "GetClass"}),
                 NoCimAnswer);
}

TEST(CimAnswer, IsNoneWhereItsPartsDoNotGoTogether) {
    const CimCall call{"7", "EnumerateInstances"};
    std::string text;
    CimResponseWriter writer(call, [&](std::string_view bytes) { text += bytes; });
    writer.element(
        "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"B\"/>"
        "<INSTANCE CLASSNAME=\"A\"/></VALUE.NAMEDINSTANCE>");
    writer.end();
    EXPECT_THROW(decodeAnswer(text, call), NoCimAnswer);
}

}  // namespace QZ
