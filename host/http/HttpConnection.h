// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <future>
#include <memory>

#include "Descriptor.h"
#include "HttpShared.h"
#include "HttpWire.h"

namespace QZ {

// A client's connection: reads a request, has it answered, sends the answer, and again. One thread
// at a time is at it.
class HttpConnection {
public:
    virtual ~HttpConnection() = default;

    // The wire is over that socket; the login says where it comes from, and its peer was admitted.
    static std::shared_ptr<HttpConnection> make(std::shared_ptr<HttpShared> shared,
                                                std::shared_ptr<HttpLoop> loop, Descriptor socket,
                                                std::unique_ptr<HttpWire> wire, Login login);

    // Serves requests, or refuses the first. Any thread.
    virtual void start(bool isRefused) = 0;
    // Lets an answer that is under way leave, and then goes. Any thread.
    virtual void stop() = 0;

    // Its turn came, for which it waited with HttpShared. Any thread.
    virtual void onTurn() = 0;
    // Its turn does not come any more: its client is told by the time that the future is ready. Any
    // thread.
    virtual std::future<void> refuseTurn() = 0;
};

}  // namespace QZ
