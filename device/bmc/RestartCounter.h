// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "Bmc.h"
#include "Mutex.h"

// How often the machine was started, as far back as its controller's event log goes. Any thread may
// ask.
class RestartCounter {
public:
    // Reads the events since the last time. A long log takes more than one question: until its end
    // was reached, those so far count. 65535 stands for that many and more.
    std::uint16_t count(QZ::Bmc& bmc);

private:
    QZ::Mutex _mutex;  // of all below
    std::uint32_t _erased = 0;
    unsigned _restarts = 0;
    std::uint16_t _next = 0;
    int _seen = -1;  // the last record's number; -1: none
};
