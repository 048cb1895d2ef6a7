// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// Preloaded beside libfaketime, which leaves pthread_cond_clockwait() alone: what it is told then
// are moments of a clock that only the program sees. It knows pthread_cond_timedwait().
//
// Where a test moves the clock by a file, no wait is longer than a twentieth of a real second:
// whoever waits looks at the clock again.

#include <dlfcn.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
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

timespec _time(long long nanoseconds) {
    timespec time{};
    time.tv_sec = static_cast<time_t>(nanoseconds / _second);
    time.tv_nsec = static_cast<long>(nanoseconds % _second);
    return time;
}

using Wait = int (*)(pthread_cond_t*, pthread_mutex_t*, clockid_t, const timespec*);

int _waitInSteps(pthread_cond_t* condition, pthread_mutex_t* mutex, long long left) {
    static const Wait real = reinterpret_cast<Wait>(dlsym(RTLD_NEXT, "pthread_cond_clockwait"));
    timespec now{};
    syscall(SYS_clock_gettime, CLOCK_MONOTONIC, &now);
    const timespec end = _time(_nanoseconds(now) + std::min(left, _second / 20));
    (void)real(condition, mutex, CLOCK_MONOTONIC, &end);
    return 0;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int pthread_cond_clockwait(
    pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock, const timespec* end) {
    const long long left = _nanoseconds(*end) - _now(clock);
    if (left <= 0) {
        return ETIMEDOUT;
    }
    if (std::getenv("FAKETIME_TIMESTAMP_FILE") != nullptr) {
        return _waitInSteps(condition, mutex, left);
    }
    const timespec moment = _time(_now(CLOCK_REALTIME) + left);
    return pthread_cond_timedwait(condition, mutex, &moment);
}
