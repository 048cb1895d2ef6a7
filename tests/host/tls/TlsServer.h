// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "TestCertificate.h"

// A socket that listens on loopback, and no more: who connects is never answered.
class SilentServer {
public:
    SilentServer();
    ~SilentServer();
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    std::uint16_t port() const { return _port; }

    // Waits for somebody to connect; whether somebody has.
    bool awaitClient() const;

    // Whoever has connected, or does, is turned away.
    void close();

protected:
    int socket() const { return _socket; }

private:
    int _socket = -1;
    std::uint16_t _port = 0;
};

// An HTTPS server on loopback that somebody else could have written: OpenSSL, one connection after
// the other.
class TlsServer : private SilentServer {
public:
    // The body of an answer to the request's.
    using Answer = std::function<std::string(const std::string& body)>;

    struct Settings {
        int newestVersion = TLS1_3_VERSION;
        bool closesAfterAnswer = false;  // without saying so
    };

    TlsServer(const TestCertificate& certificate, Answer answer)
        : TlsServer(certificate, std::move(answer), Settings()) {}
    TlsServer(const TestCertificate& certificate, Answer answer, Settings settings);
    ~TlsServer();

    using SilentServer::port;
    std::string url() const { return "https://127.0.0.1:" + std::to_string(port()) + "/"; }

    unsigned connections() const { return _connections; }   // over which TLS was agreed on
    std::string serverName() const { return _serverName; }  // of the last, as it asked for one

private:
    void _accept();
    void _serve(SSL* connection) const;

    const Answer _answer;
    const Settings _settings;
    std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> _context;
    std::atomic<unsigned> _connections{0};
    std::string _serverName;
    std::thread _thread;
};
