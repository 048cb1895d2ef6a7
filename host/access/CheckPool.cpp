// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CheckPool.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <list>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "Error.h"

namespace QZ {

namespace {

// For what is under way at the end: longer than a wrong password takes.
constexpr std::chrono::seconds LEAVING_TIME{5};

}  // namespace

// What the threads share; it outlives the pool where one of them does.
class CheckPool::Core {
public:
    explicit Core(Limits limits) : _limits(limits) {}

    static void start(const std::shared_ptr<Core>& core) {
        try {
            for (std::size_t i = 0; i < core->_limits.threads; ++i) {
                std::thread([core] { core->_run(); }).detach();
                const std::lock_guard<std::mutex> lock(core->_mutex);
                ++core->_threads;
            }
        } catch (const std::system_error& error) {
            core->end();
            throw Error(std::string("Cannot start a thread: ") + error.what());
        }
    }

    bool submit(const std::string& peer, Job job, Job onForgotten) {
        const std::lock_guard<std::mutex> lock(_mutex);
        const auto ofPeer =
            std::count_if(_waiting.begin(), _waiting.end(),
                          [&peer](const Waiting& waiting) { return waiting.peer == peer; });
        if (_ends || _waiting.size() >= _limits.waiting ||
            std::size_t(ofPeer) >= _half(_limits.waiting)) {
            return false;
        }
        _waiting.push_back({peer, std::move(job), std::move(onForgotten)});
        _changed.notify_one();
        return true;
    }

    void end() {
        std::unique_lock<std::mutex> lock(_mutex);
        _ends = true;
        const std::list<Waiting> forgotten = std::exchange(_waiting, {});
        _changed.notify_all();
        lock.unlock();
        for (const Waiting& waiting : forgotten) {
            if (waiting.onForgotten) {
                waiting.onForgotten();
            }
        }
        lock.lock();
        _ended.wait_for(lock, LEAVING_TIME, [this] { return _threads == _over; });
    }

private:
    struct Waiting {
        std::string peer;
        Job job;
        Job onForgotten;
    };

    static std::size_t _half(std::size_t count) { return std::max<std::size_t>(count / 2, 1); }

    // With the mutex held: what may run now.
    std::list<Waiting>::iterator _next() {
        return std::find_if(_waiting.begin(), _waiting.end(), [this](const Waiting& waiting) {
            const auto running = _running.find(waiting.peer);
            return running == _running.end() || running->second < _half(_limits.threads);
        });
    }

    void _run() {
        std::unique_lock<std::mutex> lock(_mutex);
        while (!_ends) {
            const auto next = _next();
            if (next == _waiting.end()) {
                _changed.wait(lock);
                continue;
            }
            const Waiting taken = std::move(*next);
            _waiting.erase(next);
            ++_running[taken.peer];
            lock.unlock();
            taken.job();
            lock.lock();
            if (--_running[taken.peer] == 0) {
                _running.erase(taken.peer);
            }
            // What waited for this peer's turn.
            _changed.notify_one();
        }
        ++_over;
        _ended.notify_all();
    }

    const Limits _limits;
    std::mutex _mutex;
    std::condition_variable _changed;
    std::condition_variable _ended;
    std::list<Waiting> _waiting;
    std::map<std::string, std::size_t> _running;
    std::size_t _threads = 0;
    std::size_t _over = 0;
    bool _ends = false;
};

CheckPool::CheckPool(Limits limits) : _core(std::make_shared<Core>(limits)) {
    Core::start(_core);
}

CheckPool::~CheckPool() {
    _core->end();
}

bool CheckPool::submit(const std::string& peer, Job job, Job onForgotten) {
    return _core->submit(peer, std::move(job), std::move(onForgotten));
}

}  // namespace QZ
