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
        _awaitMore();
    }
    const std::lock_guard<std::mutex> lock(_mutex);
    isSurplus ? --_lost : --_threads;
    _threadEnded.notify_all();
}

// A client that asks again at once finds this thread awake: to fall asleep and be woken costs more
// than this, in a virtual machine above all.
void HttpLoop::_awaitMore() {
    if (!_isAwake.exchange(false)) {
        return;
    }
    const Time end = std::chrono::steady_clock::now() + SPIN_TIME;
    while (!isSurplus && io.poll_one() == 0 && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
    }
}

void HttpLoop::enterHandler(const std::shared_ptr<HttpCall>& call, Time end) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _calls.push_back({call, end});
    _wasCalled = true;
    _isAwake = true;
}

void HttpLoop::leaveHandler(const std::shared_ptr<HttpCall>& call) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = std::find_if(_calls.begin(), _calls.end(),
                                    [&](const Call& entry) { return entry.call == call; });
    isSurplus = isSurplus || found->isLost;
    _calls.erase(found);
}

bool HttpLoop::watch(Time now) {
    std::vector<std::shared_ptr<HttpCall>> late;
    bool isHeldUp = false;
    bool wasCalled;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        wasCalled = std::exchange(_wasCalled, false) || !_calls.empty();
        for (Call& call : _calls) {
            isHeldUp = isHeldUp || (call.isSeen && !call.isReplaced);
            call.isReplaced = std::exchange(call.isSeen, true);
            if (!call.isLost && call.end <= now) {
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
    if (isHeldUp) {
        // From outside the loop: a thread that waits wakes up, and goes on waiting for events.
        boost::asio::post(io, [] {});
    }
    return wasCalled;
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
