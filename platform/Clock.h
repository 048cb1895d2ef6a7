// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstdint>
#include <ctime>
#include <mutex>

namespace QZ {

// The one way to read the time, to set it and to sleep, so that a test can let an hour pass at
// once. Any thread may call any of it.
class Clock {
public:
    virtual ~Clock() = default;

    // Unix time.
    virtual std::int64_t seconds() = 0;

    // Milliseconds that only ever grow, from an arbitrary start.
    virtual std::int64_t milliseconds() = 0;

    // Sets the machine's clock to a Unix time. 0, or the errno of the failure.
    virtual int setSeconds(std::int64_t seconds) = 0;

    virtual void sleepMilliseconds(unsigned milliseconds) = 0;

    // Waits for the condition as std::condition_variable::wait_for() does; also wakes up for
    // nothing. The machine's time counts unless a derived clock has other means.
    virtual void wait(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
                      unsigned milliseconds);

    // The machine's clock, unless a ClockReplacement is alive. The machine's clock refuses to be
    // set (EPERM) while TAVQZ_HOST_ROOT names another machine.
    static Clock& current();

    // The moment on CLOCK_MONOTONIC so many milliseconds from now, for waits that the kernel times
    // and that no replacement can shorten.
    static timespec machineDeadline(unsigned milliseconds);
};

// Puts another clock in the machine's place for as long as it lives. The clock stays the caller's
// and must outlive it. Replacements nest; they are made and ended by one thread.
class ClockReplacement {
public:
    explicit ClockReplacement(Clock& clock);
    ~ClockReplacement();
    ClockReplacement(const ClockReplacement&) = delete;
    ClockReplacement& operator=(const ClockReplacement&) = delete;

private:
    Clock* _previous;
};

}  // namespace QZ
