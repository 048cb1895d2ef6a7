// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "Thread.h"

namespace QZ {

// Sends alerts to their listeners, to each in the order in which they came, and to all at once: a
// queue and, while that holds something, a thread for each destination. An alert that cannot be
// sent is tried three times in all, after 10 and after 60 more seconds, and then given up, with a
// line in the log; the next one gets its own attempts. Where a queue is full the oldest alert that
// waits is given up. Any thread may call; nothing waits for a listener but the destructor.
class DeliveryQueues {
public:
    static constexpr std::size_t LONGEST = 100;  // alerts that wait for one destination
    static constexpr unsigned ATTEMPTS = 3;

    struct Alert {
        std::string url;
        Pegasus::CIMInstance instance;
    };

    // Returns when the listener has the alert. Throws ExportRefused where another attempt makes no
    // sense, anything else where it does.
    using Send = std::function<void(const Alert& alert)>;
    using Log = std::function<void(const std::string& line)>;

    DeliveryQueues(Send send, Log log);

    // Gives up what was not sent. Waits for attempts that are under way.
    ~DeliveryQueues();

    void push(const std::string& destination, Alert alert);

    // Gives up what waits for a destination that is no more.
    void forget(const std::string& destination);

private:
    class Queue;

    const Send _send;
    const Log _log;
    std::mutex _mutex;
    bool _isStopping = false;
    std::map<std::string, std::unique_ptr<Queue>> _queues;
};

}  // namespace QZ
