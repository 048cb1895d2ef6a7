// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpClient.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <optional>
#include <utility>

#include "HttpUrl.h"

namespace QZ {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;

class HttpClient::Core {
public:
    Core(std::string host, std::uint16_t port, Limits limits)
        : _host(std::move(host)), _port(port), _limits(limits) {}

    HttpAnswer post(const std::string& target, const HttpHeaders& headers,
                    const std::string& body) {
        http::request<http::string_body> request(http::verb::post, target, 11);
        request.set(http::field::host, hostAndPort(_host, _port));
        for (const auto& [name, value] : headers) {
            request.set(name, value);
        }
        request.body() = body;
        request.prepare_payload();
        const bool isReused = _stream.has_value();
        error_code error = _exchange(request);
        // The server may have closed an idle connection; what it did not read it did not do.
        if (error && isReused && _parser->is_header_done() == false && _isLost(error)) {
            error = _exchange(request);
        }
        if (error) {
            _stream.reset();
            _fail("does not answer: " + _text(error));
        }
        return _taken();
    }

private:
    using Request = http::request<http::string_body>;

    [[noreturn]] void _fail(const std::string& what) const {
        throw Error("The server at " + hostAndPort(_host, _port) + " " + what);
    }

    static bool _isLost(error_code error) {
        return error == http::error::end_of_stream || error == asio::error::connection_reset ||
               error == asio::error::broken_pipe;
    }

    static std::string _text(error_code error) {
        if (error == beast::error::timeout) {
            return "it takes too long";
        }
        if (error == http::error::partial_message) {
            return "its answer is cut off";
        }
        if (error == http::error::end_of_stream) {
            return "it closed the connection";
        }
        return error.message();
    }

    // Runs what was started to its end.
    void _run() {
        _io.restart();
        _io.run();
    }

    void _connect() {
        error_code error;
        tcp::resolver resolver(_io);
        const auto found = resolver.resolve(_host, std::to_string(_port), error);
        if (error) {
            _fail("is not known: " + error.message());
        }
        _stream.emplace(_io);
        _buffer.clear();
        _stream->expires_after(_limits.connecting);
        _stream->async_connect(
            found, [&error](error_code result, const tcp::endpoint&) { error = result; });
        _run();
        if (error) {
            _stream.reset();
            _fail("cannot be reached: " + _text(error));
        }
    }

    error_code _exchange(const Request& request) {
        _parser.emplace();
        _parser->body_limit(_limits.answerBytes);
        if (!_stream) {
            _connect();
        }
        _stream->expires_after(_limits.answering);
        error_code error;
        const auto done = [&error](error_code result, std::size_t) { error = result; };
        http::async_write(*_stream, request, done);
        _run();
        if (!error) {
            http::async_read_header(*_stream, _buffer, *_parser, done);
            _run();
        }
        if (!error && !_hasNoLength()) {
            http::async_read(*_stream, _buffer, *_parser, done);
            _run();
        }
        if (error) {
            _stream.reset();
        }
        return error;
    }

    // Whether the answer is an error whose body would end with the connection, which some servers
    // leave open. There is none then.
    bool _hasNoLength() const {
        return _parser->get().result() != http::status::ok && !_parser->chunked() &&
               !_parser->content_length();
    }

    HttpAnswer _taken() {
        auto& message = _parser->get();
        HttpAnswer answer;
        answer.status = int(message.result_int());
        for (const auto& field : message) {
            answer.headers.emplace_back(std::string(field.name_string()),
                                        std::string(field.value()));
        }
        answer.body = std::move(message.body());
        if (!message.keep_alive() || _hasNoLength()) {
            _stream.reset();
        }
        return answer;
    }

    const std::string _host;
    const std::uint16_t _port;
    const Limits _limits;
    asio::io_context _io;
    std::optional<beast::tcp_stream> _stream;
    beast::flat_buffer _buffer;
    std::optional<http::response_parser<http::string_body>> _parser;
};

HttpClient::HttpClient(std::string host, std::uint16_t port, Limits limits)
    : _core(std::make_unique<Core>(std::move(host), port, limits)) {}

HttpClient::~HttpClient() = default;

HttpAnswer HttpClient::post(const std::string& target, const HttpHeaders& headers,
                            const std::string& body) {
    return _core->post(target, headers, body);
}

}  // namespace QZ
