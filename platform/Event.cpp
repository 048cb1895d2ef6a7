// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Event.h"

#include "Clock.h"

namespace QZ {

void Event::set() {
    const std::lock_guard<std::mutex> lock(_mutex);
    _isSet = true;
    // Under the lock: a waiter that wakes up may be the one that destroys the event.
    _condition.notify_all();
}

bool Event::isSet() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _isSet;
}

bool Event::wait(unsigned milliseconds) {
    Clock& clock = Clock::current();
    std::unique_lock<std::mutex> lock(_mutex);
    const std::int64_t end = clock.milliseconds() + milliseconds;
    while (!_isSet) {
        const std::int64_t left = end - clock.milliseconds();
        if (left <= 0)
            return false;
        clock.wait(_condition, lock, static_cast<unsigned>(left));
    }
    return true;
}

}  // namespace QZ
