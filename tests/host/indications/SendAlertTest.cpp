// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SendAlert.h"

#include <gmock/gmock.h>

#include <future>

#include "AlertListener.h"
#include "ExportMessage.h"
#include "SteppedClock.h"
#include "SubscriptionParts.h"
#include "SubscriptionProperties.h"
#include "TlsServer.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

DeliveryQueues::Alert _alert(const std::string& url) {
    return {url, Parts("TEST_Alert").set("Number", Uint32(7))};
}

std::string _taken(const std::string& body) {
    return encodeExportAnswer(decodeExportRequest(body).messageId);
}

// What came of sending, in words.
std::string _sent(const std::string& url, const HttpTrust& trust = {}) {
    try {
        sendAlert(_alert(url), trust);
    } catch (const ExportRefused& error) {
        return std::string("refused: ") + error.what();
    } catch (const Error& error) {
        return error.what();
    }
    return "sent";
}

std::string _sentTo(const TestCertificate& shown, const TestCertificate& trusted) {
    const TlsServer listener(shown, _taken);
    const CertificateFile file(trusted);
    return _sent(listener.url(), {file.path, false});
}

}  // namespace

TEST(SendAlert, ReachesAListenerOverHttp) {
    std::promise<CIMInstance> taken;
    const AlertListener listener([&](const CIMInstance& alert) { taken.set_value(alert); });
    EXPECT_EQ(_sent(listener.url()), "sent");
    EXPECT_EQ(textOf(taken.get_future().get(), "Number"), "7");
}

TEST(SendAlert, ReachesAListenerOverTls) {
    const TestCertificate authority;
    TestCertificate::Wishes wishes;
    wishes.issuer = &authority;
    std::promise<std::string> body;
    const TlsServer listener(TestCertificate(wishes), [&](const std::string& request) {
        body.set_value(request);
        return _taken(request);
    });
    const CertificateFile file(authority);
    EXPECT_EQ(_sent(listener.url(), {file.path, false}), "sent");
    EXPECT_EQ(textOf(decodeExportRequest(body.get_future().get()).alert, "Number"), "7");
}

TEST(SendAlert, TellsNobodyElse) {
    const TestCertificate authority;
    TestCertificate::Wishes wishes;
    wishes.issuer = &authority;
    wishes.names = "DNS:another.example.com";
    EXPECT_THAT(_sentTo(TestCertificate(wishes), authority), HasSubstr("for another name"));
    wishes = TestCertificate::Wishes();
    wishes.issuer = &authority;
    wishes.validTo = -1;
    EXPECT_THAT(_sentTo(TestCertificate(wishes), authority), HasSubstr("has expired"));
    EXPECT_THAT(_sentTo(TestCertificate(), authority), HasSubstr("nobody who is trusted here"));
}

TEST(SendAlert, SendsNothingInTheClearToAnHttpsUrl) {
    unsigned taken = 0;
    const AlertListener plain([&](const CIMInstance&) { ++taken; });
    EXPECT_THAT(_sent("https" + plain.url().substr(4)), HasSubstr("does not speak TLS"));
    EXPECT_EQ(taken, 0U);
}

TEST(SendAlert, TellsARefusalFromAFailure) {
    const TestCertificate own;
    const CertificateFile file(own);
    const TlsServer refusing(own, [](const std::string& body) {
        return "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"" +
               decodeExportRequest(body).messageId +
               "\" PROTOCOLVERSION=\"1.0\"><SIMPLEEXPRSP><EXPMETHODRESPONSE "
               "NAME=\"ExportIndication\"><ERROR CODE=\"1\" DESCRIPTION=\"no\"/>"
               "</EXPMETHODRESPONSE></SIMPLEEXPRSP></MESSAGE></CIM>";
    });
    EXPECT_EQ(_sent(refusing.url(), {file.path, false}), "refused: CIM status 1: no");
    const TlsServer babbling(own, [](const std::string&) { return "good day"; });
    EXPECT_THAT(_sent(babbling.url(), {file.path, false}), testing::Not(HasSubstr("refused")));
}

TEST(SendAlert, WaitsForNoOtherListener) {
    const SteppedClock clock;  // no second attempt
    SilentServer silent;       // stops in the handshake
    const TestCertificate own;
    const CertificateFile file(own);
    std::promise<void> taken;
    const TlsServer prompt(own, [&](const std::string& body) {
        taken.set_value();
        return _taken(body);
    });
    std::vector<std::string> log;
    {
        DeliveryQueues queues(
            [&](const auto& alert) {
                sendAlert(alert, {file.path, false});
            },
            [&](const std::string& line) { log.push_back(line); });
        queues.push("silent", _alert("https://127.0.0.1:" + std::to_string(silent.port()) + "/"));
        EXPECT_TRUE(silent.awaitClient());
        queues.push("prompt", _alert(prompt.url()));
        EXPECT_EQ(taken.get_future().wait_for(std::chrono::seconds(4)), std::future_status::ready)
            << "before the other one's time is up";
        silent.close();
    }
    EXPECT_THAT(log, ElementsAre(HasSubstr("given up: The server at 127.0.0.1:")));
}
