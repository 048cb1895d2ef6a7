// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "IpmiTransport.h"

namespace QZ {

// A set of commands that all together end at one moment. The time is Clock's. Used by one thread.
class IpmiSession {
public:
    // How long a busy controller is asked again.
    static constexpr unsigned MostRetries = 10;

    // The deadline is one of Clock's milliseconds. The controller is reached with the first
    // command.
    IpmiSession(IpmiTransport& transport, std::int64_t deadline)
        : _transport(transport), _deadline(deadline) {}

    // The reply, whatever its completion code; that of a busy controller only after the retries.
    // Nothing where there is no controller, others kept it until the deadline, the deadline has
    // passed, or the controller has failed.
    std::optional<IpmiReply> ask(const IpmiRequest& request);

    // The same, and nothing unless the command completed.
    std::optional<std::string> askForData(const IpmiRequest& request);

    // True when a reply was waited for in vain.
    bool hasTimedOut() const { return _hasTimedOut; }

    // Whether nothing more will be replied.
    bool isOver() const { return _isLost || _millisecondsLeft() == 0; }

private:
    int _millisecondsLeft() const;
    bool _open();

    IpmiTransport& _transport;
    std::int64_t _deadline;
    std::unique_ptr<IpmiConnection> _connection;
    bool _isLost = false;
    bool _hasTimedOut = false;
};

}  // namespace QZ
