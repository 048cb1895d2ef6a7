// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

namespace QZ {

// How a connection's bytes come and go, over a socket that belongs to somebody else. Nothing here
// waits, but sendAll. One thread at a time.
class HttpWire {
public:
    struct Step {
        enum Kind {
            Moved,
            WantsRead,   // nothing can be done before the socket can be read
            WantsWrite,  // or written to
            Ended,       // nothing more will come
            Lost,
        };
        Kind kind;
        std::size_t bytes = 0;  // where some moved
    };

    virtual ~HttpWire() = default;

    virtual Step receive(char* to, std::size_t size) = 0;
    // May send only a part.
    virtual Step send(const char* from, std::size_t size) = 0;

    // Whether there is something to receive of which the socket shows nothing.
    virtual bool holdsBytes() const { return false; }

    // Tells the client that nothing more will be sent.
    virtual void end() = 0;

    // Ends both directions, also for a thread that is at it.
    void cut() const;

    // When the socket is closed the client is told that what it got is not the whole.
    void resetAtClose() const;

    // The common name in the client's certificate, once a byte was received; or empty.
    virtual std::string certificateName() const { return {}; }

    // Sends all of it, waiting for the client for that long. False where it does not take it.
    bool sendAll(const std::string& bytes, std::chrono::milliseconds time);

    // In the clear.
    static std::unique_ptr<HttpWire> make(int socket);

protected:
    explicit HttpWire(int socket) : _socket(socket) {}
    int socket() const { return _socket; }

private:
    const int _socket;
};

}  // namespace QZ
