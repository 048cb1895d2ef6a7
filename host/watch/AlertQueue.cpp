// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertQueue.h"

#include <sys/eventfd.h>

#include <cerrno>

#include "Error.h"

namespace QZ {

using namespace Pegasus;

AlertQueue::AlertQueue() : _event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!_event.isOpen()) {
        throw Error("Cannot wait for alerts: " + systemErrorText(errno));
    }
}

void AlertQueue::put(const CIMInstance& alert) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _alerts.push_back(alert);
    (void)eventfd_write(_event.get(), 1);
}

std::optional<CIMInstance> AlertQueue::take() {
    const std::lock_guard<std::mutex> lock(_mutex);
    if (_alerts.empty()) {
        eventfd_t count = 0;
        (void)eventfd_read(_event.get(), &count);
        return std::nullopt;
    }
    std::optional<CIMInstance> alert(_alerts.front());
    _alerts.pop_front();
    return alert;
}

}  // namespace QZ
