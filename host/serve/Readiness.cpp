// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Readiness.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "Descriptor.h"

namespace QZ {

namespace {

constexpr const char* VARIABLE = "NOTIFY_SOCKET";

}  // namespace

Readiness::Readiness() {
    const char* const socket = secure_getenv(VARIABLE);
    _socket = socket ? socket : "";
    // A program that is started from here is not who was meant.
    unsetenv(VARIABLE);
}

void Readiness::ready() const {
    _tell("READY=1");
}

void Readiness::reloading() const {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const long long microseconds = now.tv_sec * 1'000'000LL + now.tv_nsec / 1000;
    // By which the manager tells this from what a reload before it has sent.
    _tell("RELOADING=1\nMONOTONIC_USEC=" + std::to_string(microseconds));
}

void Readiness::stopping() const {
    _tell("STOPPING=1");
}

void Readiness::_tell(const std::string& state) const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (_socket.empty() || _socket.size() >= sizeof address.sun_path) {
        return;
    }
    std::memcpy(address.sun_path, _socket.data(), _socket.size());
    if (_socket[0] == '@') {
        address.sun_path[0] = '\0';  // in the abstract namespace of unix(7)
    }
    const Descriptor asking(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    // The name's length tells an abstract one from those that go on with zeros.
    const auto size = socklen_t(offsetof(sockaddr_un, sun_path) + _socket.size());
    (void)::sendto(asking.get(), state.data(), state.size(), MSG_NOSIGNAL,
                   reinterpret_cast<const sockaddr*>(&address), size);
}

}  // namespace QZ
