// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/clibMutex.h"

clibMutex::clibMutex() {
    pthread_mutex_init(&_mutex, nullptr);
}

clibMutex::~clibMutex() {
    pthread_mutex_destroy(&_mutex);
}

int clibMutex::getMutex() {
    pthread_mutex_lock(&_mutex);
    return 1;
}

int clibMutex::releaseMutex() {
    return pthread_mutex_unlock(&_mutex);
}

void clibMutex::createMutex(char* /*name*/) {}

clibMutex loggingMutex;
