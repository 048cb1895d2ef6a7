// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/cThreadLib.h"

#include "Clock.h"
#include "tavqz/AccessHelpers.h"

namespace {

// glibc never gives this to a thread.
const pthread_t noThread = 0;

}  // namespace

cThreadLib::cThreadLib() : _thread(noThread), _reserved(0) {}

cThreadLib::~cThreadLib() {
    threadClose();
}

int cThreadLib::threadStart(void* (*routine)(void*), void* arg) {
    pthread_t thread = noThread;
    if (pthread_create(&thread, nullptr, routine, arg) != 0) {
        return 2;
    }
    _thread = thread;
    return 0;
}

int cThreadLib::threadClose() {
    if (_thread == noThread) {
        return 0;
    }
    const pthread_t thread = _thread;
    _thread = noThread;
    return endThreadProcess(thread);
}

void cThreadLib::releaseHandle() {
    _thread = noThread;
}

void cThreadLib::wait(bool* /*flag*/, int seconds) {
    // Second by second, so that no count of milliseconds can overflow.
    for (int i = 0; i < seconds; ++i) {
        QZ::Clock::current().sleepMilliseconds(1000);
    }
}

void cThreadLib::sendEvent() {}
