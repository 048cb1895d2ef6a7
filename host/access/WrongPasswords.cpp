// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "WrongPasswords.h"

namespace QZ {

using std::chrono::milliseconds;

milliseconds WrongPasswords::begin(const std::string& peer, const std::string& user) {
    const std::lock_guard<std::mutex> lock(_mutex);
    milliseconds wait = _ofUser.begin(peer, user);
    if (wait.count() == 0) {
        wait = _ofAddress.begin(peer, {});
        if (wait.count() > 0) {
            _ofUser.takeBack(peer, user);
        }
    }
    return wait;
}

void WrongPasswords::succeed(const std::string& peer, const std::string& user) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _ofUser.succeed(peer, user);
    _ofAddress.takeBack(peer, {});
}

void WrongPasswords::takeBack(const std::string& peer, const std::string& user) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _ofUser.takeBack(peer, user);
    _ofAddress.takeBack(peer, {});
}

unsigned WrongPasswords::count(const std::string& peer, const std::string& user) const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _ofUser.count(peer, user);
}

}  // namespace QZ
