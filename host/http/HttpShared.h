// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "HttpLoop.h"
#include "HttpServer.h"

namespace QZ {

class HttpConnection;

// What the connections of a server share: its options, the loops that serve them, and the thread
// that watches over the handler's time. Any thread, but for start and stopWatching.
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
    std::size_t countConnections() const;
    std::set<std::shared_ptr<HttpConnection>> connections() const;

    // Behind each HttpLoop::enterHandler: somebody watches from now on.
    void wakeWatcher();

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

}  // namespace QZ
