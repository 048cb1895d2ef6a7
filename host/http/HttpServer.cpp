// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpServer.h"

#include <future>
#include <system_error>
#include <utility>

#include "Error.h"
#include "HttpAcceptor.h"
#include "HttpConnection.h"
#include "TlsIdentity.h"

namespace QZ {

using std::chrono::milliseconds;

namespace {

// For threads that need not go on, to end.
constexpr milliseconds LEAVING_TIME{1000};

}  // namespace

class HttpServer::Core {
public:
    Core(HttpServerOptions options, Handler handler)
        : shared(std::make_shared<HttpShared>(std::move(options), std::move(handler))),
          acceptor(shared->options.listeners) {}

    void start() {
        acceptor.start(
            [shared = shared](Descriptor socket, Login login, const HttpListener& listener) {
                _take(shared, std::move(socket), std::move(login), listener);
            });
        // Last, as it makes do with fewer threads than it wants.
        shared->start();
    }

    void close() {
        if (shared->isStopping.exchange(true)) {
            return;
        }
        acceptor.stop();
        for (const auto& connection : shared->connections()) {
            connection->stop();
        }
        shared->loop()->endWithoutWork();
    }

    // While the threads are still there to do it: a turn that comes with the end of others would be
    // for nothing.
    void refuseWhoWaits() const {
        const auto end = std::chrono::steady_clock::now() + LEAVING_TIME;
        std::vector<std::future<void>> refusals;
        for (const auto& connection : shared->closeTurns()) {
            refusals.push_back(connection->refuseTurn());
        }
        for (const auto& refusal : refusals) {
            refusal.wait_until(end);
        }
    }

    const std::shared_ptr<HttpShared> shared;
    HttpAcceptor acceptor;

private:
    static void _take(const std::shared_ptr<HttpShared>& shared, Descriptor socket, Login login,
                      const HttpListener& listener) {
        const std::string client = login.peer;
        const HttpShared::Admission admission = shared->admit(client);
        if (admission == HttpShared::Dropped) {
            return;
        }
        std::shared_ptr<HttpConnection> connection;
        try {
            auto wire =
                listener.tls ? listener.tls->accept(socket.get()) : HttpWire::make(socket.get());
            connection = HttpConnection::make(shared, shared->loop(), std::move(socket),
                                              std::move(wire), std::move(login));
            shared->add(connection);
        } catch (...) {
            shared->leave(client);
            throw;
        }
        connection->start(admission == HttpShared::Refused);
    }
};

HttpServer::HttpServer(HttpServerOptions options, Handler handler)
    : _core(std::make_unique<Core>(std::move(options), std::move(handler))) {
    try {
        _core->start();
    } catch (const std::system_error& error) {
        stop(milliseconds(0));
        throw Error("Cannot start the server's threads: " + std::string(error.what()) +
                    "; allow it more processes and more memory");
    } catch (...) {
        stop(milliseconds(0));
        throw;
    }
}

HttpServer::~HttpServer() {
    try {
        stop(milliseconds(0));
    } catch (const std::exception&) {
        // For want of memory; whatever is left goes with the process.
    }
}

std::uint16_t HttpServer::port(std::size_t listener) const {
    return _core->acceptor.port(listener);
}

std::size_t HttpServer::lostWorkers() const {
    return _core->shared->workers().lostThreads();
}

bool HttpServer::stop(milliseconds time) {
    HttpShared& shared = *_core->shared;
    HttpWorkers& workers = shared.workers();
    _core->close();
    const bool ended = workers.waitForEnd(std::chrono::steady_clock::now() + time).has_value();
    _core->refuseWhoWaits();
    shared.stopWatching();
    shared.loop()->expireAll();
    shared.loop()->io.stop();
    workers.end();
    // Where time was over, what the threads did not come to is done here: a handler that never goes
    // would keep the server.
    const auto lost = workers.waitForEnd(std::chrono::steady_clock::now() + LEAVING_TIME);
    if (lost != 0U) {
        return false;
    }
    shared.loop()->io.restart();
    shared.loop()->io.poll();
    return ended;
}

}  // namespace QZ
