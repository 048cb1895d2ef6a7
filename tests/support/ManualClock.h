// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

#include "Clock.h"

// A clock that stands still but for sleeps and waits, which pass at once. It takes the machine's
// place for as long as it lives.
class ManualClock final : public QZ::Clock {
public:
    explicit ManualClock(std::int64_t seconds = 1800000000)
        : _milliseconds(seconds * 1000), _replacement(*this) {}

    std::int64_t seconds() override { return _milliseconds / 1000; }
    std::int64_t milliseconds() override { return _milliseconds; }
    int setSeconds(std::int64_t seconds) override {
        _milliseconds = seconds * 1000;
        return 0;
    }
    void sleepMilliseconds(unsigned milliseconds) override {
        _milliseconds += milliseconds;
        _slept += milliseconds;
    }
    void wait(std::condition_variable&, std::unique_lock<std::mutex>&,
              unsigned milliseconds) override {
        _milliseconds += milliseconds;
    }

    // For a clock by which the files that are written meanwhile were there before.
    static std::int64_t inAMinute() { return QZ::Clock::current().seconds() + 60; }

    // All sleeps together.
    std::int64_t sleptMilliseconds() const { return _slept; }

private:
    std::atomic<std::int64_t> _milliseconds;
    std::atomic<std::int64_t> _slept{0};
    QZ::ClockReplacement _replacement;
};
