// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <system_error>
#include <thread>

#include "HttpConnection.h"

namespace QZ {

namespace {

// Of the thread itself: whether it is one too many.
thread_local bool isSurplus = false;

}  // namespace

void HttpShared::start() {
    const std::lock_guard<std::mutex> lock(_mutex);
    for (std::size_t i = 0; i < options.limits.workers; ++i) {
        _startThread();
    }
}

// With the mutex held. Where the system has no thread to give there are fewer.
void HttpShared::_startThread() {
    try {
        std::thread([self = shared_from_this()] { self->_run(); }).detach();
        ++_threads;
    } catch (const std::system_error&) {
        // Those that are there serve.
    }
}

void HttpShared::_run() {
    while (!isSurplus && io.run_one() != 0) {
    }
    const std::lock_guard<std::mutex> lock(_mutex);
    if (!isSurplus) {
        --_threads;
    }
    _threadEnded.notify_all();
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

void HttpShared::loseThread() {
    const std::lock_guard<std::mutex> lock(_mutex);
    --_threads;
    ++_lost;
    if (_lost <= options.limits.lostWorkers) {
        _startThread();
    }
}

void HttpShared::returnThread() {
    const std::lock_guard<std::mutex> lock(_mutex);
    --_lost;
    isSurplus = true;
}

std::size_t HttpShared::lostThreads() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _lost;
}

bool HttpShared::waitForEnd(std::chrono::steady_clock::time_point end) const {
    std::unique_lock<std::mutex> lock(_mutex);
    return _threadEnded.wait_until(lock, end, [this] { return _threads == 0; });
}

}  // namespace QZ
