// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Mutex.h"

#include <cassert>

#include "Clock.h"

namespace QZ {

bool Mutex::lock(int timeoutMilliseconds) {
    int result = 0;
    if (timeoutMilliseconds < 0) {
        result = pthread_mutex_lock(&_mutex);
    } else if (timeoutMilliseconds == 0) {
        result = pthread_mutex_trylock(&_mutex);
    } else {
        const timespec end = Clock::machineDeadline(static_cast<unsigned>(timeoutMilliseconds));
        result = pthread_mutex_clocklock(&_mutex, CLOCK_MONOTONIC, &end);
    }
    return result == 0;
}

void Mutex::unlock() {
    [[maybe_unused]] const int result = pthread_mutex_unlock(&_mutex);
    assert(result == 0);
}

}  // namespace QZ
