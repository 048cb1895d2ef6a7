// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include "CimServer.h"
#include "HttpReply.h"
#include "HttpRequest.h"
#include "HttpServer.h"

namespace QZ {

// CIM operations over HTTP (DSP0200): from a request to its answer. Any thread may call handle().
class RequestHandler {
public:
    struct Limits {
        XmlLimits xml;
        PullContexts::Limits pulls;
        // What a late answer says that it took; as long as HttpServer waits for one.
        std::chrono::seconds answer{
            std::chrono::duration_cast<std::chrono::seconds>(HttpLimits().answer)};
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
