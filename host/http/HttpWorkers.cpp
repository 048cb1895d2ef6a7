// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpWorkers.h"

#include <system_error>
#include <thread>
#include <utility>

#include "HttpLoop.h"

namespace QZ {

void HttpWorkers::start(std::shared_ptr<HttpLoop> loop, std::size_t places) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _loop = std::move(loop);
    _places = places;
    // The last of those that are in a handler has not given up its place yet.
    for (std::size_t i = 0; i + 1 < _atOnce + places; ++i) {
        _startThread();
    }
    if (_threads == 0) {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    }
}

// With the mutex held. Where the system has no thread to give, those that are there serve.
bool HttpWorkers::_startThread() {
    try {
        std::thread([self = shared_from_this()] { self->_run(); }).detach();
        ++_threads;
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

void HttpWorkers::_run() {
    bool isLost = false;
    while (!isLost) {
        const std::shared_ptr<HttpLoop> loop = _takePlace();
        if (!loop) {
            break;
        }
        isLost = loop->serve() == HttpLoop::Lost;
    }
    const std::lock_guard<std::mutex> lock(_mutex);
    isLost ? --_lost : --_threads;
    _threadEnded.notify_all();
}

// Waits for one. None when there is nothing more to serve.
std::shared_ptr<HttpLoop> HttpWorkers::_takePlace() {
    std::unique_lock<std::mutex> lock(_mutex);
    _changed.wait(lock, [this] { return _places != 0 || !_loop; });
    if (_loop) {
        --_places;
    }
    return _loop;
}

void HttpWorkers::offerPlace() {
    const std::lock_guard<std::mutex> lock(_mutex);
    ++_places;
    _changed.notify_one();
}

void HttpWorkers::end() {
    const std::lock_guard<std::mutex> lock(_mutex);
    _loop.reset();
    _changed.notify_all();
}

bool HttpWorkers::loseThread() {
    const std::lock_guard<std::mutex> lock(_mutex);
    --_threads;
    return ++_lost <= _mayBeLost && _startThread();
}

void HttpWorkers::regainThread() {
    const std::lock_guard<std::mutex> lock(_mutex);
    ++_threads;
    --_lost;
}

std::size_t HttpWorkers::lostThreads() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _lost;
}

std::optional<std::size_t> HttpWorkers::waitForEnd(Time end) const {
    std::unique_lock<std::mutex> lock(_mutex);
    const bool ended = _threadEnded.wait_until(lock, end, [this] { return _threads == 0; });
    return ended ? std::optional(_lost) : std::nullopt;
}

}  // namespace QZ
