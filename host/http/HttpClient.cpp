// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpClient.h"

#include <sys/un.h>

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/error.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/core/basic_stream.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <optional>
#include <utility>
#include <variant>

#include "HttpUrl.h"
#include "TlsClient.h"

namespace QZ {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

constexpr std::size_t LONGEST_SOCKET_NAME = sizeof(sockaddr_un::sun_path) - 1;

}  // namespace

class HttpClient::Core {
public:
    Core(HttpPeer peer, Limits limits) : _peer(std::move(peer)), _limits(limits) {
        if (_peer.isSecure) {
            setTrust(_tls.emplace(asio::ssl::context::tls_client).native_handle(), _peer.trust);
        }
    }

    HttpAnswer post(const std::string& target, const HttpHeaders& headers,
                    const std::string& body) {
        http::request<http::string_body> request(http::verb::post, target, 11);
        request.set(http::field::host, hostAndPort(_peer.host, _peer.port));
        for (const auto& [name, value] : headers) {
            request.set(name, value);
        }
        request.body() = body;
        request.prepare_payload();
        const bool isReused = _isConnected();
        error_code error = _exchange(request);
        // The server may have closed an idle connection; what it did not read it did not do.
        if (error && isReused && _parser->is_header_done() == false && _isLost(error)) {
            error = _exchange(request);
        }
        if (error) {
            _disconnect();
            _fail("does not answer: " + _text(error));
        }
        return _taken();
    }

private:
    using Request = http::request<http::string_body>;
    using Plain = beast::tcp_stream;
    using Local = beast::basic_stream<asio::local::stream_protocol>;
    using Secure = asio::ssl::stream<Plain>;
    using None = std::monostate;

    [[noreturn]] void _fail(const std::string& what) const {
        const std::string where = _peer.socketFile.empty() ? hostAndPort(_peer.host, _peer.port)
                                                           : "unix://" + _peer.socketFile;
        throw Error("The server at " + where + " " + what);
    }

    static bool _isLost(error_code error) {
        return error == http::error::end_of_stream || error == asio::error::connection_reset ||
               error == asio::error::broken_pipe || error == asio::ssl::error::stream_truncated;
    }

    static std::string _text(error_code error) {
        if (error == beast::error::timeout) {
            return "it takes too long";
        }
        if (error == http::error::partial_message || error == asio::ssl::error::stream_truncated) {
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

    bool _isConnected() const { return !std::holds_alternative<None>(_stream); }
    void _disconnect() { _stream.emplace<None>(); }

    void _connect() {
        _buffer.clear();
        _peer.socketFile.empty() ? _connectOverNetwork() : _connectLocally();
    }

    void _connectLocally() {
        // Longer names are none that a socket can have.
        if (_peer.socketFile.size() > LONGEST_SOCKET_NAME) {
            _fail("cannot be reached: its name is too long");
        }
        error_code error;
        auto& local = _stream.emplace<Local>(_io);
        local.expires_after(_limits.connecting);
        local.async_connect(asio::local::stream_protocol::endpoint(_peer.socketFile),
                            [&error](error_code result) { error = result; });
        _run();
        if (error) {
            _disconnect();
            _fail("cannot be reached: " + _text(error));
        }
    }

    void _connectOverNetwork() {
        error_code error;
        tcp::resolver resolver(_io);
        const auto found = resolver.resolve(_peer.host, std::to_string(_peer.port), error);
        if (error) {
            _fail("is not known: " + error.message());
        }
        auto& plain = _stream.emplace<Plain>(_io);
        plain.expires_after(_limits.connecting);
        plain.async_connect(found,
                            [&error](error_code result, const tcp::endpoint&) { error = result; });
        _run();
        if (error) {
            _disconnect();
            _fail("cannot be reached: " + _text(error));
        }
        if (_tls) {
            _shakeHands(std::move(plain));
        }
    }

    // Within the time that is left for connecting.
    void _shakeHands(Plain plain) {
        auto& secure = _stream.emplace<Secure>(std::move(plain), *_tls);
        expectServer(secure.native_handle(), _peer.host);
        error_code error;
        secure.async_handshake(asio::ssl::stream_base::client,
                               [&error](error_code result) { error = result; });
        _run();
        if (error) {
            const bool isOurs = error.category() == asio::error::get_ssl_category();
            const std::string failure = handshakeFailure(
                secure.native_handle(), isOurs ? static_cast<unsigned long>(error.value()) : 0);
            _disconnect();
            _fail(failure.empty() ? "does not agree on TLS: " + _text(error) : failure);
        }
    }

    error_code _exchange(const Request& request) {
        _parser.emplace();
        _parser->body_limit(_limits.answerBytes);
        if (!_isConnected()) {
            _connect();
        }
        const error_code error = _exchangeOverIt(request);
        if (error) {
            _disconnect();
        }
        return error;
    }

    error_code _exchangeOverIt(const Request& request) {
        if (Secure* const secure = std::get_if<Secure>(&_stream)) {
            return _exchangeOver(*secure, request);
        }
        Local* const local = std::get_if<Local>(&_stream);
        return local ? _exchangeOver(*local, request)
                     : _exchangeOver(std::get<Plain>(_stream), request);
    }

    template <class Stream>
    error_code _exchangeOver(Stream& stream, const Request& request) {
        beast::get_lowest_layer(stream).expires_after(_limits.answering);
        error_code error;
        const auto done = [&error](error_code result, std::size_t) { error = result; };
        http::async_write(stream, request, done);
        _run();
        if (!error) {
            http::async_read_header(stream, _buffer, *_parser, done);
            _run();
        }
        if (!error && !_hasNoLength()) {
            http::async_read(stream, _buffer, *_parser, done);
            _run();
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
            _disconnect();
        }
        return answer;
    }

    const HttpPeer _peer;
    const Limits _limits;
    asio::io_context _io;
    std::optional<asio::ssl::context> _tls;
    std::variant<None, Plain, Secure, Local> _stream;
    beast::flat_buffer _buffer;
    std::optional<http::response_parser<http::string_body>> _parser;
};

HttpClient::HttpClient(HttpPeer peer, Limits limits)
    : _core(std::make_unique<Core>(std::move(peer), limits)) {}

HttpClient::~HttpClient() = default;

HttpAnswer HttpClient::post(const std::string& target, const HttpHeaders& headers,
                            const std::string& body) {
    return _core->post(target, headers, body);
}

}  // namespace QZ
