// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "HttpReply.h"

namespace QZ {

// The bytes of one answer, between the thread that answers and the connection that it goes to.
class ResponseStream : public HttpReply {
public:
    // What the request says of the answer's form.
    struct Form {
        bool isHttp11 = true;  // else no chunks: what is long ends with the connection
        bool keepsAlive = true;
        bool acceptsTrailers = false;
    };

    enum Next {
        KeepAlive,
        Close,  // behind these bytes
        Abort,  // at once, so that nobody takes what was sent for an answer
    };

    // What ends an answer.
    struct End {
        std::string bytes;
        Next next = KeepAlive;
    };

    // Sends bytes before the answer's end, on the thread that answers; may wait. False where the
    // client does not take them.
    using Send = std::function<bool(const std::string& bytes)>;

    ResponseStream(Form form, Send send);

    void setStatus(int status) override;
    void addHeader(const std::string& name, const std::string& value) override;
    void write(std::string_view bytes) override;
    bool isStarted() const override;
    void discard(const HttpHeaders& trailers) override;
    void setLateAnswer(std::function<HttpAnswer(Late why)> make) override;
    void setTrailerNames(const std::string& names) override;
    void setLogText(const std::string& text) override;

    // What is left to be sent; the thread that answers is done. None where time was over before.
    std::optional<End> finish();

    // When nobody waits any more, from another thread: what is written from now on goes nowhere.
    // None where the answer is complete already; else what the client is told in its place.
    std::optional<End> expire(Late why);

    struct Summary {
        int status;
        std::size_t bytes;
        std::string text;
    };
    Summary summary() const;

    // A whole answer as bytes.
    static std::string assemble(const HttpAnswer& answer, const Form& form);

private:
    std::string _start();
    Next _next() const { return _form.keepsAlive ? KeepAlive : Close; }

    mutable std::mutex _mutex;
    Form _form;
    Send _send;
    HttpAnswer _answer;  // its body: what is not yet sent
    std::function<HttpAnswer(Late why)> _late;
    std::string _trailerNames;
    std::string _logText;
    std::size_t _bodyBytes = 0;
    std::optional<End> _cutOff;
    bool _isStarted = false;
    bool _isFinished = false;
    bool _isGone = false;
};

}  // namespace QZ
