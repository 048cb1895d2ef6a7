// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include "CimServer.h"
#include "HttpReply.h"
#include "HttpRequest.h"

namespace QZ {

// CIM operations over HTTP (DSP0200): from a request to its answer. Any thread may call handle().
class RequestHandler {
public:
    struct Limits {
        XmlLimits xml;
        PullContexts::Limits pulls;
        std::chrono::seconds answer{60};  // what a late answer says that it took
    };

    // What is handed over must outlive this object; without subscriptions nobody can subscribe.
    RequestHandler(InProcessServer& providers, Limits limits,
                   Subscriptions* subscriptions = nullptr);

    // Throws Disconnected where the client does not take its answer; nothing else.
    void handle(const HttpRequest& request, HttpReply& reply);

private:
    const Limits _limits;
    CimServer _server;
};

}  // namespace QZ
