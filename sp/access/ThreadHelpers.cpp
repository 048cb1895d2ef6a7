// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/AccessHelpers.h"

int StartThread(void* routine, void* arg, unsigned /*flags*/, pthread_t* thread) {
    const auto function = reinterpret_cast<void* (*)(void*)>(routine);
    return pthread_create(thread, nullptr, function, arg) == 0 ? 1 : 0;
}

int endThreadProcess(pthread_t thread) {
    const int error = pthread_cancel(thread);
    return error != 0 ? error : pthread_join(thread, nullptr);
}
