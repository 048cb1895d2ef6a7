// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

#include "HttpRequest.h"
#include "HttpServer.h"

namespace QZ {

// Makes requests of the bytes of a connection (RFC 9112), one after the other. Never keeps more
// than the limits and what was received at once.
class HttpRequestReader {
public:
    enum State {
        Empty,   // not a byte yet
        Header,  // more bytes are needed
        AtBody,  // the header is in: told once
        Body,    // more bytes are needed
        Complete,
        Refused,
    };

    explicit HttpRequestReader(const HttpLimits& limits);
    ~HttpRequestReader();

    // Where to put what is received, and how much was.
    char* prepare(std::size_t size);
    void commit(std::size_t size);

    // Reads on in what was received.
    State read();

    // Begins with the next request, in what came behind the last one.
    void next();
    bool holdsBytes() const;
    // Lets go what was received.
    void forget();

    // Of a refused request: what it is answered with.
    int refusal() const { return _refusal; }

    // From AtBody on, and for refusals what is known. Its body is there when it is complete; it may
    // be taken away then.
    HttpRequest& request() { return _request; }
    bool isHttp11() const { return _isHttp11; }
    bool keepsAlive() const { return _keepsAlive; }
    // Whether the client waits for a word before it sends the body.
    bool expectsContinue() const { return _expectsContinue; }

private:
    struct Parsing;

    State _refuse(int status);
    bool _passEmptyLines();
    int _judgeHeader();
    void _takeHeader();

    const HttpLimits& _limits;
    std::unique_ptr<Parsing> _parsing;
    HttpRequest _request;
    int _refusal = 0;
    bool _isHeaderTaken = false;
    bool _isHttp11 = true;
    bool _keepsAlive = false;
    bool _expectsContinue = false;
};

}  // namespace QZ
