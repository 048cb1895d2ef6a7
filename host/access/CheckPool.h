// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace QZ {

// A few threads for what takes long, such as a wrong password. One client's address has no more
// than half of them at once, and of the places to wait; whose last turn is longest ago goes first.
// So nobody keeps others out, and neither do several together. Any thread may call.
class CheckPool {
public:
    using Job = std::function<void()>;

    struct Limits {
        std::size_t threads = 4;
        std::size_t waiting = 32;
    };

    // Throws Error where the system has no thread to give.
    explicit CheckPool(Limits limits);

    // Forgets what waits, and says so first. What is under way is waited for, but not forever: it
    // may still run after that, and what it uses is its own affair.
    ~CheckPool();
    CheckPool(const CheckPool&) = delete;
    CheckPool& operator=(const CheckPool&) = delete;

    // False where there is no place, nor one that another address has beyond its share: its last
    // job is forgotten for this one. Where a job is forgotten, or the pool ends before it begins,
    // `onForgotten` is called in its stead. Neither may throw.
    bool submit(const std::string& peer, Job job, Job onForgotten = nullptr);

private:
    class Core;
    std::shared_ptr<Core> _core;
};

}  // namespace QZ
