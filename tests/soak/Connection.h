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

    // An answer with its length in its header, whole; empty where none came.
    std::string answer() const;

private:
    QZ::Descriptor _socket;
};

// A request as bytes: CIM-XML, with the operation's headers; a password unless "user:password" is
// empty.
std::string request(const std::string& method, const std::string& body,
                    const std::string& userInfo);

// EnumerateInstances of a class, with what is given of parameters.
std::string enumeration(const std::string& className, const std::string& parameters,
                        const std::string& userInfo);
