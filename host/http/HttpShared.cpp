// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <boost/asio/post.hpp>
#include <system_error>
#include <thread>
#include <utility>

#include "HttpConnection.h"

namespace QZ {

namespace {

// How long a request may hold up the others of its loop before another thread goes on with them.
constexpr std::chrono::milliseconds WATCH_TIME{2};

// Of the thread itself: whether it is one too many.
thread_local bool isSurplus = false;

}  // namespace

void HttpLoop::start() {
    const std::lock_guard<std::mutex> lock(_mutex);
    for (std::size_t i = 0; i < _initial; ++i) {
        _startThread();
    }
}

// With the mutex held. Where the system has no thread to give there are fewer.
void HttpLoop::_startThread() {
    try {
        std::thread([self = shared_from_this()] { self->_run(); }).detach();
        ++_threads;
    } catch (const std::system_error&) {
        // Those that are there serve.
    }
}

void HttpLoop::_run() {
    while (!isSurplus && io.run_one() != 0) {
    }
    const std::lock_guard<std::mutex> lock(_mutex);
    if (!isSurplus) {
        --_threads;
    }
    _threadEnded.notify_all();
}

bool HttpLoop::watch() {
    const bool isBusy = _inHandler != 0;
    const unsigned handled = _handled;
    if (isBusy && handled == std::exchange(_lastHandled, handled)) {
        // From outside the loop: a thread that waits wakes up, and goes on waiting for events.
        boost::asio::post(io, [] {});
    }
    return isBusy;
}

void HttpLoop::loseThread() {
    const std::lock_guard<std::mutex> lock(_mutex);
    --_threads;
    ++_lost;
    if (_lost <= _mayBeLost) {
        _startThread();
    }
}

void HttpLoop::returnThread() {
    const std::lock_guard<std::mutex> lock(_mutex);
    --_lost;
    isSurplus = true;
}

std::size_t HttpLoop::lostThreads() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _lost;
}

bool HttpLoop::waitForEnd(std::chrono::steady_clock::time_point end) const {
    std::unique_lock<std::mutex> lock(_mutex);
    return _threadEnded.wait_until(lock, end, [this] { return _threads == 0; });
}

HttpShared::HttpShared(HttpServerOptions given, HttpServer::Handler answers)
    : options(std::move(given)), handler(std::move(answers)) {
    const HttpLimits& limits = options.limits;
    const std::size_t loops = std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1,
                                                      std::max<std::size_t>(limits.workers / 2, 1));
    for (std::size_t i = 0; i < loops; ++i) {
        _loops.push_back(std::make_shared<HttpLoop>(limits.workers / loops, limits.lostWorkers));
    }
}

void HttpShared::start() {
    for (const auto& loop : _loops) {
        loop->start();
    }
    _watcher = std::thread([this] { _watch(); });
}

void HttpShared::enterHandler(HttpLoop& loop) {
    loop.enterHandler();
    if (_watcherSleeps.exchange(false)) {
        const std::lock_guard<std::mutex> lock(_mutex);
        _wakeWatcher.notify_one();
    }
}

// Looks at the loops as long as there is something to see, else it sleeps.
void HttpShared::_watch() {
    std::unique_lock<std::mutex> lock(_mutex);
    while (!_watcherEnds) {
        bool isBusy = false;
        for (const auto& loop : _loops) {
            isBusy = loop->watch() || isBusy;
        }
        if (isBusy) {
            _wakeWatcher.wait_for(lock, WATCH_TIME);
            continue;
        }
        _watcherSleeps = true;
        // Looks once more in a moment: a request may have come between the look and the sleep.
        _wakeWatcher.wait_for(lock, std::chrono::seconds(1),
                              [this] { return _watcherEnds || !_watcherSleeps; });
        if (!_watcherEnds) {
            _wakeWatcher.wait_for(lock, WATCH_TIME);
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

void HttpShared::add(const std::shared_ptr<HttpConnection>& connection) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _connections.insert(connection);
}

void HttpShared::remove(const std::shared_ptr<HttpConnection>& connection) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _connections.erase(connection);
}

std::set<std::shared_ptr<HttpConnection>> HttpShared::connections() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _connections;
}

}  // namespace QZ
