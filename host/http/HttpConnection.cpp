// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpConnection.h"

#include <sys/socket.h>

#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <cerrno>
#include <optional>
#include <utility>

#include "ParsedRequest.h"
#include "ResponseStream.h"
#include "SocketSend.h"

namespace QZ {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

using Timer = asio::basic_waitable_timer<steady_clock, asio::wait_traits<steady_clock>, HttpStrand>;

// What is read at once: most requests whole.
constexpr std::size_t READ_SIZE = std::size_t(8) << 10;

// For a client to read the answer that ends its connection.
constexpr milliseconds DRAIN_TIME{2000};

class Connection : public HttpConnection, public std::enable_shared_from_this<Connection> {
public:
    Connection(std::shared_ptr<HttpShared> shared, std::shared_ptr<HttpLoop> loop,
               HttpSocket socket)
        : _shared(std::move(shared)),
          _loop(std::move(loop)),
          _limits(_shared->options.limits),
          _socket(std::move(socket)),
          _timer(_socket.get_executor()) {
        error_code ignored;
        _socket.set_option(tcp::no_delay(true), ignored);
        _peer = _socket.remote_endpoint(ignored).address().to_string();
    }

    void awaitRequest() override;
    void refuse(int status) override;
    void stop() override;

private:
    enum class State { Idle, Header, Body, Login, Answering, Sending, Draining, Closed };

    // A request that is being answered.
    struct Call : HttpCall {
        Call(std::shared_ptr<Connection> from, const ResponseStream::Form& form)
            : connection(std::move(from)), stream(form, [this](const std::string& bytes) {
                  return sendAll(connection->_socket.native_handle(), bytes,
                                 connection->_limits.sending);
              }) {}
        void expire() override { connection->_onLate(stream); }

        const std::shared_ptr<Connection> connection;
        ResponseStream stream;
    };

    void _enter(State state, milliseconds limit);
    void _armTimer();
    void _onTimer();
    void _awaitBytes();
    void _onReadable();
    void _parse();
    bool _acceptsHeader();
    void _fillRecord();
    void _logIn();
    std::optional<Verdict> _askWho();
    void _answer(const Verdict& verdict);
    void _work(const Verdict& verdict, ResponseStream& stream);
    void _onLate(ResponseStream& stream);
    void _send(ResponseStream::End end);
    void _onSent(ResponseStream::Next next);
    void _log(int status, const ResponseStream* stream);
    void _close();

    std::shared_ptr<HttpShared> _shared;
    std::shared_ptr<HttpLoop> _loop;
    const HttpLimits& _limits;
    HttpSocket _socket;
    Timer _timer;
    State _state = State::Idle;
    steady_clock::time_point _deadline;                                    // of the state
    steady_clock::time_point _timerEnd = steady_clock::time_point::max();  // never: not running
    boost::beast::flat_buffer _buffer;
    std::optional<http::request_parser<http::string_body>> _parser;
    std::string _peer;
    HttpLogRecord _record;
    HttpRequest _request;
    steady_clock::time_point _started;
    ResponseStream::End _end;
};

// A deadline that is later than the one before costs nothing: the timer finds out when it ends.
void Connection::_enter(State state, milliseconds limit) {
    _state = state;
    _deadline = steady_clock::now() + limit;
    if (_deadline < _timerEnd) {
        _armTimer();
    }
}

void Connection::_armTimer() {
    _timerEnd = _deadline;
    _timer.expires_at(_deadline);
    _timer.async_wait([self = shared_from_this()](error_code error) {
        if (!error) {
            self->_onTimer();
        }
    });
}

void Connection::_onTimer() {
    _timerEnd = steady_clock::time_point::max();
    if (_state == State::Answering || _state == State::Closed) {
        return;
    }
    if (steady_clock::now() < _deadline) {
        return _armTimer();
    }
    _state == State::Login                             ? refuse(503)
    : _state == State::Header || _state == State::Body ? refuse(408)
                                                       : _close();
}

void Connection::awaitRequest() {
    if (_shared->isStopping) {
        return _close();
    }
    _parser.emplace();
    _parser->header_limit(std::uint32_t(_limits.headerBytes));
    _parser->body_limit(_limits.bodyBytes);
    _enter(State::Idle, _limits.idle);
    if (_buffer.size() == 0) {
        return _awaitBytes();
    }
    // The next request came with the last one. Others of the loop have their turn before.
    _socket.async_wait(tcp::socket::wait_write, [self = shared_from_this()](error_code error) {
        error ? self->_close() : self->_parse();
    });
}

void Connection::_awaitBytes() {
    _socket.async_wait(tcp::socket::wait_read, [self = shared_from_this()](error_code error) {
        error ? self->_close() : self->_onReadable();
    });
}

void Connection::_onReadable() {
    if (_state == State::Sending || _state == State::Closed) {
        return;  // refused meanwhile, for the time it took
    }
    const auto space = _buffer.prepare(READ_SIZE);
    const ssize_t count = ::recv(_socket.native_handle(), space.data(), space.size(), MSG_DONTWAIT);
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR)) {
        return _close();
    }
    // What is still sent behind a refusal is read and forgotten: closing before that would reset
    // the connection, and the answer with it.
    if (count < 0 || _state == State::Draining) {
        return _awaitBytes();
    }
    _buffer.commit(std::size_t(count));
    _parse();
}

void Connection::_parse() {
    while (!_parser->is_done()) {
        error_code error;
        const bool hadHeader = _parser->is_header_done();
        _buffer.consume(_parser->put(_buffer.data(), error));
        if (!hadHeader && _parser->is_header_done() && !_acceptsHeader()) {
            return;
        }
        if (error && error != http::error::need_more) {
            return refuse(error == http::error::body_limit     ? 413
                          : error == http::error::header_limit ? 431
                                                               : 400);
        }
        if (error || (_buffer.size() == 0 && !_parser->is_done())) {
            const bool hasHeader = _parser->is_header_done();
            const State state = hasHeader ? State::Body : State::Header;
            if (_state != state) {
                _enter(state, hasHeader ? _limits.body : _limits.header);
            }
            return _awaitBytes();
        }
    }
    _logIn();
}

// Looks at the header before the body comes. False where that is refused.
bool Connection::_acceptsHeader() {
    const auto& request = _parser->get();
    const auto method = request.method_string();
    if (method != "POST" && method != "M-POST") {
        refuse(405);
        return false;
    }
    const auto expect = request.find(http::field::expect);
    if (expect != request.end() && sameHeader(std::string(expect->value()), "100-continue")) {
        static const std::string GO_ON = "HTTP/1.1 100 Continue\r\n\r\n";
        sendNow(_socket.native_handle(), GO_ON.data(), GO_ON.size());
    }
    _parser->eager(true);
    return true;
}

void Connection::_fillRecord() {
    _started = steady_clock::now();
    _record = {};
    _record.peer = _peer;
    if (_parser && _parser->is_header_done()) {
        _record.method = std::string(_parser->get().method_string());
        _record.target = std::string(_parser->get().target());
    }
}

void Connection::refuse(int status) {
    _fillRecord();
    HttpAnswer answer{status, {}, {}};
    if (status == 405) {
        answer.headers.emplace_back("Allow", "POST, M-POST");
    }
    ResponseStream::Form form;
    form.keepsAlive = false;
    _log(status, nullptr);
    _send({ResponseStream::assemble(answer, form), ResponseStream::Close});
}

void Connection::_logIn() {
    _fillRecord();
    _request = takeRequest(_parser->get(), _peer);
    _enter(State::Login, _limits.answer);
    if (const auto verdict = _askWho()) {
        _answer(*verdict);
    }
}

// None where it is found out later, and no thread of ours is held up meanwhile.
std::optional<Verdict> Connection::_askWho() {
    if (!_shared->options.authenticate) {
        return Verdict{Verdict::Accepted, {"", Rights::all()}, {}};
    }
    return _shared->options.authenticate(
        loginOf(_request), [self = shared_from_this()](const Verdict& verdict) {
            asio::post(self->_socket.get_executor(), [self, verdict] {
                if (self->_state == State::Login) {
                    self->_answer(verdict);
                }
            });
        });
}

void Connection::_answer(const Verdict& verdict) {
    _state = State::Answering;
    const auto call = std::make_shared<Call>(shared_from_this(), formOf(_parser->get()));
    _loop->enterHandler(call, _started + _limits.answer);
    _shared->wakeWatcher();
    _work(verdict, call->stream);
    std::optional<ResponseStream::End> end = call->stream.finish();
    _loop->leaveHandler(call);
    _request = {};
    if (!end) {
        return _close();
    }
    _log(0, &call->stream);
    _send(std::move(*end));
}

void Connection::_work(const Verdict& verdict, ResponseStream& stream) {
    try {
        if (verdict.kind != Verdict::Accepted) {
            return refuseLogin(verdict, _shared->options.realm, stream);
        }
        _request.caller = verdict.caller;
        stream.setUser(_request.caller.name);
        _shared->handler(_request, stream);
    } catch (const Disconnected&) {
        // Nobody is there to be told.
    } catch (...) {
        stream.discard({});
        stream.setStatus(500);
    }
}

// Beside the thread that is in the handler: of the connection only the socket is touched, which
// that thread does not close before it comes back.
void Connection::_onLate(ResponseStream& stream) {
    const std::optional<ResponseStream::End> end = stream.expire();
    if (!end) {
        return;
    }
    const int socket = _socket.native_handle();
    sendNow(socket, end->bytes.data(), end->bytes.size());
    ::shutdown(socket, end->next == ResponseStream::Abort ? SHUT_RDWR : SHUT_WR);
    _log(0, &stream);
}

void Connection::_log(int status, const ResponseStream* stream) {
    if (!_shared->options.log) {
        return;
    }
    HttpLogRecord record = _record;
    record.status = status;
    if (stream) {
        const auto summary = stream->summary();
        record.status = summary.status;
        record.bytes = summary.bytes;
        record.text = summary.text;
        record.user = summary.user;
    }
    record.time =
        std::chrono::duration_cast<std::chrono::microseconds>(steady_clock::now() - _started);
    _shared->options.log(record);
}

// What the socket takes at once leaves at once; for the rest nobody's thread waits.
void Connection::_send(ResponseStream::End end) {
    _state = State::Sending;
    if (end.next == ResponseStream::Abort) {
        // A reset: whatever was sent is not the whole.
        error_code ignored;
        _socket.set_option(asio::socket_base::linger(true, 0), ignored);
        return _close();
    }
    const ssize_t sent = sendNow(_socket.native_handle(), end.bytes.data(), end.bytes.size());
    if (sent < 0) {
        return _close();
    }
    if (std::size_t(sent) == end.bytes.size()) {
        return _onSent(end.next);
    }
    _end = std::move(end);
    _end.bytes.erase(0, std::size_t(sent));
    _enter(State::Sending, _limits.sending);
    asio::async_write(_socket, asio::buffer(_end.bytes),
                      [self = shared_from_this()](error_code error, std::size_t) {
                          error || self->_state == State::Closed ? self->_close()
                                                                 : self->_onSent(self->_end.next);
                      });
}

void Connection::_onSent(ResponseStream::Next next) {
    _end = {};
    if (next == ResponseStream::KeepAlive) {
        return awaitRequest();
    }
    error_code ignored;
    _socket.shutdown(tcp::socket::shutdown_send, ignored);
    _buffer.clear();
    _enter(State::Draining, DRAIN_TIME);
    _awaitBytes();
}

void Connection::stop() {
    asio::post(_socket.get_executor(), [self = shared_from_this()] {
        if (self->_state != State::Sending && self->_state != State::Draining) {
            self->_close();
        }
    });
}

void Connection::_close() {
    if (_state == State::Closed) {
        return;
    }
    _state = State::Closed;
    _timer.cancel();
    error_code ignored;
    _socket.close(ignored);
    _shared->remove(shared_from_this());
}

}  // namespace

std::shared_ptr<HttpConnection> HttpConnection::make(std::shared_ptr<HttpShared> shared,
                                                     std::shared_ptr<HttpLoop> loop,
                                                     HttpSocket socket) {
    return std::make_shared<Connection>(std::move(shared), std::move(loop), std::move(socket));
}

}  // namespace QZ
