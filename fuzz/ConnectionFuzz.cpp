// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <sys/socket.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "BuildPaths.h"
#include "HttpConnection.h"
#include "InProcessServer.h"
#include "MofParser.h"
#include "RequestHandler.h"

// What comes over one connection, to a server with the model and without providers, never leaves
// the process: the connection ends when all is answered, and what was answered begins as HTTP does.
// The first byte says who asks, and how the rest arrives.

namespace {

using namespace QZ;

// Between the client, which is here, and the connection. Room for the longest input.
constexpr int BUFFER = 1 << 20;

struct Wish {
    explicit Wish(std::uint8_t bits)
        : isLetIn((bits & 1U) == 0), isInTwoParts((bits & 2U) != 0), isEndless((bits & 4U) != 0) {}
    bool isLetIn;
    bool isInTwoParts;
    bool isEndless;  // the client does not say that nothing more will come
};

class Server {
public:
    Server()
        : _providers(_schema(), [](const std::string&) { return std::string("/nowhere"); }),
          _handler(_providers, {}) {}

    std::shared_ptr<HttpShared> shared(const Wish& wish) {
        HttpServerOptions options;
        options.limits.idle = options.limits.header = options.limits.body =
            std::chrono::milliseconds(wish.isEndless ? 1 : 60'000);
        options.limits.sending = std::chrono::milliseconds(1);
        options.limits.bodyBytes = 8192;
        options.authenticate = [wish](const Login&, const TakeVerdict&) {
            return wish.isLetIn
                       ? Verdict{Verdict::Accepted, {"anna", Rights::all(), Caller::Password}, {}}
                       : Verdict{};
        };
        return std::make_shared<HttpShared>(std::move(options),
                                            [this](const HttpRequest& request, HttpReply& reply) {
                                                _handler.handle(request, reply);
                                            });
    }

private:
    static Schema _schema() { return Schema::load(TAVQZ_BINARY_DIR "/share/tavqz/schema"); }

    InProcessServer _providers;
    RequestHandler _handler;
};

void _send(int client, const char* data, std::size_t size) {
    if (::send(client, data, size, MSG_DONTWAIT | MSG_NOSIGNAL) < 0 && size != 0) {
        // The connection has ended.
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Server server;
    if (size == 0) {
        return 0;
    }
    const Wish wish(data[0]);
    const char* const bytes = reinterpret_cast<const char*>(data + 1);
    const std::size_t rest = size - 1;
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends) != 0) {
        std::abort();
    }
    Descriptor client(ends[0]);
    Descriptor socket(ends[1]);
    ::setsockopt(socket.get(), SOL_SOCKET, SO_SNDBUF, &BUFFER, sizeof BUFFER);
    const auto shared = server.shared(wish);
    const auto& loop = shared->loop();
    Login login;
    login.peer = "127.0.0.1";
    shared->admit(login.peer);
    auto wire = HttpWire::make(socket.get());
    const auto connection =
        HttpConnection::make(shared, loop, std::move(socket), std::move(wire), login);
    shared->add(connection);
    connection->start(false);
    const std::size_t first = wish.isInTwoParts ? rest / 2 : rest;
    _send(client.get(), bytes, first);
    loop->io.poll();
    _send(client.get(), bytes + first, rest - first);
    if (!wish.isEndless) {
        ::shutdown(client.get(), SHUT_WR);
    } else {
        // Its time may be over by now, and then nothing more happens.
        if (!shared->connections().empty()) {
            loop->io.run_one();
        }
        client = Descriptor();
    }
    loop->endWithoutWork();
    loop->io.run();
    char answer[5] = "HTTP";
    if (client.isOpen() && ::recv(client.get(), answer, 4, MSG_DONTWAIT) > 0 &&
        std::string(answer) != "HTTP") {
        std::abort();
    }
    if (!shared->connections().empty()) {
        std::abort();
    }
    return 0;
}
