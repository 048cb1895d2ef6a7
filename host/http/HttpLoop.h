// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace QZ {

// A call of the handler, for whoever watches over its time.
class HttpCall {
public:
    virtual ~HttpCall() = default;

    // Time is over: the client is told. On the watcher's thread, at most once, while or after the
    // handler is called.
    virtual void expire() = 0;
};

// A share of the connections, and the threads that serve it: one waits for whatever comes next on
// any of its connections and carries it out, the handler included. Only where that takes a while
// does another thread of the loop take its place: threads that run side by side for no need get
// into each other's way, at the locks of the handler and for the processors.
class HttpLoop : public std::enable_shared_from_this<HttpLoop> {
public:
    using Time = std::chrono::steady_clock::time_point;

    // So many threads; and how many may be lost before no more are made.
    HttpLoop(std::size_t threads, std::size_t mayBeLost)
        : _initial(threads), _mayBeLost(mayBeLost) {}

    void start();

    // Around each call of the handler, on the thread that makes it. A call that is still there at
    // its end has lost its thread, and another takes its place; where it comes back after all, the
    // thread ends when it has done what it is at.
    void enterHandler(const std::shared_ptr<HttpCall>& call, Time end);
    void leaveHandler(const std::shared_ptr<HttpCall>& call);

    // Lets another thread go on where a handler is at the same request as at the last time, and
    // expires the calls whose time is over. Whether any was called since.
    bool watch(Time now);

    std::size_t lostThreads() const;

    // From now on the threads end when no connection is left.
    void endWithoutWork() { _work.reset(); }

    // Ends the threads, but those that are in a handler.
    void stop();

    // Waits until every thread ended, the lost ones aside. False when the time was over.
    bool waitForEnd(Time end) const;

    // One thread at a time is woken for what comes.
    boost::asio::io_context io{1};

private:
    struct Call {
        std::shared_ptr<HttpCall> call;
        Time end;
        bool isSeen = false;
        bool isReplaced = false;  // another thread takes its thread's place
        bool isLost = false;
    };

    void _startThread();
    void _run();
    bool _takePlace();
    void _serve();
    void _awaitMore();

    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> _work{
        io.get_executor()};
    const std::size_t _initial;
    const std::size_t _mayBeLost;
    mutable std::mutex _mutex;
    mutable std::condition_variable _threadEnded;
    std::condition_variable _placeIsFree;
    std::size_t _places = 1;  // free ones: of the thread that serves, once it is held up
    std::vector<Call> _calls;
    bool _wasCalled = false;
    std::atomic<bool> _isAwake{false};
    std::size_t _threads = 0;
    std::size_t _lost = 0;
};

}  // namespace QZ
