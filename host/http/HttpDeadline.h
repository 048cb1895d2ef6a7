// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/strand.hpp>
#include <chrono>
#include <functional>
#include <memory>

namespace QZ {

// One thread at a time is at what it executes.
using HttpStrand = boost::asio::strand<boost::asio::io_context::executor_type>;

// A deadline that is moved with every step of a request. Moving it on costs nothing: the timer
// finds out when it ends.
class HttpDeadline {
public:
    // What to do when time is over, on the strand.
    HttpDeadline(const HttpStrand& strand, std::function<void()> onOver)
        : _timer(strand), _onOver(std::move(onOver)) {}

    // So long from now, in place of what was set. The owner lives until then, or until cancel.
    void set(std::chrono::milliseconds limit, const std::shared_ptr<void>& owner);
    // It is not over any more, even where the timer ended and has not been heard yet.
    void cancel();

private:
    using Clock = std::chrono::steady_clock;
    static constexpr Clock::time_point NEVER = Clock::time_point::max();

    void _arm(const std::shared_ptr<void>& owner);

    boost::asio::basic_waitable_timer<Clock, boost::asio::wait_traits<Clock>, HttpStrand> _timer;
    const std::function<void()> _onOver;
    Clock::time_point _end = NEVER;
    Clock::time_point _timerEnd = NEVER;  // where it is not running
};

}  // namespace QZ
