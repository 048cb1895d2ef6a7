// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace QZ {

// A thread that removes what expires, when it does.
class ExpiryThread {
public:
    // Removes what has expired by now, and answers in how many seconds something else will; none
    // where nothing will. Must not throw.
    using Remove = std::function<std::optional<std::uint64_t>()>;

    explicit ExpiryThread(Remove remove);
    // Waits for a removal that is under way.
    ~ExpiryThread();

    // Throws Error where the system has no thread to give.
    void start();

    // Has it look anew: something expires that did not, or at another time. Any thread may call.
    void wake();

private:
    class Worker;

    void _work();
    void _wait(std::optional<std::uint64_t> seconds);

    const Remove _remove;
    std::mutex _mutex;
    std::condition_variable _changed;
    bool _isWoken = false;
    bool _isStopping = false;
    std::unique_ptr<Worker> _worker;
};

}  // namespace QZ
