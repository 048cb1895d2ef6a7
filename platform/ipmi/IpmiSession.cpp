// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiSession.h"

#include <algorithm>
#include <utility>

#include "Clock.h"

namespace QZ {

namespace {

constexpr unsigned FirstPauseMilliseconds = 10;
constexpr unsigned LongestPauseMilliseconds = 200;
constexpr unsigned char ReadFruData = 0x11;

bool isBusy(const IpmiRequest& request, const IpmiReply& reply) {
    switch (reply.completion) {
        case IpmiNodeBusy:
        case IpmiControllerTimeout:
        case IpmiDuplicate:
        case IpmiInInitialisation:
            return true;
        case IpmiFruBusy:
            return request.function == IpmiFunction::Storage && request.command == ReadFruData;
        default:
            return false;
    }
}

}  // namespace

int IpmiSession::_millisecondsLeft() const {
    const std::int64_t left = _deadline - Clock::current().milliseconds();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, 3600000));
}

bool IpmiSession::_open() {
    if (_connection == nullptr && !isOver()) {
        _connection = _transport.open(_millisecondsLeft());
        _isLost = _connection == nullptr;
    }
    return !isOver();
}

std::optional<IpmiReply> IpmiSession::ask(const IpmiRequest& request) {
    unsigned pause = FirstPauseMilliseconds;
    for (unsigned retries = 0; _open(); ++retries) {
        IpmiReply reply;
        const auto outcome = _connection->send(request, reply, _millisecondsLeft());
        if (outcome != IpmiConnection::Outcome::Replied) {
            _hasTimedOut = outcome == IpmiConnection::Outcome::TimedOut;
            _isLost = true;
            _connection.reset();
            return std::nullopt;
        }
        if (!isBusy(request, reply) || retries == MostRetries)
            return reply;
        Clock::current().sleepMilliseconds(
            std::min(pause, static_cast<unsigned>(_millisecondsLeft())));
        pause = std::min(2 * pause, LongestPauseMilliseconds);
    }
    return std::nullopt;
}

std::optional<std::string> IpmiSession::askForData(const IpmiRequest& request) {
    std::optional<IpmiReply> reply = ask(request);
    if (!reply || reply->completion != IpmiNormal)
        return std::nullopt;
    return std::move(reply->data);
}

}  // namespace QZ
