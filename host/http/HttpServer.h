// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HttpReply.h"
#include "HttpRequest.h"
#include "Login.h"

namespace QZ {

class TlsIdentity;

// What a server allows. Deadlines are absolute: a client cannot push them by sending a byte.
struct HttpLimits {
    std::chrono::milliseconds idle{60'000};     // until a request's first byte
    std::chrono::milliseconds header{10'000};   // from there until its header is in
    std::chrono::milliseconds body{30'000};     // from there until its body is in
    std::chrono::milliseconds answer{60'000};   // until the one who answers is back
    std::chrono::milliseconds sending{30'000};  // for the client to take a part of the answer
    std::size_t headerBytes = std::size_t(16) << 10;
    std::size_t bodyBytes = std::size_t(4) << 20;
    std::size_t connections = 256;
    std::size_t connectionsPerClient = 64;  // of one address, or of one uid
    std::size_t workers = 8;                // requests that are answered at once
    std::size_t waiting = 64;               // and that wait for that, beyond
    std::size_t lostWorkers = 64;           // threads that are late and replaced nevertheless
};

// What it costs a server that handlers did not come back in time.
struct HttpLosses {
    std::size_t lost;      // threads that are in such a handler
    std::size_t replaced;  // of so many others took the place
    std::size_t turns;     // requests that are still answered at once
};

// What became of a request, for a log.
struct HttpLogRecord {
    std::string peer;
    std::string user;
    std::string method;
    std::string target;
    std::string text;  // what HttpReply::setLogText said
    int status = 0;
    std::size_t bytes = 0;  // of the body sent
    std::chrono::microseconds time{0};
};

// Where a server is asked: an address and a port, or a Unix socket.
struct HttpListener {
    std::string address = "127.0.0.1";
    std::uint16_t port = 0;  // 0: any that is free
    // The path of a Unix socket; then there is no address. Anybody of this machine may connect:
    // who it is tells the uid.
    std::string socketFile;
    std::shared_ptr<const TlsIdentity> tls;  // none: in the clear
};

struct HttpServerOptions {
    std::vector<HttpListener> listeners{HttpListener()};
    HttpLimits limits;
    std::string realm = "tavqz";
    // Judges a request when its header is in, before its body is read. Does not wait: others of the
    // same thread would too. None: everybody may all.
    Authenticate authenticate;
    std::function<void(const HttpLogRecord&)> log;
    // Told of each thread that is lost, and of each turn that was lost with one and is there again.
    std::function<void(const HttpLosses&)> lose;
};

// An HTTP/1.1 server (also for clients of 1.0): POST and M-POST, keep-alive, chunks both ways,
// Basic authentication. Each request is answered by the handler, on one of several threads; one
// that does not come back in time costs its client an error and the server that thread, which is
// replaced; beyond a limit it costs a turn to be answered, too. Where none is left, all is answered
// with 503 until one comes back.
class HttpServer {
public:
    using Handler = std::function<void(const HttpRequest& request, HttpReply& reply)>;

    // Listens. What the handler throws is answered with status 500. Throws Error where an address,
    // a path or a thread cannot be had.
    HttpServer(HttpServerOptions options, Handler handler);

    // As stop, with no time left.
    ~HttpServer();

    // Of the listener at that place; 0 of a Unix socket.
    std::uint16_t port(std::size_t listener = 0) const;

    // Threads that did not come back in time, and have not since.
    std::size_t lostWorkers() const;

    // Takes no connection any more and waits for the requests that are being answered, and those
    // that wait for it. False where some were not when the time was over: their clients are told,
    // and their threads still run what belongs to the handler, so that the process must end without
    // taking that apart.
    bool stop(std::chrono::milliseconds time);

private:
    class Core;
    std::unique_ptr<Core> _core;
};

}  // namespace QZ
