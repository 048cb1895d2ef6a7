// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// Who may connect, and who is answered.

#include <gmock/gmock.h>
#include <sys/un.h>

#include <future>
#include <vector>

#include "Error.h"
#include "HttpServer.h"
#include "HttpShared.h"
#include "RawClient.h"
#include "TemporaryFolder.h"

using namespace QZ;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string LAST_REQUEST =
    "POST / HTTP/1.1\r\nHost: a\r\nConnection: close\r\nContent-Length: 0\r\n\r\n";

HttpServerOptions _withSocket(const std::string& path) {
    HttpServerOptions options;
    options.listeners.front().socketFile = path;
    return options;
}

void _answer(const HttpRequest& request, HttpReply& reply) {
    reply.write("<" + request.peer + ">");
}

std::string _ask(const RawClient& client) {
    client.send(LAST_REQUEST);
    return client.receive();
}

// Why a server cannot be made.
std::string _refusal(const HttpServerOptions& options) {
    try {
        const HttpServer server(options, _answer);
    } catch (const Error& error) {
        return error.what();
    }
    return "listens";
}

}  // namespace

TEST(HttpListener, KnowsTheUidOfALocalClient) {
    const TemporaryFolder folder;
    const std::string path = folder.file("socket");
    HttpServerOptions options = _withSocket(path);
    std::optional<uid_t> known;
    options.authenticate = [&known](const Login& login, const TakeVerdict&) {
        known = login.localUser;
        return Verdict{Verdict::Accepted, {}, {}};
    };
    {
        const HttpServer server(options, _answer);
        EXPECT_EQ(server.port(), 0);
        EXPECT_THAT(_ask(RawClient(path)), EndsWith("<uid " + std::to_string(getuid()) + ">"));
    }
    EXPECT_EQ(known, getuid());
    EXPECT_NE(access(path.c_str(), F_OK), 0) << "a server that stopped leaves nothing";
}

TEST(HttpListener, TakesThePlaceOfADeadServersSocketOnly) {
    const TemporaryFolder folder;
    const std::string path = folder.file("socket");
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        const int dead = socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_EQ(bind(dead, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        close(dead);
    }
    const HttpServer server(_withSocket(path), _answer);
    EXPECT_THROW(HttpServer(_withSocket(path), _answer), Error);
    EXPECT_THAT(_ask(RawClient(path)), StartsWith("HTTP/1.1 200 "));
}

TEST(HttpListener, LeavesFilesThatAreNoSocketsWhereTheyAre) {
    const TemporaryFolder folder;
    folder.write("notes", "mine");
    ASSERT_EQ(symlink("nowhere", folder.file("link").c_str()), 0);
    for (const char* const name : {"notes", "link"}) {
        EXPECT_THAT(_refusal(_withSocket(folder.file(name))),
                    HasSubstr(folder.file(name) + ": it is there already, and no socket"));
    }
    EXPECT_EQ(folder.read("notes"), "mine");
}

TEST(HttpListener, LeavesNoSocketWhereAnotherCannotBeHad) {
    const TemporaryFolder folder;
    HttpServerOptions options = _withSocket(folder.file("socket"));
    options.listeners.push_back({"", 0, folder.file("missing/socket"), nullptr});
    EXPECT_THAT(_refusal(options), HasSubstr("missing/socket: No such"));
    EXPECT_NE(access(folder.file("socket").c_str(), F_OK), 0);
}

TEST(HttpListener, SaysWhereItCannotListen) {
    const auto refusal = [](const HttpListener& listener) {
        HttpServerOptions options;
        options.listeners = {listener};
        return _refusal(options);
    };
    EXPECT_THAT(refusal({"nonsense", 0, "", nullptr}), HasSubstr("listen on nonsense: it is no "));
    EXPECT_THAT(refusal({"", 0, "/nowhere/socket", nullptr}),
                HasSubstr("/nowhere/socket: No such"));
    EXPECT_THAT(refusal({"", 0, "/tmp/" + std::string(200, 'x'), nullptr}),
                HasSubstr("File name too long"));
    const HttpServer server({}, _answer);
    EXPECT_THAT(
        refusal({"127.0.0.1", server.port(), "", nullptr}),
        HasSubstr("127.0.0.1, port " + std::to_string(server.port()) + ": Address already"));
}

TEST(HttpListener, ServesEachOfItsAddresses) {
    HttpServerOptions options;
    options.listeners = {HttpListener(), HttpListener()};
    const HttpServer server(options, _answer);
    EXPECT_NE(server.port(0), server.port(1));
    EXPECT_THAT(_ask(RawClient(server.port(0))), EndsWith("<127.0.0.1>"));
    EXPECT_THAT(_ask(RawClient(server.port(1))), EndsWith("<127.0.0.1>"));
}

TEST(HttpListener, LeavesRoomForOtherClients) {
    HttpServerOptions options;
    options.limits.connectionsPerClient = 2;
    const HttpServer server(options, _answer);
    std::vector<std::unique_ptr<RawClient>> mine(2);
    for (auto& client : mine) {
        client = std::make_unique<RawClient>(server.port());
    }
    EXPECT_THAT(RawClient(server.port()).receive(), StartsWith("HTTP/1.1 503 "));
    EXPECT_THAT(_ask(RawClient(server.port(), "127.0.0.2")), EndsWith("<127.0.0.2>"));
    for (const auto& client : mine) {
        client->send("POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 0\r\n\r\n");
        EXPECT_THAT(client->receive("<127.0.0.1>"), StartsWith("HTTP/1.1 200 "));
    }
}

TEST(HttpListener, HasRoomForAClientOnceItsConnectionIsClosed) {
    HttpServerOptions options;
    options.limits.connectionsPerClient = 1;
    const HttpServer server(options, _answer);
    for (int i = 0; i < 100; ++i) {
        const RawClient client(server.port());
        client.send("POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 0\r\n\r\n");
        EXPECT_THAT(client.receive("<127.0.0.1>"), StartsWith("HTTP/1.1 200 "));
        client.endSending();
        EXPECT_EQ(client.receive(), "");
    }
}

TEST(HttpListener, CountsAllAddressesOfAHostTogether) {
    HttpServerOptions options;
    options.limits.connectionsPerClient = 1;
    HttpShared shared(options, _answer);
    EXPECT_EQ(shared.admit("2001:db8::1"), HttpShared::Admitted);
    EXPECT_EQ(shared.admit("2001:db8::2"), HttpShared::Refused);
    EXPECT_EQ(shared.admit("2001:db8:0:1::2"), HttpShared::Admitted);
    shared.leave("2001:db8::1");
    shared.leave("2001:db8::2");
    EXPECT_EQ(shared.admit("2001:db8::3"), HttpShared::Admitted);
}

TEST(HttpListener, TakesConnectionsWhileEveryThreadIsHeldUp) {
    HttpServerOptions options;
    options.limits.workers = 2;
    std::promise<void> end;
    const std::shared_future<void> ended = end.get_future().share();
    HttpServer server(options, [&](const HttpRequest&, HttpReply&) { ended.wait(); });
    std::vector<std::unique_ptr<RawClient>> clients(10);
    for (auto& client : clients) {
        client = std::make_unique<RawClient>(server.port());
        client->send(LAST_REQUEST);
    }
    end.set_value();
    for (const auto& client : clients) {
        EXPECT_THAT(client->receive(), StartsWith("HTTP/1.1 200 "));
    }
}

TEST(HttpListener, LetsHandlersMeetWhicheverClientsTheyServe) {
    HttpServerOptions options;
    options.limits.workers = 4;
    std::mutex mutex;
    std::condition_variable came;
    std::size_t inside = 0;
    HttpServer server(options, [&](const HttpRequest& request, HttpReply&) {
        if (request.header("X-Wait")) {
            std::unique_lock<std::mutex> lock(mutex);
            ++inside;
            came.notify_all();
            came.wait(lock, [&] { return inside >= options.limits.workers; });
        }
    });
    // Every second connection only: all those that wait may belong to one share of the clients.
    std::vector<std::unique_ptr<RawClient>> clients(2 * options.limits.workers);
    for (auto& client : clients) {
        client = std::make_unique<RawClient>(server.port());
        // Its place is certain once it was answered.
        client->send("POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 0\r\n\r\n");
        client->receive("\r\n\r\n");
    }
    for (std::size_t i = 0; i < clients.size(); i += 2) {
        clients[i]->send("POST / HTTP/1.1\r\nHost: a\r\nX-Wait: 1\r\nContent-Length: 0\r\n\r\n");
    }
    for (std::size_t i = 0; i < clients.size(); i += 2) {
        EXPECT_THAT(clients[i]->receive("\r\n\r\n"), StartsWith("HTTP/1.1 200 "));
    }
}

TEST(HttpListener, RefusesStrangersBeforeTheirBodies) {
    HttpServerOptions options;
    options.authenticate = [](const Login&, const TakeVerdict&) { return Verdict(); };
    const HttpServer server(options, _answer);
    const RawClient client(server.port());
    client.send(
        "POST / HTTP/1.1\r\nHost: a\r\nExpect: 100-continue\r\nContent-Length: 4000000\r\n\r\n");
    EXPECT_THAT(client.receive("\r\n\r\n"), StartsWith("HTTP/1.1 401 "));
}
