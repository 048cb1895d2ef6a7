// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "HttpServer.h"

namespace QZ {

class HttpConnection;

// A share of the connections, and the threads that serve it: one waits for whatever comes next on
// any of its connections and carries it out, the handler included. Only where that takes a while
// does another thread of the loop go on with the others.
class HttpLoop : public std::enable_shared_from_this<HttpLoop> {
public:
    // So many threads; and how many may be lost before no more are made.
    HttpLoop(std::size_t threads, std::size_t mayBeLost)
        : _initial(threads), _mayBeLost(mayBeLost) {}

    void start();

    // Around each call of the handler, on the thread that makes it.
    void enterHandler() { ++_inHandler; }
    void leaveHandler() {
        --_inHandler;
        ++_handled;
    }

    // Lets another thread go on where the handler has been at one request since the last call, from
    // whoever watches. Whether a handler is called at all.
    bool watch();

    // The thread that is in a handler does not come back in time: another takes its place.
    void loseThread();
    // It came back after all, on which it calls this: it ends when it has done what it is at.
    void returnThread();
    std::size_t lostThreads() const;

    // From now on the threads end when no connection is left.
    void endWithoutWork() { _work.reset(); }

    // Waits until every thread ended, the lost ones aside. False when the time was over.
    bool waitForEnd(std::chrono::steady_clock::time_point end) const;

    // One thread at a time is woken for what comes.
    boost::asio::io_context io{1};

private:
    void _startThread();
    void _run();

    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> _work{
        io.get_executor()};
    const std::size_t _initial;
    const std::size_t _mayBeLost;
    std::atomic<unsigned> _inHandler{0};
    std::atomic<unsigned> _handled{0};
    unsigned _lastHandled = 0;  // the watcher's
    mutable std::mutex _mutex;
    mutable std::condition_variable _threadEnded;
    std::size_t _threads = 0;
    std::size_t _lost = 0;
};

// What the connections of a server share.
class HttpShared {
public:
    HttpShared(HttpServerOptions given, HttpServer::Handler answers);

    // Starts the threads, and the one that watches them.
    void start();

    // The loop for the next connection.
    const std::shared_ptr<HttpLoop>& nextLoop() { return _loops[_next++ % _loops.size()]; }
    const std::vector<std::shared_ptr<HttpLoop>>& loops() const { return _loops; }

    void add(const std::shared_ptr<HttpConnection>& connection);
    void remove(const std::shared_ptr<HttpConnection>& connection);
    std::set<std::shared_ptr<HttpConnection>> connections() const;

    // Around each call of the handler: wakes the one that watches.
    void enterHandler(HttpLoop& loop);

    // Ends the thread that watches.
    void stopWatching();

    const HttpServerOptions options;
    const HttpServer::Handler handler;
    std::atomic<bool> isStopping{false};

private:
    void _watch();

    std::vector<std::shared_ptr<HttpLoop>> _loops;
    std::atomic<std::size_t> _next{0};
    mutable std::mutex _mutex;
    std::set<std::shared_ptr<HttpConnection>> _connections;
    std::condition_variable _wakeWatcher;
    std::atomic<bool> _watcherSleeps{false};
    bool _watcherEnds = false;
    std::thread _watcher;
};

// A client's connection: reads a request, has it answered, sends the answer, and again. It is used
// on its socket's strand, but where a function says otherwise.
class HttpConnection {
public:
    virtual ~HttpConnection() = default;

    static std::shared_ptr<HttpConnection> make(std::shared_ptr<HttpShared> shared,
                                                std::shared_ptr<HttpLoop> loop,
                                                boost::asio::ip::tcp::socket socket);

    virtual void awaitRequest() = 0;
    // Answers with that status alone, and closes.
    virtual void refuse(int status) = 0;
    // Lets an answer that is under way leave, and then goes. Any thread.
    virtual void stop() = 0;
};

}  // namespace QZ
