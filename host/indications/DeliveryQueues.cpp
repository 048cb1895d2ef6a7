// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DeliveryQueues.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <utility>

#include "CimText.h"
#include "Clock.h"
#include "ExportMessage.h"

namespace QZ {

namespace {

// Milliseconds before the second attempt, and before the third.
constexpr unsigned WAITS[DeliveryQueues::ATTEMPTS - 1] = {10'000, 60'000};

std::string _name(const DeliveryQueues::Alert& alert) {
    return "alert " + make_string(alert.instance.getClassName().getString()) + " for " + alert.url;
}

}  // namespace

// One destination's alerts. Everything but the attempts is done under the owner's mutex.
class DeliveryQueues::Queue {
public:
    explicit Queue(DeliveryQueues& owner) : _owner(owner) {}

    // Lets a thread of its own send what waits, if none does. Throws Error where there is none.
    void work() {
        if (_isWorking) {
            return;
        }
        join();
        _worker = std::make_unique<Worker>();
        _worker->start(this);
        _isWorking = true;
    }

    // Lets it end, with a word on why in what is logged.
    void end(const char* why) {
        if (_endsFor != nullptr) {
            return;
        }
        _endsFor = why;
        _lastAttempts = Clock::current().milliseconds() + LAST_ATTEMPTS;
        _ending.notify_all();
        if (!waiting.empty()) {
            tryToWork();
        }
    }

    // Where there is no thread to be had, the next alert tries again.
    void tryToWork() {
        try {
            work();
        } catch (const std::exception& error) {
            _owner._log(_name(waiting.back()) + ": waits: " + error.what());
        }
    }

    // Waits for a thread that is at its end, or is told to come to it.
    void join() {
        if (_worker) {
            _worker->join();
        }
    }

    // What still waits when it has ended.
    void giveUp() {
        for (const Alert& alert : waiting) {
            _owner._log(_name(alert) + ": given up: " + _endsFor);
        }
        waiting.clear();
    }

    bool isWorking() const { return _isWorking; }

    std::deque<Alert> waiting;

private:
    class Worker : public Thread {
    protected:
        int run(void* queue) override {
            static_cast<Queue*>(queue)->_work();
            return 0;
        }
    };

    void _work() {
        std::unique_lock<std::mutex> lock(_owner._mutex);
        while (!waiting.empty() && !_isOver()) {
            const Alert alert = std::move(waiting.front());
            waiting.pop_front();
            _deliver(alert, lock);
        }
        giveUp();
        _isWorking = false;
    }

    bool _isOver() const {
        return _endsFor != nullptr &&
               (_hasFailedAtEnd || Clock::current().milliseconds() >= _lastAttempts);
    }

    void _deliver(const Alert& alert, std::unique_lock<std::mutex>& lock) {
        std::string reason;
        for (unsigned attempt = 1; attempt <= ATTEMPTS; ++attempt) {
            const bool isAtEnd = _endsFor != nullptr;
            lock.unlock();
            const Outcome outcome = _attempt(alert, reason);
            lock.lock();
            if (outcome == Sent) {
                return;
            }
            if (outcome == Refused) {
                _owner._log(_name(alert) + ": refused: " + reason);
                return;
            }
            _hasFailedAtEnd = isAtEnd;
            if (attempt < ATTEMPTS) {
                _wait(WAITS[attempt - 1], lock);
            }
            if (_endsFor != nullptr) {
                break;
            }
        }
        _owner._log(_name(alert) + ": given up: " + reason);
    }

    enum Outcome { Sent, Refused, Failed };

    Outcome _attempt(const Alert& alert, std::string& reason) const {
        try {
            _owner._send(alert);
            return Sent;
        } catch (const ExportRefused& error) {
            reason = error.what();
            return Refused;
        } catch (const std::exception& error) {
            reason = error.what();
        } catch (...) {
            reason = "for no known reason";
        }
        return Failed;
    }

    void _wait(unsigned milliseconds, std::unique_lock<std::mutex>& lock) {
        Clock& clock = Clock::current();
        const std::int64_t end = clock.milliseconds() + milliseconds;
        for (std::int64_t left = milliseconds; left > 0 && _endsFor == nullptr;
             left = end - clock.milliseconds()) {
            clock.wait(_ending, lock, unsigned(left));
        }
    }

    DeliveryQueues& _owner;
    std::unique_ptr<Worker> _worker;
    bool _isWorking = false;
    std::condition_variable _ending;
    const char* _endsFor = nullptr;  // null as long as it does not
    std::int64_t _lastAttempts = 0;  // the moment until which they begin
    bool _hasFailedAtEnd = false;
};

DeliveryQueues::DeliveryQueues(Send send, Log log) : _send(std::move(send)), _log(std::move(log)) {}

DeliveryQueues::~DeliveryQueues() {
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopping = true;
        for (auto& [destination, queue] : _queues) {
            queue->end("the server stops");
            _forgotten.push_back(std::move(queue));
        }
    }
    for (const auto& queue : _forgotten) {
        queue->join();
        queue->giveUp();
    }
}

void DeliveryQueues::push(const std::string& destination, Alert alert) {
    const std::lock_guard<std::mutex> lock(_mutex);
    if (_isStopping) {
        return;
    }
    _removeEnded();
    auto& queue = _queues[destination];
    if (!queue) {
        queue = std::make_unique<Queue>(*this);
    }
    if (queue->waiting.size() == LONGEST) {
        _log(_name(queue->waiting.front()) + ": given up: too many are waiting");
        queue->waiting.pop_front();
    }
    queue->waiting.push_back(std::move(alert));
    queue->tryToWork();
}

void DeliveryQueues::forget(const std::string& destination) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = _queues.find(destination);
    if (found != _queues.end()) {
        found->second->end("the destination is deleted");
        _forgotten.push_back(std::move(found->second));
        _queues.erase(found);
    }
    _removeEnded();
}

void DeliveryQueues::_removeEnded() {
    const auto ended = std::partition(_forgotten.begin(), _forgotten.end(),
                                      [](const auto& queue) { return queue->isWorking(); });
    std::for_each(ended, _forgotten.end(), [](const auto& queue) {
        queue->join();
        queue->giveUp();
    });
    _forgotten.erase(ended, _forgotten.end());
}

}  // namespace QZ
