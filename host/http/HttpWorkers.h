// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

namespace QZ {

class HttpLoop;

// The threads that serve a server's loop: some have a place there, and the others wait to take that
// of one which a slow handler holds up. Any thread.
class HttpWorkers : public std::enable_shared_from_this<HttpWorkers> {
public:
    using Time = std::chrono::steady_clock::time_point;

    // So many handlers at least may be at work at once; and how many threads may be lost before no
    // more are made.
    HttpWorkers(std::size_t atOnce, std::size_t mayBeLost)
        : _atOnce(atOnce), _mayBeLost(mayBeLost) {}

    // Serves the loop, until the end, by so many threads at a time. Throws std::system_error where
    // there is none to be had.
    void start(std::shared_ptr<HttpLoop> loop, std::size_t places);

    // Another thread is wanted there.
    void offerPlace();

    // Nothing more happens there: the threads end.
    void end();

    // A thread is late and may never come back. Where another takes its place, which is so up to
    // the limit, it ends itself when it does come back; else it is one of ours again then.
    bool loseThread();
    void regainThread();
    std::size_t lostThreads() const;

    // Waits until every thread ended, the lost ones aside: how many these are then. None when the
    // time was over.
    std::optional<std::size_t> waitForEnd(Time end) const;

private:
    bool _startThread();
    void _run();
    std::shared_ptr<HttpLoop> _takePlace();

    const std::size_t _atOnce;
    const std::size_t _mayBeLost;
    mutable std::mutex _mutex;
    mutable std::condition_variable _threadEnded;
    std::condition_variable _changed;
    std::shared_ptr<HttpLoop> _loop;  // until the end
    std::size_t _places = 0;          // that nobody has
    std::size_t _threads = 0;
    std::size_t _lost = 0;
};

}  // namespace QZ
