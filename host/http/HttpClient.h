// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "HttpReply.h"

namespace QZ {

// One HTTP/1.1 connection to a server, made with the first request and again when it was lost
// meanwhile. Waits for its answers; one thread at a time.
class HttpClient {
public:
    struct Limits {
        std::chrono::milliseconds connecting{10'000};
        std::chrono::milliseconds answering{120'000};  // from sending to the answer's last byte
        std::size_t answerBytes = std::size_t(256) << 20;
    };

    HttpClient(std::string host, std::uint16_t port, Limits limits);
    HttpClient(std::string host, std::uint16_t port) : HttpClient(std::move(host), port, {}) {}
    ~HttpClient();

    // Whatever status the server answered with. Throws Error, which names the server: it cannot be
    // reached, does not answer in time, or answers with something that is no HTTP or is cut off.
    HttpAnswer post(const std::string& target, const HttpHeaders& headers, const std::string& body);

private:
    class Core;
    std::unique_ptr<Core> _core;
};

}  // namespace QZ
