// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <vector>

#include "Authenticator.h"
#include "BasicCredentials.h"
#include "CredentialsFile.h"
#include "HttpServer.h"
#include "PasswordHash.h"
#include "RawClient.h"
#include "TemporaryFolder.h"
#include "TestCaller.h"

// Every operation by every kind of caller, through the whole server.

namespace QZ {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

enum Kind {
    Nobody,
    WrongPassword,
    Reader,
    Writer,
    Subscriber,
    LocalUser,
    LocalStranger,
    CertificateHolder,
    RemotePlain,
};

constexpr struct {
    Kind kind;
    const char* user;  // who sends a password
    const char* password;
    const char* rights;  // null: is not let in
    const char* refusal = "HTTP/1.1 401 ";
} CALLERS[] = {
    {Nobody, "", "", nullptr},
    {WrongPassword, "guesser", "wrong", nullptr},
    {Reader, "reader", "secret", "read"},
    {Writer, "writer", "secret", "write"},
    {Subscriber, "subscriber", "secret", "subscribe"},
    {LocalUser, "", "", "read,write,subscribe"},
    {LocalStranger, "", "", ""},
    {CertificateHolder, "", "", "write"},
    {RemotePlain, "writer", "secret", nullptr, "HTTP/1.1 403 "},
};

struct Operation {
    const char* method;
    std::string parameters;
    Right needs;
    std::string space = "root/tavqz";
};

std::string instance(const std::string& parameter, const std::string& name) {
    return "<IPARAMVALUE NAME=\"" + parameter + "\"><INSTANCE CLASSNAME=\"" + name +
           "\"><PROPERTY NAME=\"Id\" TYPE=\"string\"><VALUE>x</VALUE></PROPERTY></INSTANCE>"
           "</IPARAMVALUE>";
}

std::string modified(const std::string& pathClass, const std::string& instanceClass) {
    return "<IPARAMVALUE NAME=\"ModifiedInstance\"><VALUE.NAMEDINSTANCE>" +
           TestCaller::named(pathClass, "Id", "x") + "<INSTANCE CLASSNAME=\"" + instanceClass +
           "\"/></VALUE.NAMEDINSTANCE></IPARAMVALUE>";
}

std::vector<Operation> operations() {
    const std::string several = TestCaller::className("TEST_Several");
    const std::string settings = "TEST_Settings";
    const std::string filter = "CIM_IndicationFilter";
    const auto name = [](const std::string& of) {
        return TestCaller::instanceName(TestCaller::named(of, "Id", "x"));
    };
    const auto property = [&](const std::string& of) {
        return name(of) + TestCaller::value("PropertyName", "Id");
    };
    const std::string context = TestCaller::value("EnumerationContext", "1");
    const std::string count = TestCaller::value("MaxObjectCount", "1");
    return {
        {"EnumerateInstances", several, Right::Read},
        {"EnumerateInstances", TestCaller::className(filter), Right::Read, "root/interop"},
        {"EnumerateInstanceNames", several, Right::Read},
        {"GetInstance", name(settings), Right::Read},
        {"ModifyInstance", modified(settings, settings), Right::Write},
        {"ModifyInstance", modified(filter, filter), Right::Subscribe, "root/interop"},
        {"CreateInstance", instance("NewInstance", settings), Right::Write},
        {"CreateInstance", instance("NewInstance", filter), Right::Subscribe, "root/interop"},
        {"CreateInstance", instance("NewInstance", "CIM_ListenerDestinationCIMXML"),
         Right::Subscribe, "root/interop"},
        {"CreateInstance", instance("NewInstance", "CIM_IndicationSubscription"), Right::Subscribe,
         "root/interop"},
        {"DeleteInstance", name(settings), Right::Write},
        {"DeleteInstance", name(filter), Right::Subscribe, "root/interop"},
        {"GetProperty", property(settings), Right::Read},
        {"SetProperty", property(settings), Right::Write},
        {"SetProperty", property(filter), Right::Subscribe, "root/interop"},
        {"EnumerateClassNames", "", Right::Read},
        {"EnumerateClasses", "", Right::Read},
        {"GetClass", several, Right::Read},
        {"EnumerateQualifiers", "", Right::Read},
        {"GetQualifier", TestCaller::value("QualifierName", "Key"), Right::Read},
        {"OpenEnumerateInstances", several, Right::Read},
        {"OpenEnumerateInstancePaths", several, Right::Read},
        {"PullInstancesWithPath", context + count, Right::Read},
        {"PullInstancePaths", context + count, Right::Read},
        {"CloseEnumeration", context, Right::Read},
    };
}

class WhoMayTest : public testing::Test {
protected:
    WhoMayTest() {
        const std::string file = folder.file("credentials");
        const std::string hash = hashPassword("secret");
        for (const auto& caller : CALLERS) {
            if (caller.kind == Reader || caller.kind == Writer || caller.kind == Subscriber) {
                storeCredentials(file, caller.user, hash, parseRights(caller.rights));
            }
        }
        const auto silent = [](const std::string&) {};
        WrongPasswords::Limits limits;
        limits.ofUser.free = limits.ofAddress.free = 1000;
        authenticator = std::make_unique<Authenticator>(
            std::make_shared<CredentialsFile>(file, silent), RightGroups(), Authenticator::Limits(),
            silent, std::make_shared<WrongPasswords>(limits));
        HttpServerOptions options;
        options.authenticate = [this](const Login& given, const TakeVerdict& later) {
            Login login = given;
            login.localUser = localUser;
            login.isEncrypted = kind == CertificateHolder;
            login.certificateName = kind == CertificateHolder ? "writer" : "";
            login.peer = kind == RemotePlain ? "192.0.2.7" : login.peer;
            return authenticator->authenticate(login, later);
        };
        server = std::make_unique<HttpServer>(options,
                                              [this](const HttpRequest& request, HttpReply& reply) {
                                                  cim.handler.handle(request, reply);
                                              });
    }

    // All that comes back.
    std::string ask(const Operation& operation, Kind who) {
        kind = who;
        const auto& caller = CALLERS[kind];
        localUser.reset();
        if (kind == LocalUser || kind == LocalStranger) {
            localUser = kind == LocalUser ? geteuid() : 4'000'000'000U;
        }
        HttpRequest request =
            TestCaller::request(operation.method, operation.parameters, operation.space);
        if (*caller.user != '\0') {
            request.headers.emplace_back("Authorization",
                                         basicAuthorization({caller.user, caller.password}));
        }
        std::string bytes = "POST /cimom HTTP/1.1\r\nHost: a\r\nConnection: close\r\n";
        for (const auto& [name, value] : request.headers) {
            bytes.append(name).append(": ").append(value).append("\r\n");
        }
        bytes.append("Content-Length: ").append(std::to_string(request.body.size()));
        const RawClient client(server->port());
        client.send(bytes + "\r\n\r\n" + request.body);
        return client.receive();
    }

    const TemporaryFolder folder;
    Kind kind = Nobody;
    std::optional<uid_t> localUser;
    std::unique_ptr<Authenticator> authenticator;
    TestCaller cim;
    std::unique_ptr<HttpServer> server;
};

TEST_F(WhoMayTest, EachOperationNeedsItsRight) {
    for (const Operation& operation : operations()) {
        for (const auto& caller : CALLERS) {
            SCOPED_TRACE(std::string(operation.method) + " by caller " +
                         std::to_string(caller.kind) + ", " + operation.parameters);
            const std::string answer = ask(operation, caller.kind);
            if (!caller.rights) {
                EXPECT_THAT(answer, StartsWith(caller.refusal));
                continue;
            }
            EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 "));
            const auto rights = parseRights(caller.rights).value_or(Rights::none());
            const bool isDenied = answer.find("<ERROR CODE=\"2\"") != std::string::npos;
            EXPECT_EQ(!rights.has(operation.needs), isDenied) << answer;
        }
    }
}

TEST_F(WhoMayTest, ARefusalNamesTheCallerAndTheRight) {
    const Operation create{"CreateInstance", instance("NewInstance", "TEST_Settings"),
                           Right::Write};
    EXPECT_THAT(ask(create, Reader), HasSubstr("reader has no right to write"));
}

TEST_F(WhoMayTest, APathOfOneClassCannotHideAnother) {
    for (const Operation& operation :
         {Operation{"ModifyInstance", modified("TEST_Settings", "CIM_IndicationFilter"),
                    Right::Write},
          Operation{"ModifyInstance", modified("CIM_IndicationFilter", "TEST_Settings"),
                    Right::Write}}) {
        const std::string answer = ask(operation, Subscriber);
        // Refused in one way or the other, before any provider.
        EXPECT_TRUE(answer.find("has no right to write") != std::string::npos ||
                    answer.find("<ERROR CODE=\"4\"") != std::string::npos)
            << answer;
    }
}

}  // namespace
}  // namespace QZ
