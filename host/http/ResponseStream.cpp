// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ResponseStream.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <utility>

#include "Clock.h"

namespace QZ {

namespace {

// What is kept back before an answer begins, and the size of its chunks.
constexpr std::size_t CHUNK = std::size_t(64) * 1024;

const char* _reason(int status) {
    switch (status) {
        case 200:
            return "OK";
        case 400:
            return "Bad Request";
        case 401:
            return "Unauthorized";
        case 403:
            return "Forbidden";
        case 404:
            return "Not Found";
        case 405:
            return "Method Not Allowed";
        case 408:
            return "Request Timeout";
        case 413:
            return "Content Too Large";
        case 415:
            return "Unsupported Media Type";
        case 417:
            return "Expectation Failed";
        case 429:
            return "Too Many Requests";
        case 431:
            return "Request Header Fields Too Large";
        case 500:
            return "Internal Server Error";
        case 501:
            return "Not Implemented";
        case 503:
            return "Service Unavailable";
        case 505:
            return "HTTP Version Not Supported";
        case 510:
            return "Not Extended";
        default:
            return "Other";
    }
}

// Of this second, for which each thread writes it once. RFC 9110, 5.6.7.
std::string_view _date() {
    thread_local std::time_t second = 0;
    thread_local char text[64];
    thread_local std::size_t length = 0;
    const auto now = std::time_t(Clock::current().seconds());
    if (now != second || length == 0) {
        std::tm parts{};
        gmtime_r(&now, &parts);
        length = std::strftime(text, sizeof text, "%a, %d %b %Y %H:%M:%S GMT", &parts);
        second = now;
    }
    return {text, length};
}

// A header ends with its line, whatever is in its text.
void _appendHeader(std::string& head, const std::string& name, const std::string& value) {
    head.append(name).append(": ");
    const std::size_t begin = head.size();
    head.append(value).append("\r\n");
    std::replace_if(
        head.begin() + std::ptrdiff_t(begin), head.end() - 2,
        [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
}

// The head, with room for so many bytes behind it.
std::string _head(const HttpAnswer& answer, const ResponseStream::Form& form,
                  std::string_view framing, std::size_t room) {
    constexpr std::size_t USUAL = 512;
    std::string head;
    head.reserve(USUAL + room);
    head.append(form.isHttp11 ? "HTTP/1.1 " : "HTTP/1.0 ");
    head.append(std::to_string(answer.status)).append(" ").append(_reason(answer.status));
    head.append("\r\nDate: ").append(_date()).append("\r\n");
    for (const auto& [name, value] : answer.headers) {
        _appendHeader(head, name, value);
    }
    head.append(framing);
    if (!form.keepsAlive) {
        head.append("Connection: close\r\n");
    } else if (!form.isHttp11) {
        head.append("Connection: keep-alive\r\n");
    }
    return head.append("\r\n");
}

std::string _chunk(const std::string& bytes) {
    char size[20];
    const int length = std::snprintf(size, sizeof size, "%zx\r\n", bytes.size());
    return std::string(size, std::size_t(length)).append(bytes).append("\r\n");
}

}  // namespace

ResponseStream::ResponseStream(Form form, Send send) : _form(form), _send(std::move(send)) {}

std::string ResponseStream::assemble(const HttpAnswer& answer, const Form& form) {
    const std::string length = "Content-Length: " + std::to_string(answer.body.size()) + "\r\n";
    return _head(answer, form, length, answer.body.size()).append(answer.body);
}

void ResponseStream::setStatus(int status) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _answer.status = status;
}

void ResponseStream::addHeader(const std::string& name, const std::string& value) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _answer.headers.emplace_back(name, value);
}

void ResponseStream::setTrailerNames(const std::string& names) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _trailerNames = names;
}

void ResponseStream::setLateAnswer(std::function<HttpAnswer(Late why)> make) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _late = std::move(make);
}

void ResponseStream::setLogText(const std::string& text) {
    const std::lock_guard<std::mutex> lock(_mutex);
    _logText = text;
}

bool ResponseStream::isStarted() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _isStarted;
}

void ResponseStream::write(std::string_view bytes) {
    std::string ready;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (!_cutOff && !_isGone) {
            _answer.body.append(bytes);
            _bodyBytes += bytes.size();
            if (_answer.body.size() <= CHUNK) {
                return;
            }
            ready = _start();
            ready += _form.isHttp11 ? _chunk(_answer.body) : _answer.body;
            _answer.body.clear();
        }
    }
    // Without the lock: time may be over while this waits.
    if (ready.empty() || !_send(ready)) {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isGone = true;
        throw Disconnected("The client does not take the answer any more");
    }
}

// The head, where it is still to be sent.
std::string ResponseStream::_start() {
    if (_isStarted) {
        return {};
    }
    _isStarted = true;
    if (!_form.isHttp11) {
        _form.keepsAlive = false;
        return _head(_answer, _form, "", _answer.body.size());
    }
    std::string framing = "Transfer-Encoding: chunked\r\n";
    if (_form.acceptsTrailers && !_trailerNames.empty()) {
        framing.append("Trailer: ").append(_trailerNames).append("\r\n");
    }
    return _head(_answer, _form, framing, _answer.body.size());
}

void ResponseStream::discard(const HttpHeaders& trailers) {
    const std::lock_guard<std::mutex> lock(_mutex);
    if (!_isStarted) {
        _answer = {};
        _bodyBytes = 0;
        return;
    }
    _bodyBytes -= _answer.body.size();
    _answer.body.clear();
    if (!_form.isHttp11 || !_form.acceptsTrailers) {
        _cutOff = End{{}, Abort};
        return;
    }
    std::string end = "0\r\n";
    for (const auto& [name, value] : trailers) {
        end.append(name).append(": ").append(value).append("\r\n");
    }
    _cutOff = End{end + "\r\n", Close};
}

std::optional<ResponseStream::End> ResponseStream::finish() {
    const std::lock_guard<std::mutex> lock(_mutex);
    if (_isFinished) {
        return std::nullopt;  // expired
    }
    _isFinished = true;
    if (_isGone) {
        return End{{}, Abort};
    }
    if (_cutOff) {
        return _cutOff;
    }
    if (!_isStarted) {
        _isStarted = true;
        return End{assemble(_answer, _form), _next()};
    }
    if (!_form.isHttp11) {
        return End{_answer.body, Close};
    }
    return End{(_answer.body.empty() ? "" : _chunk(_answer.body)) + "0\r\n\r\n", _next()};
}

std::optional<ResponseStream::End> ResponseStream::expire(Late why) {
    const std::lock_guard<std::mutex> lock(_mutex);
    if (_isFinished) {
        return std::nullopt;
    }
    _isFinished = true;
    _isGone = true;
    if (_isStarted) {
        return End{{}, Abort};
    }
    _isStarted = true;
    _answer = _late ? _late(why) : HttpAnswer{503, {}, {}};
    _form.keepsAlive = false;
    _bodyBytes = _answer.body.size();
    return End{assemble(_answer, _form), Close};
}

ResponseStream::Summary ResponseStream::summary() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return {_answer.status, _bodyBytes, _logText};
}

}  // namespace QZ
