// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpDeadline.h"

namespace QZ {

void HttpDeadline::set(std::chrono::milliseconds limit, const std::shared_ptr<void>& owner) {
    _end = Clock::now() + limit;
    if (_end < _timerEnd) {
        _arm(owner);
    }
}

void HttpDeadline::cancel() {
    _end = NEVER;
    _timerEnd = NEVER;
    _timer.cancel();
}

void HttpDeadline::_arm(const std::shared_ptr<void>& owner) {
    _timerEnd = _end;
    _timer.expires_at(_end);
    _timer.async_wait([this, owner](boost::system::error_code error) {
        if (error) {
            return;  // cancelled, or set to end earlier
        }
        _timerEnd = NEVER;
        if (_end == NEVER) {
            return;
        }
        if (Clock::now() < _end) {
            return _arm(owner);
        }
        _onOver();
    });
}

}  // namespace QZ
