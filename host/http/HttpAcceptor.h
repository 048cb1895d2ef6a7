// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <thread>
#include <vector>

#include "Descriptor.h"
#include "HttpServer.h"

namespace QZ {

// Takes connections, on a thread of its own: whatever the others are held up by.
class HttpAcceptor {
public:
    // With the connection's socket, which never blocks, and the listener that it came to.
    using OnAccepted =
        std::function<void(Descriptor socket, Login login, const HttpListener& listener)>;

    // Listens. Throws Error with what cannot be had.
    explicit HttpAcceptor(const std::vector<HttpListener>& listeners);
    ~HttpAcceptor();
    HttpAcceptor(const HttpAcceptor&) = delete;
    HttpAcceptor& operator=(const HttpAcceptor&) = delete;

    std::uint16_t port(std::size_t listener) const { return _listening[listener].port; }

    void start(OnAccepted onAccepted);

    // Takes none any more: waits for the one that is being taken. Removes Unix sockets.
    void stop();

private:
    struct Listening {
        HttpListener listener;
        Descriptor socket;
        std::uint16_t port = 0;
    };

    void _run();
    bool _accept(const Listening& listening) const;

    std::vector<Listening> _listening;
    Descriptor _wakeUp;
    OnAccepted _onAccepted;
    std::atomic<bool> _ends{false};
    std::thread _thread;
};

}  // namespace QZ
