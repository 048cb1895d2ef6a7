// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpLoop.h"

#include <algorithm>
#include <boost/asio/post.hpp>
#include <thread>
#include <utility>

namespace QZ {

namespace {

constexpr std::chrono::microseconds SPIN_TIME{50};

// Of the thread itself: whether another has its place, whether it is one too many, and whether it
// called the handler since it last waited.
thread_local bool isReplaced = false;
thread_local bool isLost = false;
thread_local bool isAwake = false;

}  // namespace

HttpLoop::End HttpLoop::serve() {
    isReplaced = false;
    isLost = false;
    while (!isReplaced) {
        if (io.run_one() == 0) {
            _workers->end();
            return Over;
        }
        _awaitMore();
    }
    // What this thread left to do wakes nobody who waits for events; this does.
    boost::asio::post(io, [] {});
    return isLost ? Lost : Replaced;
}

// A client that asks again at once finds this thread awake: to fall asleep and be woken costs more
// than this, in a virtual machine above all.
void HttpLoop::_awaitMore() {
    if (!std::exchange(isAwake, false)) {
        return;
    }
    // Who was put aside in the middle of a request goes first.
    std::this_thread::yield();
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
    isAwake = true;
}

void HttpLoop::leaveHandler(const std::shared_ptr<HttpCall>& call) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = std::find_if(_calls.begin(), _calls.end(),
                                    [&](const Call& entry) { return entry.call == call; });
    isReplaced = found->isReplaced;
    isLost = isLost || found->isSpare;
    if (found->isLost && !found->isSpare) {
        _workers->regainThread();
    }
    _calls.erase(found);
}

bool HttpLoop::watch(Time now) {
    std::vector<Call> late;
    bool wasCalled;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        wasCalled = std::exchange(_wasCalled, false) || !_calls.empty();
        for (Call& call : _calls) {
            const bool isLate = call.end <= now;
            if ((std::exchange(call.isSeen, true) || isLate) && !call.isReplaced) {
                call.isReplaced = true;
                _workers->offerPlace();
            }
            if (isLate && !call.isLost) {
                _lose(call);
                late.push_back(call);
            }
        }
    }
    for (const Call& call : late) {
        call.call->expire(HttpReply::TookTooLong, call.isSpare);
    }
    return wasCalled;
}

void HttpLoop::_lose(Call& call) const {
    call.isLost = true;
    call.isReplaced = true;
    call.isSpare = _workers->loseThread();
}

void HttpLoop::expireAll() {
    std::vector<Call> all;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        for (Call& call : _calls) {
            if (!call.isLost) {
                _lose(call);
                all.push_back(call);
            }
        }
    }
    for (const Call& call : all) {
        call.call->expire(HttpReply::ServerStops, call.isSpare);
    }
}

}  // namespace QZ
