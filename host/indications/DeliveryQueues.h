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
#include <vector>

#include "Thread.h"

namespace QZ {

// Sends alerts to their listeners, to each in the order in which they came, and to all at once: a
// queue and, while that holds something, a thread for each destination. An alert that cannot be
// sent is tried three times in all, after 10 and after 60 more seconds, and then given up, with a
// line in the log; the next one gets its own attempts. Where a queue is full the oldest alert that
// waits is given up.
//
// A queue that ends, with its destination or with this object, tries no alert twice any more. What
// was never tried gets its attempt, for whoever raised it will not do so again: within five
// seconds, and until one fails. Any thread may call; nothing waits for a listener but the
// destructor.
class DeliveryQueues {
public:
    static constexpr std::size_t LONGEST = 100;  // alerts that wait for one destination
    static constexpr unsigned ATTEMPTS = 3;
    static constexpr unsigned LAST_ATTEMPTS = 5'000;  // milliseconds, at the end of a queue

    struct Alert {
        std::string url;
        Pegasus::CIMInstance instance;
    };

    // Returns when the listener has the alert. Throws ExportRefused where another attempt makes no
    // sense, anything else where it does.
    using Send = std::function<void(const Alert& alert)>;
    using Log = std::function<void(const std::string& line)>;

    DeliveryQueues(Send send, Log log);

    // Ends all queues, and waits for that.
    ~DeliveryQueues();

    void push(const std::string& destination, Alert alert);

    // Ends the queue of a destination that is no more. One of the same name begins anew.
    void forget(const std::string& destination);

private:
    class Queue;

    void _removeEnded();

    const Send _send;
    const Log _log;
    std::mutex _mutex;
    bool _isStopping = false;
    std::map<std::string, std::unique_ptr<Queue>> _queues;
    std::vector<std::unique_ptr<Queue>> _forgotten;
};

}  // namespace QZ
