// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpServer.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>
#include <utility>

#include "HttpConnection.h"

namespace QZ {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;
using std::chrono::milliseconds;

namespace {

// Before a connection is taken again that could not be taken, for want of descriptors for example.
constexpr milliseconds ACCEPT_PAUSE{100};

// For threads that need not go on, to end.
constexpr milliseconds LEAVING_TIME{1000};

}  // namespace

// Takes connections.
class HttpServer::Core : public std::enable_shared_from_this<HttpServer::Core> {
public:
    Core(HttpServerOptions options, Handler handler)
        : shared(std::make_shared<HttpShared>(std::move(options), std::move(handler))),
          _acceptor(asio::make_strand(shared->loops().front()->io)),
          _pause(_acceptor.get_executor()) {
        _listen();
    }

    std::uint16_t port() const { return _port; }

    void accept() {
        const std::shared_ptr<HttpLoop> loop = shared->nextLoop();
        _acceptor.async_accept(
            HttpStrand(loop->io.get_executor()),
            [self = shared_from_this(), loop](error_code error, HttpSocket socket) {
                self->_onAccepted(error, loop, std::move(socket));
            });
    }

    void close() {
        if (shared->isStopping.exchange(true)) {
            return;  // what is posted to loops that ended would never go
        }
        asio::post(_acceptor.get_executor(), [self = shared_from_this()] {
            error_code ignored;
            self->_acceptor.close(ignored);
            self->_pause.cancel();
            for (const auto& connection : self->shared->connections()) {
                connection->stop();
            }
            for (const auto& loop : self->shared->loops()) {
                loop->endWithoutWork();
            }
        });
    }

    const std::shared_ptr<HttpShared> shared;

private:
    void _listen() {
        const auto& options = shared->options;
        error_code error;
        const auto address = asio::ip::make_address(options.address, error);
        if (!error) {
            const tcp::endpoint endpoint(address, options.port);
            _acceptor.open(endpoint.protocol(), error);
            error ? error : _acceptor.set_option(tcp::acceptor::reuse_address(true), error);
            error ? error : _acceptor.bind(endpoint, error);
            error ? error : _acceptor.listen(tcp::acceptor::max_listen_connections, error);
            _port = error ? options.port : _acceptor.local_endpoint(error).port();
        }
        if (error) {
            throw Error("Cannot listen on " + options.address + ", port " +
                        std::to_string(options.port) + ": " + error.message());
        }
    }

    void _onAccepted(error_code error, const std::shared_ptr<HttpLoop>& loop, HttpSocket socket) {
        if (shared->isStopping) {
            return;
        }
        if (error) {
            _pause.expires_after(ACCEPT_PAUSE);
            _pause.async_wait([self = shared_from_this()](error_code ended) {
                if (!ended) {
                    self->accept();
                }
            });
            return;
        }
        const auto executor = socket.get_executor();
        const std::size_t open = shared->countConnections();
        // Beyond twice the limit not even a refusal is worth a descriptor.
        if (open < 2 * shared->options.limits.connections) {
            const auto connection = HttpConnection::make(shared, loop, std::move(socket));
            shared->add(connection);
            const bool isRefused = open >= shared->options.limits.connections;
            asio::post(executor, [connection, isRefused] {
                isRefused ? connection->refuse(503) : connection->awaitRequest();
            });
        }
        accept();
    }

    tcp::acceptor _acceptor;
    asio::steady_timer _pause;
    std::uint16_t _port = 0;
};

HttpServer::HttpServer(HttpServerOptions options, Handler handler)
    : _core(std::make_shared<Core>(std::move(options), std::move(handler))) {
    _core->accept();
    _core->shared->start();
}

HttpServer::~HttpServer() {
    try {
        stop(milliseconds(0));
    } catch (const std::exception&) {
        // For want of memory; whatever is left goes with the process.
    }
}

std::uint16_t HttpServer::port() const {
    return _core->port();
}

std::size_t HttpServer::lostWorkers() const {
    std::size_t lost = 0;
    for (const auto& loop : _core->shared->loops()) {
        lost += loop->lostThreads();
    }
    return lost;
}

bool HttpServer::stop(milliseconds time) {
    HttpShared& shared = *_core->shared;
    _core->close();
    const auto end = std::chrono::steady_clock::now() + time;
    bool ended = true;
    for (const auto& loop : shared.loops()) {
        ended = loop->waitForEnd(end) && ended;
    }
    shared.stopWatching();
    for (const auto& loop : shared.loops()) {
        loop->stop();
    }
    // Where time was over, what the threads did not come to is done here: a handler that never goes
    // would keep the server.
    for (const auto& loop : shared.loops()) {
        if (loop->waitForEnd(std::chrono::steady_clock::now() + LEAVING_TIME)) {
            loop->io.restart();
            loop->io.poll();
        }
    }
    return ended && lostWorkers() == 0;
}

}  // namespace QZ
