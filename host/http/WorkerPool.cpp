// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "WorkerPool.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace QZ {

class WorkerPool::Job {
public:
    enum Phase { Waiting, Running, GivenUp, Ended };

    explicit Job(std::function<void()> what) : run(std::move(what)) {}

    std::function<void()> run;
    Phase phase = Waiting;  // guarded by the pool's mutex
};

struct WorkerPool::State : std::enable_shared_from_this<WorkerPool::State> {
    explicit State(Size limits) : size(limits) {}

    void work();
    bool startThread();

    const Size size;
    std::mutex mutex;
    std::condition_variable jobsCame;
    std::condition_variable jobEnded;
    std::deque<std::shared_ptr<Job>> queue;
    std::size_t threads = 0;  // without the lost ones
    std::size_t idle = 0;
    std::size_t running = 0;
    std::size_t lost = 0;
    bool isClosed = false;
};

// With the mutex held. False where the system has no thread to give.
bool WorkerPool::State::startThread() {
    try {
        std::thread([state = shared_from_this()] { state->work(); }).detach();
    } catch (const std::system_error&) {
        return false;
    }
    ++threads;
    return true;
}

void WorkerPool::State::work() {
    std::unique_lock<std::mutex> lock(mutex);
    while (true) {
        ++idle;
        jobsCame.wait(lock, [this] { return isClosed || !queue.empty(); });
        --idle;
        if (isClosed) {
            --threads;
            return;
        }
        const std::shared_ptr<Job> job = std::move(queue.front());
        queue.pop_front();
        job->phase = Job::Running;
        ++running;
        lock.unlock();
        job->run();
        job->run = nullptr;  // what it holds goes now, not when the last one forgets the job
        lock.lock();
        if (job->phase == Job::GivenUp) {
            --lost;
            jobEnded.notify_all();
            return;
        }
        job->phase = Job::Ended;
        --running;
        jobEnded.notify_all();
    }
}

WorkerPool::WorkerPool(Size size) : _state(std::make_shared<State>(size)) {}

WorkerPool::~WorkerPool() {
    const std::lock_guard<std::mutex> lock(_state->mutex);
    _state->isClosed = true;
    _state->queue.clear();
    _state->jobsCame.notify_all();
}

std::shared_ptr<WorkerPool::Job> WorkerPool::submit(std::function<void()> run) {
    auto job = std::make_shared<Job>(std::move(run));
    const std::lock_guard<std::mutex> lock(_state->mutex);
    State& state = *_state;
    if (state.idle <= state.queue.size() && state.threads < state.size.threads &&
        state.lost <= state.size.lost) {
        state.startThread();
    }
    if (state.threads == 0 || state.queue.size() >= state.size.waiting + state.idle) {
        return nullptr;
    }
    state.queue.push_back(job);
    state.jobsCame.notify_one();
    return job;
}

void WorkerPool::giveUp(const std::shared_ptr<Job>& job) {
    const std::lock_guard<std::mutex> lock(_state->mutex);
    State& state = *_state;
    if (job->phase == Job::Waiting) {
        for (auto at = state.queue.begin(); at != state.queue.end(); ++at) {
            if (*at == job) {
                state.queue.erase(at);
                break;
            }
        }
        job->phase = Job::Ended;
        state.jobEnded.notify_all();
    } else if (job->phase == Job::Running) {
        job->phase = Job::GivenUp;
        --state.running;
        --state.threads;
        ++state.lost;
        if (!state.queue.empty() && state.lost <= state.size.lost) {
            state.startThread();
        }
        state.jobEnded.notify_all();
    }
}

std::size_t WorkerPool::lost() const {
    const std::lock_guard<std::mutex> lock(_state->mutex);
    return _state->lost;
}

bool WorkerPool::waitIdle(std::chrono::milliseconds time) const {
    std::unique_lock<std::mutex> lock(_state->mutex);
    return _state->jobEnded.wait_for(
        lock, time, [this] { return _state->queue.empty() && _state->running == 0; });
}

}  // namespace QZ
