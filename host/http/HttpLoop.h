// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

#include "HttpReply.h"
#include "HttpWorkers.h"

namespace QZ {

// A call of the handler, for whoever watches over its time.
class HttpCall {
public:
    virtual ~HttpCall() = default;

    // Nobody waits any more: the client is told. On the thread of who watches or stops, at most
    // once, while or after the handler is called.
    // Its thread may have been replaced.
    virtual void expire(HttpReply::Late why, bool isReplaced) = 0;
};

// Whatever comes next on any of the connections, and the threads that carry it out, the handler
// included. Few have a place here at a time: threads that run side by side for no need get into
// each other's way, at the locks of the handler and for the processors. Only where one is held up
// for a while does another take its place.
class HttpLoop {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit HttpLoop(std::shared_ptr<HttpWorkers> workers) : _workers(std::move(workers)) {}

    // Takes one place: serves the connections on this thread, until...
    enum End {
        Replaced,  // another has its place
        Lost,      // and more than that: it was given up, and is one too many now
        Over,      // nothing is left to serve, or stop() was called
    };
    End serve();

    // Around each call of the handler, on the thread that makes it. A call that is still there at
    // its end has lost its thread.
    void enterHandler(const std::shared_ptr<HttpCall>& call, Time end);
    void leaveHandler(const std::shared_ptr<HttpCall>& call);

    // Offers the place of a thread that is in the same call as at the last time, and expires the
    // calls whose time is over. Whether any was called since.
    bool watch(Time now);

    // Expires all calls: the server stops. Nobody watches any more.
    void expireAll();

    // From now on it is over when no connection is left.
    void endWithoutWork() { _work.reset(); }

    boost::asio::io_context io;

private:
    struct Call {
        std::shared_ptr<HttpCall> call;
        Time end;
        bool isSeen = false;
        bool isReplaced = false;  // another thread takes its thread's place
        bool isLost = false;
        bool isSpare = false;  // there is a new thread instead
    };

    void _awaitMore();
    void _lose(Call& call) const;

    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> _work{
        io.get_executor()};
    const std::shared_ptr<HttpWorkers> _workers;
    std::mutex _mutex;
    std::vector<Call> _calls;
    bool _wasCalled = false;
};

}  // namespace QZ
