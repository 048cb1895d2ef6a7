// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SocketSend.h"

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>

namespace QZ {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

ssize_t sendNow(int socket, const char* bytes, std::size_t size) {
    const ssize_t sent = ::send(socket, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT);
    return sent < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) ? 0 : sent;
}

bool sendAll(int socket, const std::string& bytes, milliseconds time) {
    const auto end = steady_clock::now() + time;
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t sent = sendNow(socket, bytes.data() + done, bytes.size() - done);
        if (sent < 0) {
            return false;
        }
        done += std::size_t(sent);
        const auto left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now());
        pollfd waiting{socket, POLLOUT, 0};
        if (done < bytes.size() &&
            (left.count() <= 0 || poll(&waiting, 1, int(left.count())) == 0)) {
            return false;
        }
    }
    return true;
}

}  // namespace QZ
