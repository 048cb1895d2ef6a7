// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ExpiryThread.h"

#include <algorithm>
#include <utility>

#include "Clock.h"
#include "Thread.h"

namespace QZ {

namespace {

// Seconds after which it looks in any case: the machine's time of day may have been set.
constexpr std::uint64_t LONGEST_WAIT = 60;

}  // namespace

class ExpiryThread::Worker : public Thread {
protected:
    int run(void* owner) override {
        static_cast<ExpiryThread*>(owner)->_work();
        return 0;
    }
};

ExpiryThread::ExpiryThread(Remove remove)
    : _remove(std::move(remove)), _worker(std::make_unique<Worker>()) {}

ExpiryThread::~ExpiryThread() {
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopping = true;
        _changed.notify_all();
    }
    _worker->join();
}

void ExpiryThread::start() {
    _worker->start(this);
}

void ExpiryThread::wake() {
    const std::lock_guard<std::mutex> lock(_mutex);
    _isWoken = true;
    _changed.notify_all();
}

void ExpiryThread::_work() {
    for (;;) {
        {
            const std::lock_guard<std::mutex> lock(_mutex);
            if (_isStopping) {
                return;
            }
            _isWoken = false;
        }
        _wait(_remove());
    }
}

void ExpiryThread::_wait(std::optional<std::uint64_t> seconds) {
    std::unique_lock<std::mutex> lock(_mutex);
    if (!seconds) {
        _changed.wait(lock, [this] { return _isWoken || _isStopping; });
        return;
    }
    if (!_isWoken && !_isStopping) {
        // Woken up for nothing it looks for nothing.
        const std::uint64_t left = std::min(std::max<std::uint64_t>(*seconds, 1), LONGEST_WAIT);
        Clock::current().wait(_changed, lock, unsigned(left) * 1000);
    }
}

}  // namespace QZ
