// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>

#include "HttpReply.h"

namespace QZ {

// The bytes of one answer, from the thread that answers to the connection that sends them.
class ResponseStream : public HttpReply {
public:
    // What the request says of the answer's form.
    struct Form {
        bool isHttp11 = true;  // else no chunks: what is long ends with the connection
        bool keepsAlive = true;
        bool acceptsTrailers = false;
    };

    enum Next {
        MoreFollows,
        Complete,
        CloseBehind,  // complete, and the connection with it
        Abort,        // the connection goes at once, without these bytes
    };

    // Takes bytes to send, in order, from the thread that answers; must not call back.
    using Send = std::function<void(std::string bytes, Next next)>;

    ResponseStream(Form form, Send send);

    void setStatus(int status) override;
    void addHeader(const std::string& name, const std::string& value) override;
    void write(std::string_view bytes) override;
    bool isStarted() const override;
    void discard(const HttpHeaders& trailers) override;
    void setLateAnswer(std::function<HttpAnswer()> make) override;
    void setLogText(const std::string& text) override;

    // The rest of the answer; the thread that answers is done with this object.
    void finish();

    // For the connection. So many bytes left; it is gone, so that nobody needs to wait for it.
    void onSent(std::size_t bytes);
    void onGone();

    // For the connection, when time is over: what is written from now on goes nowhere. False where
    // the answer is complete already. Else sends what the client is told in its place, or cuts off
    // what was begun.
    bool expire();

    struct Summary {
        int status;
        std::size_t bytes;
        std::string text;
    };
    Summary summary() const;

    // A whole answer as bytes.
    static std::string assemble(const HttpAnswer& answer, const Form& form);

private:
    void _start();
    void _sendChunk(std::unique_lock<std::mutex>& lock);
    Next _end() const { return _form.keepsAlive ? Complete : CloseBehind; }

    mutable std::mutex _mutex;
    std::condition_variable _sent;
    Form _form;
    Send _send;
    HttpAnswer _answer;  // its body: what is not yet sent
    std::function<HttpAnswer()> _late;
    std::string _logText;
    std::size_t _bodyBytes = 0;
    std::size_t _pending = 0;  // handed to the connection and not sent
    bool _isStarted = false;
    bool _isCut = false;
    bool _isFinished = false;
    bool _isGone = false;
};

}  // namespace QZ
