// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Clock.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <new>

#include "MachinePaths.h"

namespace QZ {

namespace {

timespec now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return time;
}

// A span from now on, added to a moment.
timespec later(timespec moment, unsigned milliseconds) {
    constexpr long NanosecondsPerSecond = 1000000000L;
    moment.tv_sec += milliseconds / 1000;
    moment.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000L;
    if (moment.tv_nsec >= NanosecondsPerSecond) {
        moment.tv_nsec -= NanosecondsPerSecond;
        ++moment.tv_sec;
    }
    return moment;
}

class MachineClock final : public Clock {
public:
    std::int64_t seconds() override { return now(CLOCK_REALTIME).tv_sec; }

    std::int64_t milliseconds() override {
        const timespec time = now(CLOCK_MONOTONIC);
        return std::int64_t{time.tv_sec} * 1000 + time.tv_nsec / 1000000;
    }

    int setSeconds(std::int64_t seconds) override {
        if (MachinePaths::isOtherMachine())
            return EPERM;
        timespec time{};
        time.tv_sec = static_cast<time_t>(seconds);
        return clock_settime(CLOCK_REALTIME, &time) == 0 ? 0 : errno;
    }

    void sleepMilliseconds(unsigned milliseconds) override {
        // An absolute end: a signal must not stretch the sleep.
        const timespec end = machineDeadline(milliseconds);
        while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) == EINTR) {
        }
    }
};

std::atomic<Clock*> _replacement{nullptr};

}  // namespace

Clock& Clock::current() {
    // Never destroyed: destructors of static objects may still ask for the time. Not on the heap
    // either, which would lose it each time the module is unloaded.
    alignas(MachineClock) static unsigned char place[sizeof(MachineClock)];
    static Clock& machine = *new (place) MachineClock;
    Clock* const replacement = _replacement.load();
    return replacement != nullptr ? *replacement : machine;
}

void Clock::wait(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
                 unsigned milliseconds) {
    condition.wait_for(lock, std::chrono::milliseconds(milliseconds));
}

timespec Clock::machineDeadline(unsigned milliseconds) {
    return later(now(CLOCK_MONOTONIC), milliseconds);
}

ClockReplacement::ClockReplacement(Clock& clock) : _previous(_replacement.exchange(&clock)) {}

ClockReplacement::~ClockReplacement() {
    _replacement.store(_previous);
}

}  // namespace QZ
