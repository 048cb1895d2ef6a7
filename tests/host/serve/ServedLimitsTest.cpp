// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>

#include <memory>
#include <set>
#include <vector>

#include "BasicCredentials.h"
#include "RawClient.h"
#include "ServeKeys.h"
#include "ServedProcess.h"
#include "TestCaller.h"

// Each limit, from the line in a file to what a client sees of it.

namespace {

const std::string SLOW_HASH = "$6$rounds=999999999$salt$";
const std::vector<const char*> ADDRESSES{"127.0.0.2", "127.0.0.3", "127.0.0.4", "127.0.0.5",
                                         "127.0.0.6"};

// A request's bytes, with more lines in its header.
std::string _call(const ServedProcess& server, const std::string& method,
                  const std::string& parameters, const std::string& more = {}) {
    std::string bytes = TestCaller::bytesOf(TestCaller::request(method, parameters));
    return bytes.insert(bytes.find("Host:"), server.authorization() + more);
}

std::string _enumeration(const ServedProcess& server, const std::string& name,
                         const std::string& more = {}) {
    return _call(server, "EnumerateInstances", TestCaller::className("TEST_" + name), more);
}

// "503", "error 27" of CIM, or "nothing".
std::string _outcome(const std::string& answer) {
    const std::string error = "<ERROR CODE=\"";
    const std::size_t at = answer.find(error);
    if (at != std::string::npos) {
        return "error " + answer.substr(at + error.size(),
                                        answer.find('"', at + error.size()) - at - error.size());
    }
    return answer.empty() ? "nothing" : answer.substr(9, 3);
}

std::string _ask(const ServedProcess& server, const std::string& request,
                 const char* from = "127.0.0.1") {
    const RawClient client(server.port(), from);
    client.send(request);
    return _outcome(client.receive());
}

std::string _afterBytes(const ServedProcess& server, const std::string& bytes) {
    return _ask(server, bytes);
}

std::string _idle(const ServedProcess& server) {
    return _afterBytes(server, "");
}
std::string _header(const ServedProcess& server) {
    return _afterBytes(server, "POST / HT");
}
std::string _body(const ServedProcess& server) {
    return _afterBytes(server, "POST / HTTP/1.1\r\nHost: a\r\n" + server.authorization() +
                                   "Content-Length: 5\r\n\r\n");
}
std::string _answer(const ServedProcess& server) {
    return _ask(server, _enumeration(server, "Waits"));
}

// Of an answer without an end that it does not read.
std::string _sending(const ServedProcess& server) {
    const RawClient client(server.port());
    client.send(_enumeration(server, "Endless"));
    pollfd waiting{client.descriptor(), 0, 0};
    poll(&waiting, 1, 10'000);
    return (waiting.revents & (POLLHUP | POLLERR)) != 0 ? "reset" : "nothing";
}

std::string _stop(const ServedProcess& server) {
    const RawClient client(server.port());
    client.send(_enumeration(server, "Waits"));
    server.awaitProvider();
    server.tell(SIGTERM);
    return _outcome(client.receive());
}

std::string _longHeader(const ServedProcess& server) {
    return _ask(server, _enumeration(server, "Several", "X: " + std::string(3000, 'x') + "\r\n"));
}

std::string _longBody(const ServedProcess& server) {
    QZ::HttpRequest request =
        TestCaller::request("EnumerateInstances", TestCaller::className("TEST_Several"));
    request.body += std::string(2000, ' ');
    std::string bytes = TestCaller::bytesOf(request);
    return _ask(server, bytes.insert(bytes.find("Host:"), server.authorization()));
}

// A reference to a reference to ...
std::string _deepXml(const ServedProcess& server) {
    std::string name = TestCaller::named("TEST_Several", "Number", "1");
    const char* const outer =
        "<INSTANCENAME CLASSNAME=\"TEST_Several\"><KEYBINDING NAME=\"Number\"><VALUE.REFERENCE>";
    for (int i = 0; i < 5; ++i) {
        name.insert(0, outer).append("</VALUE.REFERENCE></KEYBINDING></INSTANCENAME>");
    }
    return _ask(server, _call(server, "GetInstance", TestCaller::instanceName(name))) == "400"
               ? "400"
               : "understood";
}

std::string _muchXml(const ServedProcess& server) {
    return _ask(server, _call(server, "EnumerateInstances",
                              TestCaller::className("TEST_Several") +
                                  TestCaller::properties(std::vector<std::string>(30, "Number"))));
}

std::string _secondConnection(const ServedProcess& server) {
    const RawClient first(server.port());
    return _ask(server, _enumeration(server, "Several"), "127.0.0.2");
}

std::string _secondOfAClient(const ServedProcess& server) {
    const RawClient first(server.port());
    const std::string same = _ask(server, _enumeration(server, "Several"));
    return same + ", another " + _ask(server, _enumeration(server, "Several"), "127.0.0.2");
}

std::string _secondRequest(const ServedProcess& server) {
    const RawClient first(server.port());
    first.send(_enumeration(server, "Waits"));
    server.awaitProvider();
    return _ask(server, _enumeration(server, "Several"));
}

// Beside one that is answered, how many of two are told to come again at once: the other is told by
// the server when it stops.
std::string _waiting(const ServedProcess& server) {
    const RawClient first(server.port());
    first.send(_enumeration(server, "Waits"));
    server.awaitProvider();
    const RawClient second(server.port());
    const RawClient third(server.port());
    pollfd both[2] = {{second.descriptor(), POLLIN, 0}, {third.descriptor(), POLLIN, 0}};
    second.send(_enumeration(server, "Several"));
    third.send(_enumeration(server, "Several"));
    poll(both, 2, 10'000);
    server.tell(SIGTERM);
    int refused = 0;
    for (const RawClient* client : {&second, &third}) {
        const std::string answer = client->receive();
        EXPECT_EQ("503", _outcome(answer));
        refused += answer.find("\r\nRetry-After:") != std::string::npos ? 1 : 0;
    }
    return std::to_string(refused) + " refused";
}

std::string _afterALoss(const ServedProcess& server) {
    const std::string lost = _ask(server, _enumeration(server, "Waits"));
    return lost + ", " + _ask(server, _enumeration(server, "Several"));
}

std::string _secondEnumeration(const ServedProcess& server) {
    const std::string open =
        _call(server, "OpenEnumerateInstances", TestCaller::className("TEST_Several"));
    const std::string first = _ask(server, open);
    return first + ", " + _ask(server, open);
}

std::string _largeEnumeration(const ServedProcess& server) {
    return _ask(server,
                _call(server, "OpenEnumerateInstances", TestCaller::className("TEST_Many")));
}

struct Limit {
    const char* key;
    const char* value;
    const char* others;  // lines that leave it the only one that bites
    std::string (*see)(const ServedProcess& server);
    const char* limited;
    const char* unlimited;  // as it is with the standard value; null where that takes its time
};

const Limit LIMITS[] = {
    {"idle-time", "0.05", "", _idle, "nothing", nullptr},
    {"header-time", "0.05", "", _header, "408", nullptr},
    {"body-time", "0.05", "", _body, "408", nullptr},
    {"answer-time", "0.05", "", _answer, "error 1", nullptr},
    {"sending-time", "0.05", "", _sending, "reset", nullptr},
    {"stop-time", "0.05", "", _stop, "error 28", nullptr},
    {"header-size", "1024", "", _longHeader, "431", "200"},
    {"body-size", "1024", "", _longBody, "413", "200"},
    {"xml-depth", "16", "", _deepXml, "400", "understood"},
    {"xml-nodes", "16", "", _muchXml, "400", "200"},
    {"connections", "1", "", _secondConnection, "503", "200"},
    {"connections-per-client", "1", "", _secondOfAClient, "503, another 200", "200, another 200"},
    {"requests", "1", "waiting-requests = 0\n", _secondRequest, "503", "200"},
    {"waiting-requests", "1", "requests = 1\nstop-time = 0.05\n", _waiting, "1 refused", nullptr},
    {"lost-threads", "0", "requests = 1\nwaiting-requests = 0\nanswer-time = 0.2\n", _afterALoss,
     "error 1, 503", "error 1, 200"},
    {"enumerations", "1", "", _secondEnumeration, "200, error 27", "200, 200"},
    {"enumerated-objects", "10", "", _largeEnumeration, "error 27", "200"},
};

// Times that are not the one that is looked at are long.
std::string _patience(const std::string& config) {
    std::string lines;
    for (const char* name : {"idle", "header", "body", "answer", "sending", "stop"}) {
        const std::string key = std::string(name) + "-time = ";
        lines += config.find(key) == std::string::npos ? key + "600\n" : "";
    }
    return lines;
}

std::string _see(const Limit& limit, bool isLimited) {
    const std::string config =
        limit.others + (isLimited ? std::string(limit.key) + " = " + limit.value + "\n" : "");
    const ServedProcess server(config + _patience(config));
    return limit.see(server);
}

class ServedLimits : public testing::TestWithParam<Limit> {};

}  // namespace

TEST_P(ServedLimits, AreWhatTheFileSays) {
    EXPECT_EQ(GetParam().limited, _see(GetParam(), true));
    if (GetParam().unlimited) {
        EXPECT_EQ(GetParam().unlimited, _see(GetParam(), false)) << "whatever the file says";
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, ServedLimits, testing::ValuesIn(LIMITS), [](const auto& tested) {
    std::string name = tested.param.key;
    for (std::size_t at; (at = name.find('-')) != std::string::npos;) {
        name.replace(at, 1, "_");
    }
    return name;
});

TEST(ServedChecks, HaveAThreadEach) {
    const ServedProcess few("checks = 1\n");
    const ServedProcess many("checks = 9\n");
    EXPECT_EQ(8U, many.threads() - few.threads());
}

// While a password is looked at without an end, one waits.
TEST(ServedChecks, WaitOnlyInSuchANumber) {
    const TemporaryFolder folder;
    std::string users;
    for (const char* address : ADDRESSES) {
        users.append("u").append(address).append(":").append(SLOW_HASH).append(":read\n");
    }
    const std::string file = folder.write("users", users);
    ASSERT_EQ(0, chmod(file.c_str(), S_IRUSR | S_IWUSR));
    const ServedProcess server("checks = 1\nwaiting-checks = 1\ncredentials = " + file + "\n");
    std::vector<std::unique_ptr<RawClient>> clients;
    std::vector<pollfd> waiting;
    for (const char* address : ADDRESSES) {
        clients.push_back(std::make_unique<RawClient>(server.port(), address));
        clients.back()->send("POST / HTTP/1.1\r\nHost: a\r\nAuthorization: " +
                             QZ::basicAuthorization({std::string("u") + address, "guess"}) +
                             "\r\nContent-Length: 0\r\n\r\n");
        waiting.push_back({clients.back()->descriptor(), POLLIN, 0});
    }
    // One of the five is looked at, and one waits.
    for (int refused = 0; refused < 3; ++refused) {
        ASSERT_LT(0, poll(waiting.data(), waiting.size(), 10'000));
        for (std::size_t i = 0; i < waiting.size(); ++i) {
            if (waiting[i].revents != 0) {
                EXPECT_EQ("503", _outcome(clients[i]->receive()));
                waiting[i].fd = -1;
                break;
            }
        }
    }
    EXPECT_EQ(std::string::npos, server.log().find("may ask")) << "it is not the file that is busy";
}

TEST(ServedLimitsTable, NamesEveryLimit) {
    std::set<std::string> tested{"checks", "waiting-checks"};
    for (const Limit& limit : LIMITS) {
        tested.insert(limit.key);
    }
    std::set<std::string> known;
    for (const QZ::ServeKey& key : QZ::serveKeys()) {
        if (key.type == "N" || key.type == "BYTES" || key.type == "SECONDS") {
            known.insert(key.name);
        }
    }
    EXPECT_EQ(known, tested);
}
