// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "HttpLoop.h"
#include "HttpServer.h"
#include "HttpWorkers.h"

namespace QZ {

class HttpConnection;

// What the connections of a server share: its options, the loop and threads that serve them, and
// the thread that watches over the handler's time. Any thread, but for start and stopWatching.
class HttpShared {
public:
    HttpShared(HttpServerOptions given, HttpServer::Handler answers);

    // Starts the threads, and the one that watches them.
    void start();

    const std::shared_ptr<HttpLoop>& loop() const { return _loop; }
    HttpWorkers& workers() const { return *_workers; }

    // Counts a connection of that peer's client (Login.h), whatever is done with it, until it
    // leaves.
    enum Admission {
        Admitted,
        Refused,  // one too many: worth an answer
        Dropped,  // worth nothing any more; not counted
    };
    Admission admit(const std::string& peer);
    void leave(const std::string& peer);

    void add(const std::shared_ptr<HttpConnection>& connection);
    void remove(const std::shared_ptr<HttpConnection>& connection);
    std::set<std::shared_ptr<HttpConnection>> connections() const;

    // Whether a connection's request may be answered now, or when its turn comes, for which it
    // waits; or there are too many. It takes up the turn that came, where it still can. Each turn
    // is ended, by who is done with it.
    enum Turn { Now, Later, Never };
    Turn takeTurn(const std::shared_ptr<HttpConnection>& connection);
    bool takeUpTurn(const std::shared_ptr<HttpConnection>& connection);
    void endTurn();
    // A turn is gone with its thread; until that comes back, which ends it.
    void loseTurn();
    void regainTurn();
    // There are no turns any more, not even for these that waited.
    std::vector<std::shared_ptr<HttpConnection>> closeTurns();

    // Tells what is lost by now, where somebody wants to know.
    void tellLosses();

    // Behind each HttpLoop::enterHandler: somebody watches from now on.
    void wakeWatcher();

    // Ends the thread that watches.
    void stopWatching();

    const HttpServerOptions options;
    const HttpServer::Handler handler;
    std::atomic<bool> isStopping{false};

private:
    void _watch();

    std::shared_ptr<HttpWorkers> _workers;
    std::shared_ptr<HttpLoop> _loop;
    mutable std::mutex _mutex;
    std::set<std::shared_ptr<HttpConnection>> _connections;
    std::size_t _admitted = 0;
    std::map<std::string, std::size_t> _clients;
    std::mutex _turnMutex;
    std::size_t _turns = 0;
    std::deque<std::shared_ptr<HttpConnection>> _waiting;
    std::set<std::shared_ptr<HttpConnection>> _called;  // whose turn came, as they hear soon
    std::size_t _lostTurns = 0;
    bool _areTurnsClosed = false;
    std::condition_variable _wakeWatcher;
    std::atomic<bool> _watcherSleeps{false};
    bool _watcherEnds = false;
    std::thread _watcher;
};

}  // namespace QZ
