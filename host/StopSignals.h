// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>

#include "Descriptor.h"

namespace QZ {

// SIGINT and SIGTERM, which say that it is time to end, and SIGHUP where it is wanted; they end
// nothing themselves while this object lives. Made by the one thread that asks, before there are
// others: those inherit its mask.
class StopSignals {
public:
    enum Which { Stop, StopAndHangup };

    // Throws Error where the system has no descriptor left.
    explicit StopSignals(Which which = Stop);
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    // For poll(): readable while there is one to take.
    int descriptor() const { return _signals.get(); }

    // Waits until one has arrived, and takes it. Whether it is time to end.
    bool wait();

    // Takes what has arrived. Whether anything had.
    bool take();

    // Whether one that says so was ever taken.
    bool isToldToStop() const { return _isToldToStop; }

    // The signals that were blocked before, and are to be for the programs that we start.
    const sigset_t& formerMask() const { return _formerMask; }

private:
    sigset_t _formerMask{};
    Descriptor _signals;
    bool _isToldToStop = false;
};

}  // namespace QZ
