// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Error.h"

namespace QZ {

// The client does not take its answer any more: it is gone, too slow, or was told already that
// this would take too long. Who answers lets it pass.
class Disconnected : public Error {
public:
    using Error::Error;
};

using HttpHeaders = std::vector<std::pair<std::string, std::string>>;

// An answer that is there as a whole.
struct HttpAnswer {
    int status = 200;
    HttpHeaders headers;
    std::string body;
};

// Where an answer goes. Used by the thread that was asked for it, and only until that returns.
// Status and headers may be set until the first 64 KiB are written; an answer of up to that leaves
// as a whole, with its length, a longer one in chunks.
class HttpReply {
public:
    virtual ~HttpReply() = default;

    // 200 where nothing was set.
    virtual void setStatus(int status) = 0;
    virtual void addHeader(const std::string& name, const std::string& value) = 0;

    // Waits while the client has not taken what was written before. Throws Disconnected.
    virtual void write(std::string_view bytes) = 0;

    // Whether something left already, so that it is too late to answer otherwise.
    virtual bool isStarted() const = 0;

    // Forgets what was written, where nothing left yet; else cuts the answer off, in a way that no
    // client takes for its end, after the trailers where it asked for those.
    virtual void discard(const HttpHeaders& trailers) = 0;

    // Why nobody waits for an answer any more.
    enum Late { TookTooLong, ServerStops };

    // What the client is told then, if nothing left yet.
    virtual void setLateAnswer(std::function<HttpAnswer(Late why)> make) = 0;

    // Names the trailers that discard() may come with, for a client that takes some.
    virtual void setTrailerNames(const std::string& names) = 0;

    // One word on the request for the server's log, such as the operation.
    virtual void setLogText(const std::string& text) = 0;
};

}  // namespace QZ
