// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CheckPool.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <iterator>
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
        std::list<Waiting> added;
        added.push_back({peer, std::move(job), std::move(onForgotten)});
        std::list<Waiting> forgotten;
        {
            const std::lock_guard<std::mutex> lock(_mutex);
            const auto found = _peers.find(peer);
            const std::size_t own = found == _peers.end() ? 0 : found->second.waiting;
            if (_ends || own >= _half(_limits.waiting)) {
                return false;
            }
            if (_waiting.size() >= _limits.waiting) {
                const auto last = _lastBeyondShare(own);
                if (last == _waiting.end()) {
                    return false;
                }
                --_peers[last->peer].waiting;
                forgotten.splice(forgotten.end(), _waiting, last);
            }
            ++_peers[peer].waiting;
            _waiting.splice(_waiting.end(), added);
            _changed.notify_one();
        }
        _tell(forgotten);
        return true;
    }

    void end() {
        std::unique_lock<std::mutex> lock(_mutex);
        _ends = true;
        const std::list<Waiting> forgotten = std::exchange(_waiting, {});
        _changed.notify_all();
        lock.unlock();
        _tell(forgotten);
        lock.lock();
        _ended.wait_for(lock, LEAVING_TIME, [this] { return _threads == _over; });
    }

private:
    struct Waiting {
        std::string peer;
        Job job;
        Job onForgotten;
    };

    struct Peer {
        std::size_t waiting = 0;
        std::size_t running = 0;
        std::uint64_t turn = 0;  // its last; 0 where it had none yet
    };

    static void _tell(const std::list<Waiting>& forgotten) {
        for (const Waiting& waiting : forgotten) {
            if (waiting.onForgotten) {
                waiting.onForgotten();
            }
        }
    }

    static std::size_t _half(std::size_t count) { return std::max<std::size_t>(count / 2, 1); }

    // With the mutex held: the last of whoever has most waiting, where even without it he has no
    // fewer than somebody who has so many now and gets one more; or the end.
    std::list<Waiting>::iterator _lastBeyondShare(std::size_t own) {
        const auto most =
            std::max_element(_peers.begin(), _peers.end(), [](const auto& left, const auto& right) {
                return left.second.waiting < right.second.waiting;
            });
        if (most == _peers.end() || most->second.waiting <= own + 1) {
            return _waiting.end();
        }
        auto last = std::prev(_waiting.end());
        while (last->peer != most->first) {
            --last;
        }
        return last;
    }

    // With the mutex held: what is to run now; or the end.
    std::list<Waiting>::iterator _next() {
        auto best = _waiting.end();
        std::uint64_t bestTurn = 0;
        for (auto waiting = _waiting.begin(); waiting != _waiting.end(); ++waiting) {
            const Peer& peer = _peers[waiting->peer];
            if (peer.running < _half(_limits.threads) &&
                (best == _waiting.end() || peer.turn < bestTurn)) {
                best = waiting;
                bestTurn = peer.turn;
            }
        }
        return best;
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
            Peer& peer = _peers[taken.peer];
            --peer.waiting;
            ++peer.running;
            peer.turn = ++_turns;
            lock.unlock();
            taken.job();
            lock.lock();
            --peer.running;
            if (peer.running == 0 && peer.waiting == 0) {
                _peers.erase(taken.peer);
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
    std::map<std::string, Peer> _peers;  // of those that wait or run
    std::uint64_t _turns = 0;
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
