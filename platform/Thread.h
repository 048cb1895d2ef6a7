// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <pthread.h>

namespace QZ {

// A thread of this process, which a derived class gives its work. Whoever starts it joins it before
// the object goes. Signals of the process are never delivered to it.
class Thread {
public:
    Thread() = default;
    virtual ~Thread();
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    // Calls run(argument) on the new thread; once per object. Throws Error where the system has no
    // thread to give.
    void start(void* argument);

    // Waits for the end of run() and answers its result; 0 where nothing was started. Not called
    // by the thread itself.
    int join();

protected:
    // Must not throw.
    virtual int run(void* argument) = 0;

private:
    static void* _enter(void* self);

    pthread_t _thread{};
    void* _argument = nullptr;
    int _result = 0;
    bool _isStarted = false;
};

}  // namespace QZ
