// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <mutex>

namespace QZ {

// Something that happens once and that threads wait for. Any thread may call any of it.
class Event {
public:
    Event() = default;
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    // Ends every wait, now and from now on.
    void set();

    bool isSet() const;

    // Waits until the event is set, so many milliseconds at most as Clock counts them. Whether it
    // is set then.
    bool wait(unsigned milliseconds);

private:
    mutable std::mutex _mutex;
    std::condition_variable _condition;
    bool _isSet = false;
};

}  // namespace QZ
