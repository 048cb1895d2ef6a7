// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "StopSignals.h"

#include <poll.h>
#include <pthread.h>
#include <sys/signalfd.h>

#include <cerrno>

#include "Error.h"

namespace QZ {

namespace {

sigset_t _signalsOf(StopSignals::Which which) {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    if (which == StopSignals::StopAndHangup) {
        sigaddset(&set, SIGHUP);
    }
    return set;
}

}  // namespace

StopSignals::StopSignals(Which which) {
    const sigset_t set = _signalsOf(which);
    _signals = Descriptor(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!_signals.isOpen()) {
        throw Error("Cannot wait for signals: " + systemErrorText(errno));
    }
    pthread_sigmask(SIG_BLOCK, &set, &_formerMask);
}

StopSignals::~StopSignals() {
    // What came in the meantime said what has been done.
    take();
    pthread_sigmask(SIG_SETMASK, &_formerMask, nullptr);
}

bool StopSignals::wait() {
    pollfd waiting{_signals.get(), POLLIN, 0};
    while (!take()) {
        poll(&waiting, 1, -1);
    }
    return _isToldToStop;
}

bool StopSignals::take() {
    bool hasArrived = false;
    signalfd_siginfo signal{};
    while (read(_signals.get(), &signal, sizeof signal) > 0) {
        hasArrived = true;
        _isToldToStop = _isToldToStop || signal.ssi_signo != SIGHUP;
    }
    return hasArrived;
}

}  // namespace QZ
