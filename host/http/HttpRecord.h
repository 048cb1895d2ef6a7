// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include "HttpServer.h"
#include "ResponseStream.h"

namespace QZ {

// Keeps what a log is told of a request.
class HttpRecord {
public:
    using Time = std::chrono::steady_clock::time_point;

    // Who asks, and what. When it began to be answered.
    Time begin(const std::string& peer, const HttpRequest& request);

    // Tells what became of it, where somebody wants to know.
    void report(const HttpServerOptions& options, const Caller& caller, int status) const;
    void report(const HttpServerOptions& options, const Caller& caller,
                const ResponseStream& answer) const;

private:
    void _report(const HttpServerOptions& options, const Caller& caller,
                 HttpLogRecord record) const;

    HttpLogRecord _known;
    Time _begin;
};

}  // namespace QZ
