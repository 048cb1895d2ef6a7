// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

namespace QZ {

// Runs jobs on a bounded number of threads, which are made as they are needed. A job may be given
// up: then its thread no longer counts, another takes its place, and it ends when the job returns,
// if ever. Any thread may call.
class WorkerPool {
public:
    // What submit knows a job by.
    class Job;

    struct Size {
        std::size_t threads;
        std::size_t waiting;
        std::size_t lost;  // given up and not back: with more than that nothing is run any more
    };

    explicit WorkerPool(Size size);
    // Jobs that wait are dropped; the threads end when their jobs return.
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    // The job must not throw. Null where too many wait.
    std::shared_ptr<Job> submit(std::function<void()> run);

    // For a job that runs: see above. One that waits is not run; one that ended has ended.
    void giveUp(const std::shared_ptr<Job>& job);

    std::size_t lost() const;

    // Waits until no job waits or runs, those given up aside. False when the time was over.
    bool waitIdle(std::chrono::milliseconds time) const;

private:
    struct State;
    std::shared_ptr<State> _state;  // the threads', too
};

}  // namespace QZ
