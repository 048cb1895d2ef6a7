// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// Preloaded beside libfaketime, which leaves pthread_cond_clockwait() alone: what it is told then
// are moments of a clock that only the program sees. It knows pthread_cond_timedwait().

#include <pthread.h>

#include <cerrno>
#include <ctime>

namespace {

constexpr long long _second = 1000000000;

long long _nanoseconds(const timespec& time) {
    return time.tv_sec * _second + time.tv_nsec;
}

long long _now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return _nanoseconds(time);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int pthread_cond_clockwait(
    pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock, const timespec* end) {
    const long long left = _nanoseconds(*end) - _now(clock);
    if (left <= 0) {
        return ETIMEDOUT;
    }
    const long long moment = _now(CLOCK_REALTIME) + left;
    timespec other{};
    other.tv_sec = static_cast<time_t>(moment / _second);
    other.tv_nsec = static_cast<long>(moment % _second);
    return pthread_cond_timedwait(condition, mutex, &other);
}
