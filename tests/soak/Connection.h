// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "Descriptor.h"

// A client's connection over loopback, to a server that may refuse, close or reset it at any time:
// nothing of that is an error here. Waits two minutes at most.
class Connection {
public:
    // `from` is an address of loopback.
    Connection(std::uint16_t port, const char* from);

    bool isOpen() const { return _socket.isOpen(); }
    void close() { _socket = QZ::Descriptor(); }
    // As a client that is gone: what it has not read resets the connection.
    void reset();

    // False where the server does not take it.
    bool send(const std::string& bytes) const;
    // As send, without waiting for room: what there is none for is left out.
    bool sendAtOnce(const std::string& bytes) const;
    // Whether the server has ended it, or said something. Does not wait.
    bool isOver() const;

    // An answer with its length in its header, whole, or as far as it came.
    std::string answer() const;

private:
    QZ::Descriptor _socket;
};
