// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Connection.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstdlib>

namespace {

constexpr timeval PATIENCE{120, 0};

sockaddr_in _address(const char* text, std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    inet_pton(AF_INET, text, &address.sin_addr);
    return address;
}

}  // namespace

Connection::Connection(std::uint16_t port, const char* from)
    : _socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    if (!_socket.isOpen()) {
        return;
    }
    setsockopt(_socket.get(), SOL_SOCKET, SO_RCVTIMEO, &PATIENCE, sizeof PATIENCE);
    setsockopt(_socket.get(), SOL_SOCKET, SO_SNDTIMEO, &PATIENCE, sizeof PATIENCE);
    // The port is chosen when it connects, so that those that are over do not use them up.
    const int on = 1;
    setsockopt(_socket.get(), IPPROTO_IP, IP_BIND_ADDRESS_NO_PORT, &on, sizeof on);
    const sockaddr_in own = _address(from, 0);
    const sockaddr_in server = _address("127.0.0.1", port);
    if (bind(_socket.get(), reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0 ||
        connect(_socket.get(), reinterpret_cast<const sockaddr*>(&server), sizeof server) != 0) {
        close();
    }
}

void Connection::reset() {
    const linger atOnce{1, 0};
    setsockopt(_socket.get(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close();
}

bool Connection::send(const std::string& bytes) const {
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count =
            ::send(_socket.get(), bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        done += std::size_t(count);
    }
    return true;
}

bool Connection::sendAtOnce(const std::string& bytes) const {
    return ::send(_socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT) >= 0;
}

bool Connection::isOver() const {
    char byte;
    const ssize_t count = recv(_socket.get(), &byte, 1, MSG_PEEK | MSG_DONTWAIT);
    return count >= 0 || (errno != EAGAIN && errno != EWOULDBLOCK);
}

std::string Connection::answer() const {
    std::string text;
    std::size_t end = std::string::npos;
    char part[16384];
    while (end == std::string::npos || text.size() < end) {
        const ssize_t count = recv(_socket.get(), part, sizeof part, 0);
        if (count <= 0) {
            return text;
        }
        text.append(part, std::size_t(count));
        const std::size_t body = text.find("\r\n\r\n");
        const std::size_t length = text.find("Content-Length: ");
        if (end == std::string::npos && body != std::string::npos && length < body) {
            end = body + 4 + std::size_t(std::strtoul(text.c_str() + length + 16, nullptr, 10));
        }
    }
    return text;
}
