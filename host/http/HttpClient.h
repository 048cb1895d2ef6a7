// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "HttpReply.h"
#include "HttpTrust.h"

namespace QZ {

// A server, and how it is known for the one that was meant.
struct HttpPeer {
    std::string host;  // an IPv6 address without brackets
    std::uint16_t port = 0;
    bool isSecure = false;  // asked over TLS
    HttpTrust trust = {};
    std::string socketFile = {};  // its Unix socket, where it is asked over that; in the clear
};

// One HTTP/1.1 connection to a server, made with the first request and again when it was lost
// meanwhile. Over TLS, 1.2 or newer, nothing is sent before the server's certificate is accepted,
// for its name too. Waits for its answers; one thread at a time.
class HttpClient {
public:
    struct Limits {
        std::chrono::milliseconds connecting{10'000};  // TLS agreed on
        std::chrono::milliseconds answering{120'000};  // from sending to the answer's last byte
        std::size_t answerBytes = std::size_t(256) << 20;
    };

    // Throws Error as checkTrust() does where TLS is spoken.
    HttpClient(HttpPeer peer, Limits limits);
    explicit HttpClient(HttpPeer peer) : HttpClient(std::move(peer), {}) {}
    ~HttpClient();

    // Whatever status the server answered with. Throws Error, which names the server: it cannot be
    // reached or has not proved who it is, does not answer in time, or answers with something that
    // is no HTTP or is cut off.
    HttpAnswer post(const std::string& target, const HttpHeaders& headers, const std::string& body);

private:
    class Core;
    std::unique_ptr<Core> _core;
};

}  // namespace QZ
