// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <pthread.h>

namespace QZ {

// Excludes the threads of this process. Not recursive. As a static object it is ready before any
// initialiser has run, and works until the process is gone.
class Mutex {
public:
    constexpr Mutex() = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    // Waits so many milliseconds, or without limit when negative; 0 only tries. False when another
    // thread still holds the mutex then.
    bool lock(int timeoutMilliseconds = -1);

    // Called by the thread that holds it.
    void unlock();

private:
    // What is guarded takes microseconds, less than to fall asleep and be woken.
    pthread_mutex_t _mutex = PTHREAD_ADAPTIVE_MUTEX_INITIALIZER_NP;
};

// Holds a mutex, for which it waits without limit, for as long as it lives.
class MutexLock {
public:
    explicit MutexLock(Mutex& mutex) : _mutex(mutex) { _mutex.lock(); }
    ~MutexLock() { _mutex.unlock(); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;

private:
    Mutex& _mutex;
};

}  // namespace QZ
