// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <pthread.h>

#include "tavqz/Export.h"

// A POSIX mutex with default attributes: not recursive, and to be released by the thread that
// took it. Nothing throws.
class TAVQZ_EXPORT clibMutex {
public:
    clibMutex();
    ~clibMutex();
    clibMutex(const clibMutex&) = delete;
    clibMutex& operator=(const clibMutex&) = delete;

    // Waits for the mutex and takes it. Returns 1.
    int getMutex();

    // 0, or the error number.
    int releaseMutex();

    // Does nothing: the mutex is there from construction on, and has no name.
    void createMutex(char* name);

private:
    pthread_mutex_t _mutex;
};

// For libraries that write a log together. Not before the module is loaded, and not after.
extern TAVQZ_EXPORT clibMutex loggingMutex;
