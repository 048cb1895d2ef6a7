// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Watch.h"

#include <poll.h>

#include "AlertCommand.h"
#include "AlertFields.h"
#include "AlertQueue.h"
#include "AlertText.h"
#include "StopSignals.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Subscribed for as long as it lives.
class Subscription {
public:
    Subscription(AlertSource& source, AlertQueue& queue) : _source(source) {
        _source.start([&queue](const CIMInstance& alert) { queue.put(alert); });
    }
    ~Subscription() { _source.stop(); }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

private:
    AlertSource& _source;
};

// The one watch of a call.
class Watching {
public:
    Watching(const Request& request, const WatchPlace& place)
        : _request(request.watch),
          _place(place),
          _text(request.format, place.schema.classes),
          _command(request.watch.command, place.folder, _signals) {}

    void run(AlertSource& source) {
        {
            const Subscription subscription(source, _queue);
            while (!_isEnough()) {
                pollfd waited[] = {{_queue.descriptor(), POLLIN, 0},
                                   {_signals.descriptor(), POLLIN, 0}};
                (void)poll(waited, 2, -1);
                (void)_signals.take();
                _showNext();
            }
        }
        while (_showNext()) {
        }
    }

private:
    bool _isEnough() const {
        return _signals.isToldToStop() || (_request.count != 0 && _shown >= _request.count);
    }

    // False where there is none.
    bool _showNext() {
        const std::optional<CIMInstance> alert = _queue.take();
        if (!alert) {
            return false;
        }
        _place.write(_text.next(*alert));
        ++_shown;
        if (!_request.command.empty()) {
            const std::string failure = _command.run(alertFields(*alert, _place.schema.classes));
            if (!failure.empty()) {
                _place.note(failure);
            }
        }
        return true;
    }

    const WatchRequest& _request;
    const WatchPlace& _place;
    StopSignals _signals;
    AlertQueue _queue;
    AlertText _text;
    AlertCommand _command;
    unsigned _shown = 0;
};

}  // namespace

ExitStatus watch(const Request& request, AlertSource& source, const WatchPlace& place) {
    Watching(request, place).run(source);
    return EXIT_OK;
}

}  // namespace QZ
