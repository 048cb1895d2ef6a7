// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpWorkers.h"

#include <system_error>
#include <thread>
#include <utility>

#include "HttpLoop.h"

namespace QZ {

void HttpWorkers::start(std::size_t loops) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _loops = loops;
    for (std::size_t i = 0; i + 1 < _atOnce + loops; ++i) {
        _startThread();
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
    _changed.wait(lock, [this] { return !_places.empty() || _loops == 0; });
    if (_loops == 0) {
        return nullptr;
    }
    std::shared_ptr<HttpLoop> loop = std::move(_places.front());
    _places.pop_front();
    return loop;
}

void HttpWorkers::offerPlace(const std::shared_ptr<HttpLoop>& loop) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _places.push_back(loop);
    _changed.notify_one();
}

void HttpWorkers::endLoop() {
    const std::lock_guard<std::mutex> lock(_mutex);
    if (_loops > 0 && --_loops == 0) {
        _changed.notify_all();
    }
}

void HttpWorkers::endAllLoops() {
    const std::lock_guard<std::mutex> lock(_mutex);
    _loops = 0;
    _places.clear();
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

bool HttpWorkers::waitForEnd(Time end) const {
    std::unique_lock<std::mutex> lock(_mutex);
    return _threadEnded.wait_until(lock, end, [this] { return _threads == 0; });
}

}  // namespace QZ
