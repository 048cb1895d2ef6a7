// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpRequestReader.h"

#include <algorithm>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <optional>
#include <string_view>
#include <utility>

namespace QZ {

namespace http = boost::beast::http;
using boost::system::error_code;

namespace {

// Of a request that is refused, what a log shows of method and target.
constexpr std::size_t SHOWN = 200;

bool _isHostCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view(".-_~[]:%!$&'()*+,;=").find(c) != std::string_view::npos;
}

bool _isHost(std::string_view text) {
    for (const char c : text) {
        if (!_isHostCharacter(c)) {
            return false;
        }
    }
    return true;
}

int _refusalOf(const error_code& error, std::string_view line) {
    if (error == http::error::body_limit) {
        return 413;
    }
    if (error == http::error::header_limit) {
        return 431;
    }
    // Beast says so too of what names no version at all.
    const bool isOther = error == http::error::bad_version && line.find(" HTTP/") != line.npos;
    return isOther ? 505 : 400;
}

}  // namespace

struct HttpRequestReader::Parsing {
    boost::beast::flat_buffer buffer;
    std::optional<http::request_parser<http::string_body>> parser;
};

HttpRequestReader::HttpRequestReader(const HttpLimits& limits)
    : _limits(limits), _parsing(std::make_unique<Parsing>()) {
    next();
}

HttpRequestReader::~HttpRequestReader() = default;

char* HttpRequestReader::prepare(std::size_t size) {
    return static_cast<char*>(_parsing->buffer.prepare(size).data());
}

void HttpRequestReader::commit(std::size_t size) {
    _parsing->buffer.commit(size);
}

void HttpRequestReader::next() {
    auto& parser = _parsing->parser.emplace();
    parser.header_limit(std::uint32_t(_limits.headerBytes));
    parser.body_limit(_limits.bodyBytes);
    _request = {};
    _isHeaderTaken = false;
    _isHttp11 = true;
    _keepsAlive = false;
    _expectsContinue = false;
}

bool HttpRequestReader::holdsBytes() const {
    return _parsing->buffer.size() != 0;
}

void HttpRequestReader::forget() {
    _parsing->buffer.clear();
}

HttpRequestReader::State HttpRequestReader::_refuse(int status) {
    _refusal = status;
    return Refused;
}

// RFC 9112, 2.2: empty lines before a request are let pass. False where one has not ended yet.
bool HttpRequestReader::_passEmptyLines() {
    auto& buffer = _parsing->buffer;
    const auto holds = [&buffer](std::string_view text) {
        return std::string_view(static_cast<const char*>(buffer.data().data()),
                                std::min(buffer.size(), text.size())) == text;
    };
    while (holds("\r\n")) {
        buffer.consume(2);
    }
    return buffer.size() != 1 || !holds("\r");
}

HttpRequestReader::State HttpRequestReader::read() {
    auto& buffer = _parsing->buffer;
    auto& parser = *_parsing->parser;
    if (!parser.got_some() && !_passEmptyLines()) {
        return Empty;
    }
    while (!parser.is_done()) {
        if (buffer.size() == 0) {
            return !parser.got_some() ? Empty : _isHeaderTaken ? Body : Header;
        }
        error_code error;
        buffer.consume(parser.put(buffer.data(), error));
        if (parser.is_header_done() && !_isHeaderTaken) {
            _isHeaderTaken = true;
            _takeHeader();
            const int status = _judgeHeader();
            parser.eager(true);
            return status == 0 ? AtBody : _refuse(status);
        }
        if (error == http::error::need_more) {
            // What does not decode is the header, or a chunk's head, or the fields behind the last.
            return buffer.size() > _limits.headerBytes ? _refuse(_isHeaderTaken ? 400 : 431)
                   : _isHeaderTaken                    ? Body
                                                       : Header;
        }
        if (error) {
            const std::string_view rest(static_cast<const char*>(buffer.data().data()),
                                        buffer.size());
            return _refuse(_refusalOf(error, rest.substr(0, rest.find('\n'))));
        }
    }
    _request.body = std::move(parser.get().body());
    return Complete;
}

// The fields behind a body in chunks come later, and are none of the header's.
void HttpRequestReader::_takeHeader() {
    const auto& header = _parsing->parser->get();
    _isHttp11 = header.version() >= 11;
    _keepsAlive = header.keep_alive();
    _request.method = std::string(header.method_string().substr(0, SHOWN));
    _request.target = std::string(header.target());
    _request.headers.reserve(16);
    for (const auto& field : header) {
        _request.headers.emplace_back(field.name_string(), field.value());
    }
}

// What is wrong with it, as a status; 0 for nothing.
int HttpRequestReader::_judgeHeader() {
    const auto& header = _parsing->parser->get();
    // RFC 9112, 6.3: where the body's end may be taken for elsewhere, there is no next request.
    const auto codings = header.count(http::field::transfer_encoding);
    if (codings != 0 && (!_isHttp11 || header.count(http::field::content_length) != 0)) {
        return 400;
    }
    if (codings > 1 || (codings == 1 && !boost::beast::iequals(
                                            header[http::field::transfer_encoding], "chunked"))) {
        return 501;
    }
    // RFC 9112, 3.2.
    const auto hosts = header.count(http::field::host);
    const auto host = header[http::field::host];
    if (hosts > 1 || (hosts == 0 && _isHttp11) || !_isHost({host.data(), host.size()})) {
        return 400;
    }
    if (_request.method != "POST" && _request.method != "M-POST") {
        return 405;
    }
    const auto coding = header[http::field::content_encoding];
    if (!coding.empty() && !boost::beast::iequals(coding, "identity")) {
        return 415;
    }
    // RFC 9110, 10.1.1: a client of HTTP/1.0 does not wait.
    const auto expected = header[http::field::expect];
    if (_isHttp11 && !expected.empty()) {
        _expectsContinue = boost::beast::iequals(expected, "100-continue");
        return _expectsContinue ? 0 : 417;
    }
    return 0;
}

}  // namespace QZ
