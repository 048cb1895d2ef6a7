// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <atomic>
#include <map>

#include "Clock.h"

// A clock for threads: time passes when the test says so, and the test goes on when every thread
// waits again. It takes the machine's place for as long as it lives.
class SteppedClock final : public QZ::Clock {
public:
    explicit SteppedClock(std::int64_t seconds = 1800000000)
        : _now(seconds * 1000), _replacement(*this) {}

    std::int64_t seconds() override { return _now / 1000; }
    std::int64_t milliseconds() override { return _now; }
    int setSeconds(std::int64_t seconds) override {
        _now = seconds * 1000;
        return 0;
    }
    void sleepMilliseconds(unsigned milliseconds) override { _now += milliseconds; }

    void wait(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
              unsigned milliseconds) override {
        {
            const std::lock_guard<std::mutex> own(_mutex);
            _waiters[&condition] = {lock.mutex(), _now + milliseconds};
            _arrived.notify_all();
        }
        condition.wait(lock);
        const std::lock_guard<std::mutex> own(_mutex);
        _waiters.erase(&condition);
    }

    // Lets so much time pass for this many threads, each of which is waiting or about to. Each
    // wakes up when its time has come, and has waited again before the next one does.
    void advance(std::int64_t milliseconds, std::size_t threads) {
        const std::int64_t end = _now + milliseconds;
        std::unique_lock<std::mutex> own(_mutex);
        for (;;) {
            _arrived.wait(own, [&] { return _waiters.size() == threads; });
            const auto first = _earliest();
            if (first == _waiters.end() || first->second.deadline > end)
                break;
            _now = std::max(_now.load(), first->second.deadline);
            std::condition_variable* const condition = first->first;
            std::mutex* const mutex = first->second.mutex;
            _waiters.erase(first);
            own.unlock();
            {
                // It holds this until it sleeps.
                const std::lock_guard<std::mutex> theirs(*mutex);
                condition->notify_all();
            }
            own.lock();
        }
        _now = end;
    }

private:
    struct Waiter {
        std::mutex* mutex;
        std::int64_t deadline;
    };
    using Waiters = std::map<std::condition_variable*, Waiter>;

    Waiters::iterator _earliest() {
        auto earliest = _waiters.begin();
        for (auto waiter = _waiters.begin(); waiter != _waiters.end(); ++waiter) {
            if (waiter->second.deadline < earliest->second.deadline)
                earliest = waiter;
        }
        return earliest;
    }

    std::atomic<std::int64_t> _now;
    std::mutex _mutex;
    std::condition_variable _arrived;
    Waiters _waiters;
    QZ::ClockReplacement _replacement;
};
