// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <pthread.h>

#include "tavqz/Export.h"

// Keeps one POSIX thread, and ends it when destroyed. An object is used by one thread at a time;
// nothing throws.
class TAVQZ_EXPORT cThreadLib {
public:
    cThreadLib();
    ~cThreadLib();
    cThreadLib(const cThreadLib&) = delete;
    cThreadLib& operator=(const cThreadLib&) = delete;

    // Runs routine(arg) on a new thread and keeps that. A thread kept before is forgotten, as by
    // releaseHandle. 0 on success, 2 when no thread could be made.
    int threadStart(void* (*routine)(void*), void* arg);

    // Cancels the kept thread, waits until it has ended, and forgets it. 0 on success and when
    // none is kept; else the error number of the cancelling (then nobody waits) or the waiting.
    int threadClose();

    // Forgets the kept thread, which runs on.
    void releaseHandle();

    // Sleeps that many seconds; not at all unless positive. The flag is ignored.
    void wait(bool* flag, int seconds);

    // Does nothing.
    void sendEvent();

private:
    pthread_t _thread;
    [[maybe_unused]] long _reserved;
};
