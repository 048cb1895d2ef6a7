// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <deque>
#include <mutex>
#include <optional>

#include "Descriptor.h"

namespace QZ {

// Alerts on their way from the threads that raise them to the one that shows them. Any thread may
// put; one takes.
class AlertQueue {
public:
    // Throws Error where the system has no descriptor left.
    AlertQueue();

    void put(const Pegasus::CIMInstance& alert);

    // The oldest; none where there is none.
    std::optional<Pegasus::CIMInstance> take();

    // For poll(): readable while there is an alert to take, or since one was taken last.
    int descriptor() const { return _event.get(); }

private:
    Descriptor _event;
    std::mutex _mutex;
    std::deque<Pegasus::CIMInstance> _alerts;
};

}  // namespace QZ
