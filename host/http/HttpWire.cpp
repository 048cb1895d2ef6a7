// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpWire.h"

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>

namespace QZ {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

bool _mustWait(int error) {
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

class PlainWire : public HttpWire {
public:
    explicit PlainWire(int socket) : HttpWire(socket) {}

    Step receive(char* to, std::size_t size) override {
        const ssize_t count = ::recv(socket(), to, size, MSG_DONTWAIT);
        if (count > 0) {
            return {Step::Moved, std::size_t(count)};
        }
        return {count == 0 ? Step::Ended : _mustWait(errno) ? Step::WantsRead : Step::Lost};
    }

    Step send(const char* from, std::size_t size) override {
        const ssize_t count = ::send(socket(), from, size, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count >= 0) {
            return {Step::Moved, std::size_t(count)};
        }
        return {_mustWait(errno) ? Step::WantsWrite : Step::Lost};
    }

    void end() override { ::shutdown(socket(), SHUT_WR); }
};

}  // namespace

bool HttpWire::sendAll(const std::string& bytes, milliseconds time) {
    const auto limit = steady_clock::now() + time;
    for (std::size_t done = 0; done < bytes.size();) {
        const Step step = send(bytes.data() + done, bytes.size() - done);
        done += step.bytes;
        if (step.kind == Step::Moved) {
            continue;
        }
        const auto left = std::chrono::duration_cast<milliseconds>(limit - steady_clock::now());
        pollfd waiting{_socket, short(step.kind == Step::WantsRead ? POLLIN : POLLOUT), 0};
        if (step.kind == Step::Lost || step.kind == Step::Ended || left.count() <= 0 ||
            poll(&waiting, 1, int(left.count())) == 0) {
            return false;
        }
    }
    return true;
}

void HttpWire::cut() const {
    ::shutdown(_socket, SHUT_RDWR);
}

void HttpWire::resetAtClose() const {
    const linger atOnce{1, 0};
    ::setsockopt(_socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

std::unique_ptr<HttpWire> HttpWire::make(int socket) {
    return std::make_unique<PlainWire>(socket);
}

}  // namespace QZ
