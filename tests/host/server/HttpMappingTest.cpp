// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpMapping.h"

#include <gtest/gtest.h>

#include "TestCaller.h"

namespace QZ {
namespace {

// The request with one header changed; an empty value takes it away.
HttpRequest _with(const std::string& name, const std::string& value) {
    HttpRequest request =
        TestCaller::request("EnumerateInstances", TestCaller::className("TEST_Several"));
    for (auto at = request.headers.begin(); at != request.headers.end(); ++at) {
        if (at->first == name) {
            request.headers.erase(at);
            break;
        }
    }
    if (!value.empty()) {
        request.headers.emplace_back(name, value);
    }
    return request;
}

class HttpMappingTest : public testing::Test {
protected:
    MemoryReply answer(const HttpRequest& request) {
        MemoryReply reply;
        server.handler.handle(request, reply);
        return reply;
    }
    std::string failure(const HttpRequest& request) {
        const MemoryReply reply = answer(request);
        EXPECT_EQ(reply.answer.body, "");
        return std::to_string(reply.answer.status) + " " + reply.header("CIMError");
    }

    TestCaller server;
};

TEST_F(HttpMappingTest, AnswersWithItsHeaders) {
    const MemoryReply reply = answer(_with("Accept-Language", "de, en;q=0.5"));
    EXPECT_EQ(reply.answer.status, 200);
    EXPECT_EQ(reply.header("CIMOperation"), "MethodResponse");
    EXPECT_EQ(reply.header("Content-Type"), "application/xml; charset=utf-8");
    EXPECT_EQ(reply.logText, "EnumerateInstances TEST_Several");
}

TEST_F(HttpMappingTest, QuotesOfMethodsInTheLogWhatFits) {
    const std::string method(10'000, 'm');
    EXPECT_EQ(answer(TestCaller::request(method, "")).logText.substr(0, 212),
              std::string(197, 'm') + "... CIM status ");
}

TEST_F(HttpMappingTest, TakesXmlByEitherNameInUtf8) {
    EXPECT_EQ(answer(_with("Content-Type", "text/xml")).answer.status, 200);
    EXPECT_EQ(answer(_with("Content-Type", "text/xml; charset=\"UTF-8\"")).answer.status, 200);
    EXPECT_EQ(answer(_with("Content-Type", "")).answer.status, 200);
    EXPECT_EQ(failure(_with("Content-Type", "text/plain")), "415 (none)");
    EXPECT_EQ(failure(_with("Content-Type", "text/xml; charset=latin1")), "415 (none)");
    EXPECT_EQ(failure(_with("Content-Type", "text/xml; charset = latin1")), "415 (none)");
    EXPECT_EQ(failure(_with("Content-Type", "text/xml; charset=")), "415 (none)");
    EXPECT_EQ(failure(_with("Content-Type", "text/xml; charset=\"\"")), "415 (none)");
    EXPECT_EQ(failure(_with("Content-Type", "text/xml; charset")), "415 (none)");
    EXPECT_EQ(failure(_with("Content-Type", "text/xml; charset=utf-8; charset=x")), "415 (none)");
    EXPECT_EQ(answer(_with("Content-Type", "text/xml;a=\";charset=x\"")).answer.status, 200);
}

TEST_F(HttpMappingTest, WantsTheOperationsHeaders) {
    EXPECT_EQ(failure(_with("CIMOperation", "")), "400 (none)");
    EXPECT_EQ(failure(_with("CIMOperation", "MethodResponse")), "501 unsupported-operation");
    EXPECT_EQ(failure(_with("CIMBatch", "x")), "501 multiple-requests-unsupported");
    EXPECT_EQ(failure(_with("CIMProtocolVersion", "2.0")), "501 unsupported-protocol-version");
    EXPECT_EQ(answer(_with("CIMProtocolVersion", "1.0")).answer.status, 200);
}

TEST_F(HttpMappingTest, WantsHeadersAndBodyToAgree) {
    EXPECT_EQ(failure(_with("CIMMethod", "")), "400 header-mismatch");
    EXPECT_EQ(failure(_with("CIMMethod", "GetInstance")), "400 header-mismatch");
    EXPECT_EQ(failure(_with("CIMObject", "root/cimv2")), "400 header-mismatch");
    EXPECT_EQ(failure(_with("CIMObject", "root/tavqz%00b")), "400 header-mismatch");
    EXPECT_EQ(answer(_with("CIMObject", "ROOT%2Ftavqz")).answer.status, 200);
}

TEST_F(HttpMappingTest, WantsHeadersThatStandTwiceToAgree) {
    const auto twice = [](const std::string& name, const std::string& value) {
        HttpRequest request = _with("X", "y");
        request.headers.emplace_back(name, value);
        return request;
    };
    EXPECT_EQ(failure(twice("CIMMethod", "GetInstance")), "400 header-mismatch");
    EXPECT_EQ(failure(twice("cimobject", "root/cimv2")), "400 header-mismatch");
    EXPECT_EQ(answer(twice("CIMMethod", "EnumerateInstances")).answer.status, 200);
}

TEST_F(HttpMappingTest, TellsWhatIsNoRequest) {
    HttpRequest request = _with("X", "y");
    request.body = "<CIM";
    EXPECT_EQ(failure(request), "400 request-not-well-formed");
    request.body = "<OTHER/>";
    EXPECT_EQ(failure(request), "400 request-not-valid");
}

TEST_F(HttpMappingTest, TakesExtendedRequestsUnderTheirPrefix) {
    HttpRequest request =
        TestCaller::request("EnumerateInstances", TestCaller::className("TEST_Several"));
    request.method = "M-POST";
    request.headers = {{"Content-Type", "application/xml"},
                       {"Man", "http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=73"},
                       {"73-CIMOperation", "MethodCall"},
                       {"73-CIMMethod", "EnumerateInstances"},
                       {"73-CIMObject", "root/tavqz"}};
    const MemoryReply reply = answer(request);
    EXPECT_EQ(reply.answer.status, 200);
    EXPECT_EQ(reply.header("73-CIMOperation"), "MethodResponse");
    EXPECT_EQ(reply.header("Ext"), "");
    EXPECT_EQ(reply.header("CIMOperation"), "(none)");
    request.body = "<CIM";
    EXPECT_EQ(answer(request).header("73-CIMError"), "request-not-well-formed");
    request.headers.erase(request.headers.begin() + 1);
    EXPECT_EQ(failure(request), "510 (none)");
}

TEST_F(HttpMappingTest, FindsItsMappingAmongOtherExtensions) {
    const std::string mapping = "http://www.dmtf.org/cim/mapping/http/v1.0";
    const auto status = [&](const std::vector<std::string>& declarations,
                            const std::string& prefix = "73-") {
        HttpRequest request = _with("Content-Type", "text/xml");
        request.method = "M-POST";
        request.headers = {{prefix + "CIMOperation", "MethodCall"},
                           {prefix + "CIMMethod", "EnumerateInstances"},
                           {prefix + "CIMObject", "root/tavqz"}};
        for (const std::string& declaration : declarations) {
            request.headers.emplace_back("Man", declaration);
        }
        return answer(request).answer.status;
    };
    EXPECT_EQ(status({mapping + ";ns=73"}), 200);
    EXPECT_EQ(status({"\"" + mapping + "\" ; NS = 73"}), 200);
    EXPECT_EQ(status({mapping}, ""), 200);
    EXPECT_EQ(status({"http://a/;ns=10", mapping + ";ns=73"}), 200);
    EXPECT_EQ(status({mapping + ";ns=73", "http://a/;ns=10"}), 200);
    EXPECT_EQ(status({"\"http://a/,b;c\";ns=10, " + mapping + ";ns=73"}), 200);
    // The number is another extension's.
    EXPECT_EQ(status({mapping + ", http://a/;ns=73"}), 400);
    EXPECT_EQ(status({mapping + ", http://a/;ns=73"}, ""), 200);
    EXPECT_EQ(status({mapping + "5;ns=73"}), 510);
    EXPECT_EQ(status({"http://a/?" + mapping + ";ns=73"}), 510);
    EXPECT_EQ(status({mapping + ";ns=x"}), 510);
    EXPECT_EQ(status({mapping + ";ns="}), 510);
    EXPECT_EQ(status({}), 510);
}

TEST_F(HttpMappingTest, EndsAnswersWithTrailersThatAreHeaders) {
    HttpRequest request = _with("X", "y");
    EXPECT_EQ(HttpMapping(request).trailers(2, "no: 5 %\r\n\xC3\xA4"),
              (HttpHeaders{{"CIMStatusCode", "2"},
                           {"CIMStatusCodeDescription", "no:%205%20%25%0D%0A%C3%A4"}}));
    request.method = "M-POST";
    request.headers.emplace_back("Man", "http://www.dmtf.org/cim/mapping/http/v1.0;ns=73");
    EXPECT_EQ(HttpMapping(request).trailers(1, "x"),
              (HttpHeaders{{"73-CIMStatusCode", "1"}, {"73-CIMStatusCodeDescription", "x"}}));
}

TEST_F(HttpMappingTest, TellsWhatAMethodOfAClassIsAnsweredWith) {
    HttpRequest request = _with("CIMMethod", "Reboot");
    request.body =
        "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"42\" PROTOCOLVERSION=\"1.0\">"
        "<SIMPLEREQ><METHODCALL NAME=\"Reboot\"><LOCALCLASSPATH><LOCALNAMESPACEPATH>"
        "<NAMESPACE NAME=\"root\"/></LOCALNAMESPACEPATH><CLASSNAME NAME=\"TEST_Several\"/>"
        "</LOCALCLASSPATH></METHODCALL></SIMPLEREQ></MESSAGE></CIM>";
    const MemoryReply reply = answer(request);
    EXPECT_EQ(reply.answer.status, 200);
    EXPECT_NE(reply.answer.body.find("<METHODRESPONSE NAME=\"Reboot\"><ERROR CODE=\"7\""),
              std::string::npos);
}

TEST_F(HttpMappingTest, PreparesTheAnswerOfAProviderThatHangs) {
    const MemoryReply reply = answer(_with("X", "y"));
    ASSERT_TRUE(reply.late);
    const HttpAnswer late = reply.late(QZ::HttpReply::TookTooLong);
    const CallResult result = TestCaller::result("EnumerateInstances", late.body);
    EXPECT_EQ(late.status, 200);
    EXPECT_EQ(result.error, 1);
    EXPECT_EQ(result.description, "the provider did not answer within 60 seconds");
    const HttpAnswer last = reply.late(QZ::HttpReply::ServerStops);
    EXPECT_EQ(TestCaller::result("EnumerateInstances", last.body).error, 28);
}

TEST(AcceptLanguage, IsReadAsAListWithTheBestFirst) {
    const std::string header = "en;q=0.5, de-AT, , *;q=0.1, n\xC3\xB6";
    const auto list = parseAcceptLanguage(&header);
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list.getLanguageTag(0).toString(), "de-AT");
    EXPECT_EQ(list.getLanguageTag(1).toString(), "en");
    EXPECT_EQ(parseAcceptLanguage(nullptr).size(), 0U);
}

}  // namespace
}  // namespace QZ
