// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "WrongPasswords.h"

#include "Login.h"

namespace QZ {

using std::chrono::milliseconds;

milliseconds WrongPasswords::begin(const std::string& peer, const std::string& user) {
    const std::string client = clientOf(peer);
    const std::lock_guard<std::mutex> lock(_mutex);
    milliseconds wait = _ofUser.begin(client, user);
    if (wait.count() == 0) {
        wait = _ofAddress.begin(client, {});
        if (wait.count() > 0) {
            _ofUser.takeBack(client, user);
        }
    }
    return wait;
}

void WrongPasswords::succeed(const std::string& peer, const std::string& user) {
    const std::string client = clientOf(peer);
    const std::lock_guard<std::mutex> lock(_mutex);
    _ofUser.succeed(client, user);
    _ofAddress.takeBack(client, {});
}

void WrongPasswords::takeBack(const std::string& peer, const std::string& user) {
    const std::string client = clientOf(peer);
    const std::lock_guard<std::mutex> lock(_mutex);
    _ofUser.takeBack(client, user);
    _ofAddress.takeBack(client, {});
}

unsigned WrongPasswords::count(const std::string& peer, const std::string& user) const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _ofUser.count(clientOf(peer), user);
}

}  // namespace QZ
