// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <string>

// A client that sends what it is told, byte by byte as given.
class RawClient {
public:
    explicit RawClient(std::uint16_t port) : _socket(socket(AF_INET, SOCK_STREAM, 0)) {
        const timeval patience{10, 0};
        setsockopt(_socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (connect(_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            ADD_FAILURE() << "no connection";
        }
    }
    ~RawClient() { close(_socket); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    void send(const std::string& text) const {
        EXPECT_EQ(ssize_t(text.size()), ::send(_socket, text.data(), text.size(), MSG_NOSIGNAL));
    }

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

private:
    int _socket;
};
