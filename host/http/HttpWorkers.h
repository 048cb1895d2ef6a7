// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

namespace QZ {

class HttpLoop;

// The threads that serve a server's loops: one each, and the others wait to take the place of one
// that a slow handler holds up. Any thread.
class HttpWorkers : public std::enable_shared_from_this<HttpWorkers> {
public:
    using Time = std::chrono::steady_clock::time_point;

    // So many handlers at least may be at work at once, all of one loop if need be; and how many
    // threads may be lost before no more are made.
    HttpWorkers(std::size_t atOnce, std::size_t mayBeLost)
        : _atOnce(atOnce), _mayBeLost(mayBeLost) {}

    // For so many loops, of each of which a place was offered.
    void start(std::size_t loops);

    // A thread is wanted there.
    void offerPlace(const std::shared_ptr<HttpLoop>& loop);

    // Nothing more happens in one of the loops. The threads end when that is so in all of them.
    void endLoop();
    void endAllLoops();

    // A thread is late and may never come back. Where another takes its place, which is so up to
    // the limit, it ends itself when it does come back; else it is one of ours again then.
    bool loseThread();
    void regainThread();
    std::size_t lostThreads() const;

    // Waits until every thread ended, the lost ones aside. False when the time was over.
    bool waitForEnd(Time end) const;

private:
    bool _startThread();
    void _run();
    std::shared_ptr<HttpLoop> _takePlace();

    const std::size_t _atOnce;
    const std::size_t _mayBeLost;
    mutable std::mutex _mutex;
    mutable std::condition_variable _threadEnded;
    std::condition_variable _changed;
    std::deque<std::shared_ptr<HttpLoop>> _places;
    std::size_t _loops = 0;  // that have not ended
    std::size_t _threads = 0;
    std::size_t _lost = 0;
};

}  // namespace QZ
