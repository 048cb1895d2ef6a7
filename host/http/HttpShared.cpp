// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpShared.h"

#include <algorithm>
#include <utility>

#include "HttpConnection.h"

namespace QZ {

namespace {

// How long a request may keep its thread from the others before another takes that place.
constexpr std::chrono::milliseconds WATCH_TIME{2};

// How often in vain the watcher looks before it sleeps: waking it for each request of a busy client
// would cost more than looking.
constexpr int QUIET_LOOKS = 50;

}  // namespace

HttpShared::HttpShared(HttpServerOptions given, HttpServer::Handler answers)
    : options(std::move(given)),
      handler(std::move(answers)),
      // One more than are in the handler: somebody is there to read, and to refuse.
      _workers(
          std::make_shared<HttpWorkers>(options.limits.workers + 1, options.limits.lostWorkers)),
      _loop(std::make_shared<HttpLoop>(_workers)) {}

void HttpShared::start() {
    // A thread for each processor, and one that waits for what comes meanwhile. Half of the threads
    // at least wait for the others to be held up.
    const std::size_t places =
        std::min<std::size_t>(std::thread::hardware_concurrency() + 1,
                              std::max<std::size_t>(options.limits.workers / 2, 1));
    _watcher = std::thread([this] { _watch(); });
    _workers->start(_loop, places);
}

void HttpShared::wakeWatcher() {
    if (_watcherSleeps.exchange(false)) {
        const std::lock_guard<std::mutex> lock(_mutex);
        _wakeWatcher.notify_one();
    }
}

void HttpShared::_watch() {
    std::unique_lock<std::mutex> lock(_mutex);
    int quiet = 0;
    while (!_watcherEnds) {
        // Before the look: a call that comes behind it ends the sleep.
        _watcherSleeps = quiet >= QUIET_LOOKS;
        lock.unlock();
        const bool wasCalled = _loop->watch(std::chrono::steady_clock::now());
        lock.lock();
        quiet = wasCalled ? 0 : quiet + 1;
        if (quiet <= QUIET_LOOKS) {
            _wakeWatcher.wait_for(lock, WATCH_TIME, [this] { return _watcherEnds; });
        } else {
            _wakeWatcher.wait(lock, [this] { return _watcherEnds || !_watcherSleeps; });
            quiet = 0;
        }
    }
}

void HttpShared::stopWatching() {
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _watcherEnds = true;
        _wakeWatcher.notify_one();
    }
    if (_watcher.joinable()) {
        _watcher.join();
    }
}

HttpShared::Turn HttpShared::takeTurn(const std::shared_ptr<HttpConnection>& connection) {
    const std::lock_guard<std::mutex> lock(_turnMutex);
    if (_areTurnsClosed || _lostTurns >= options.limits.workers) {
        return Never;
    }
    if (_turns < options.limits.workers) {
        ++_turns;
        return Now;
    }
    if (_waiting.size() >= options.limits.waiting) {
        return Never;
    }
    _waiting.push_back(connection);
    return Later;
}

bool HttpShared::takeUpTurn(const std::shared_ptr<HttpConnection>& connection) {
    const std::lock_guard<std::mutex> lock(_turnMutex);
    _called.erase(connection);
    return !_areTurnsClosed;
}

void HttpShared::endTurn() {
    std::shared_ptr<HttpConnection> next;
    {
        const std::lock_guard<std::mutex> lock(_turnMutex);
        if (_waiting.empty()) {
            --_turns;
            return;
        }
        next = std::move(_waiting.front());
        _waiting.pop_front();
        _called.insert(next);
    }
    next->onTurn();
}

void HttpShared::loseTurn() {
    const std::lock_guard<std::mutex> lock(_turnMutex);
    ++_lostTurns;
}

void HttpShared::regainTurn() {
    {
        const std::lock_guard<std::mutex> lock(_turnMutex);
        --_lostTurns;
    }
    endTurn();
}

void HttpShared::tellLosses() {
    if (!options.lose) {
        return;
    }
    const std::lock_guard<std::mutex> lock(_turnMutex);
    options.lose(
        {_workers->lostThreads(), options.limits.lostWorkers, options.limits.workers - _lostTurns});
}

std::vector<std::shared_ptr<HttpConnection>> HttpShared::closeTurns() {
    const std::lock_guard<std::mutex> lock(_turnMutex);
    _areTurnsClosed = true;
    std::vector<std::shared_ptr<HttpConnection>> all(_called.begin(), _called.end());
    all.insert(all.end(), _waiting.begin(), _waiting.end());
    _called.clear();
    _waiting.clear();
    return all;
}

void HttpShared::add(const std::shared_ptr<HttpConnection>& connection) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _connections.insert(connection);
}

void HttpShared::remove(const std::shared_ptr<HttpConnection>& connection) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _connections.erase(connection);
}

HttpShared::Admission HttpShared::admit(const std::string& peer) {
    const std::string client = clientOf(peer);
    const HttpLimits& limits = options.limits;
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = _clients.find(client);
    const std::size_t own = found == _clients.end() ? 0 : found->second;
    // Beyond twice the limit not even a refusal is worth a descriptor.
    if (_admitted >= 2 * limits.connections || own >= 2 * limits.connectionsPerClient) {
        return Dropped;
    }
    const bool isRefused = _admitted >= limits.connections || own >= limits.connectionsPerClient;
    _clients[client] = own + 1;
    ++_admitted;
    return isRefused ? Refused : Admitted;
}

void HttpShared::leave(const std::string& peer) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = _clients.find(clientOf(peer));
    if (found != _clients.end() && --found->second == 0) {
        _clients.erase(found);
    }
    --_admitted;
}

std::set<std::shared_ptr<HttpConnection>> HttpShared::connections() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _connections;
}

}  // namespace QZ
