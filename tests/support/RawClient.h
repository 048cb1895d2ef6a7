// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <string>

// A client that sends what it is told, byte by byte as given.
class RawClient {
public:
    // On loopback; `from` is an address of this machine.
    explicit RawClient(std::uint16_t port, const char* from = "127.0.0.1") : RawClient(AF_INET) {
        sockaddr_in own{};
        own.sin_family = AF_INET;
        inet_pton(AF_INET, from, &own.sin_addr);
        EXPECT_EQ(0, bind(_socket, reinterpret_cast<const sockaddr*>(&own), sizeof own));
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        _connect(reinterpret_cast<const sockaddr*>(&address), sizeof address);
    }
    // Of a Unix socket.
    explicit RawClient(const std::string& path) : RawClient(AF_UNIX) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        _connect(reinterpret_cast<const sockaddr*>(&address), sizeof address);
    }
    ~RawClient() { close(_socket); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    void send(const std::string& text) const {
        EXPECT_EQ(ssize_t(text.size()), ::send(_socket, text.data(), text.size(), MSG_NOSIGNAL));
    }

    void endSending() const { EXPECT_EQ(0, shutdown(_socket, SHUT_WR)); }

    // What comes next, to the size of the buffer at most. 0 where the server closed, -1 after a
    // reset or where nothing comes.
    ssize_t receive(char* buffer, std::size_t size) const { return recv(_socket, buffer, size, 0); }

    // What arrives until the server closes, or until it ends like that.
    std::string receive(const std::string& end = std::string()) const {
        std::string text;
        char part[4096];
        while (end.empty() || text.size() < end.size() ||
               text.compare(text.size() - end.size(), end.size(), end) != 0) {
            const ssize_t count = recv(_socket, part, sizeof part, 0);
            if (count <= 0) {
                EXPECT_EQ(0, count) << "neither an end nor more";
                break;
            }
            text.append(part, std::size_t(count));
        }
        return text;
    }

    // Whether the connection ends with a reset, after whatever arrives.
    bool isReset() const {
        char part[4096];
        ssize_t count = 1;
        while (count > 0) {
            count = recv(_socket, part, sizeof part, 0);
        }
        return count < 0 && errno == ECONNRESET;
    }

    int descriptor() const { return _socket; }

private:
    explicit RawClient(int family) : _socket(socket(family, SOCK_STREAM, 0)) {
        const timeval patience{10, 0};
        setsockopt(_socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    }

    void _connect(const sockaddr* address, socklen_t size) const {
        if (connect(_socket, address, size) != 0) {
            ADD_FAILURE() << "no connection";
        }
    }

    int _socket;
};
