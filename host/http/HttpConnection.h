// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>

#include "HttpServer.h"

namespace QZ {

class HttpConnection;

// What the connections of a server share, and the threads that serve them: each waits for whatever
// comes next on any connection and carries it out, the handler included.
class HttpShared : public std::enable_shared_from_this<HttpShared> {
public:
    HttpShared(HttpServerOptions given, HttpServer::Handler answers)
        : options(std::move(given)), handler(std::move(answers)) {}

    // Starts the threads.
    void start();

    void add(const std::shared_ptr<HttpConnection>& connection);
    void remove(const std::shared_ptr<HttpConnection>& connection);
    std::set<std::shared_ptr<HttpConnection>> connections() const;

    // The thread that is in a handler does not come back in time: another takes its place.
    void loseThread();
    // It came back after all, on which it calls this: it ends when it has done what it is at.
    void returnThread();
    std::size_t lostThreads() const;

    // Waits until every thread ended, the lost ones aside. False when the time was over.
    bool waitForEnd(std::chrono::steady_clock::time_point end) const;

    const HttpServerOptions options;
    const HttpServer::Handler handler;
    boost::asio::io_context io;
    std::atomic<bool> isStopping{false};

private:
    void _startThread();
    void _run();

    mutable std::mutex _mutex;
    mutable std::condition_variable _threadEnded;
    std::set<std::shared_ptr<HttpConnection>> _connections;
    std::size_t _threads = 0;
    std::size_t _lost = 0;
};

// A client's connection: reads a request, has it answered, sends the answer, and again. It is used
// on its socket's strand, but where a function says otherwise.
class HttpConnection {
public:
    virtual ~HttpConnection() = default;

    static std::shared_ptr<HttpConnection> make(std::shared_ptr<HttpShared> shared,
                                                boost::asio::ip::tcp::socket socket);

    virtual void awaitRequest() = 0;
    // Answers with that status alone, and closes.
    virtual void refuse(int status) = 0;
    // Lets an answer that is under way leave, and then goes. Any thread.
    virtual void stop() = 0;
};

}  // namespace QZ
