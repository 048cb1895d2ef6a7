// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Thread.h"

#include <cassert>
#include <csignal>

#include "Error.h"

namespace QZ {

Thread::~Thread() {
    assert(!_isStarted);
}

void Thread::start(void* argument) {
    assert(!_isStarted);
    _argument = argument;
    // A new thread inherits the mask: the server's handlers stay with the server's threads.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const int error = pthread_create(&_thread, nullptr, _enter, this);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (error != 0)
        throw Error("Cannot start a thread: " + systemErrorText(error));
    _isStarted = true;
}

int Thread::join() {
    if (!_isStarted)
        return 0;
    pthread_join(_thread, nullptr);
    _isStarted = false;
    return _result;
}

void* Thread::_enter(void* self) {
    auto* const thread = static_cast<Thread*>(self);
    thread->_result = thread->run(thread->_argument);
    return nullptr;
}

}  // namespace QZ
