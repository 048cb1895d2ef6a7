// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <pthread.h>

#include <cstddef>

// While alive, new threads ask for a stack that no machine has.
class NoRoomForThreads {
public:
    NoRoomForThreads() {
        pthread_getattr_default_np(&_before);
        pthread_attr_t huge = _before;
        pthread_attr_setstacksize(&huge, ~std::size_t{0} / 4 * 3);
        pthread_setattr_default_np(&huge);
    }
    ~NoRoomForThreads() { pthread_setattr_default_np(&_before); }
    NoRoomForThreads(const NoRoomForThreads&) = delete;
    NoRoomForThreads& operator=(const NoRoomForThreads&) = delete;

private:
    pthread_attr_t _before{};
};
