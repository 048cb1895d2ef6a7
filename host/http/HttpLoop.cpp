// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpLoop.h"

#include <algorithm>
#include <boost/asio/post.hpp>
#include <system_error>
#include <thread>
#include <utility>

namespace QZ {

namespace {

constexpr std::chrono::microseconds SPIN_TIME{50};

// Of the thread itself: whether another has its place, and whether it is one too many.
thread_local bool isReplaced = false;
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
    while (!isSurplus && _takePlace()) {
        _serve();
    }
    const std::lock_guard<std::mutex> lock(_mutex);
    isSurplus ? --_lost : --_threads;
    _threadEnded.notify_all();
}

// Waits for it. False when there is nothing more to serve.
bool HttpLoop::_takePlace() {
    std::unique_lock<std::mutex> lock(_mutex);
    _placeIsFree.wait(lock, [this] { return _places > 0 || io.stopped(); });
    if (io.stopped()) {
        return false;
    }
    --_places;
    isReplaced = false;
    return true;
}

// Until another has this thread's place.
void HttpLoop::_serve() {
    while (!isReplaced) {
        if (io.run_one() == 0) {
            const std::lock_guard<std::mutex> lock(_mutex);
            _placeIsFree.notify_all();
            return;
        }
        _awaitMore();
    }
    // What this thread left to do wakes nobody who waits for events; this does.
    boost::asio::post(io, [] {});
}

// A client that asks again at once finds this thread awake: to fall asleep and be woken costs more
// than this, in a virtual machine above all.
void HttpLoop::_awaitMore() {
    if (!_isAwake.exchange(false)) {
        return;
    }
    const Time end = std::chrono::steady_clock::now() + SPIN_TIME;
    while (!isReplaced && io.poll_one() == 0 && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
    }
}

void HttpLoop::enterHandler(const std::shared_ptr<HttpCall>& call, Time end) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _calls.push_back({call, end});
    _calls.back().isReplaced = isReplaced;  // the next of several requests that came at once
    _wasCalled = true;
    _isAwake = true;
}

void HttpLoop::leaveHandler(const std::shared_ptr<HttpCall>& call) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = std::find_if(_calls.begin(), _calls.end(),
                                    [&](const Call& entry) { return entry.call == call; });
    isReplaced = found->isReplaced;
    isSurplus = isSurplus || found->isLost;
    _calls.erase(found);
}

bool HttpLoop::watch(Time now) {
    std::vector<std::shared_ptr<HttpCall>> late;
    bool wasCalled;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        wasCalled = std::exchange(_wasCalled, false) || !_calls.empty();
        for (Call& call : _calls) {
            const bool isLate = call.end <= now;
            if ((std::exchange(call.isSeen, true) || isLate) && !call.isReplaced) {
                call.isReplaced = true;
                ++_places;
                _placeIsFree.notify_one();
            }
            if (isLate && !call.isLost) {
                call.isLost = true;
                late.push_back(call.call);
                --_threads;
                if (++_lost <= _mayBeLost) {
                    _startThread();
                }
            }
        }
    }
    for (const auto& call : late) {
        call->expire();
    }
    return wasCalled;
}

void HttpLoop::stop() {
    io.stop();
    const std::lock_guard<std::mutex> lock(_mutex);
    _placeIsFree.notify_all();
}

std::size_t HttpLoop::lostThreads() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _lost;
}

bool HttpLoop::waitForEnd(Time end) const {
    std::unique_lock<std::mutex> lock(_mutex);
    return _threadEnded.wait_until(lock, end, [this] { return _threads == 0; });
}

}  // namespace QZ
