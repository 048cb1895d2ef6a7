// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpConnection.h"

#include <poll.h>
#include <sys/socket.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <cerrno>
#include <optional>
#include <utility>

#include "BasicCredentials.h"
#include "ResponseStream.h"

namespace QZ {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

// For a client to read the answer that ends its connection.
constexpr milliseconds DRAIN_TIME{2000};

// Sends what the socket takes without waiting. The number of bytes, or -1 for a connection that is
// lost.
ssize_t _sendNow(int socket, const char* bytes, std::size_t size) {
    const ssize_t sent = ::send(socket, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT);
    return sent < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) ? 0 : sent;
}

// Sends all of it, waiting for the client until the deadline.
bool _sendAll(int socket, const std::string& bytes, milliseconds time) {
    const auto end = steady_clock::now() + time;
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t sent = _sendNow(socket, bytes.data() + done, bytes.size() - done);
        if (sent < 0) {
            return false;
        }
        done += std::size_t(sent);
        const auto left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now());
        pollfd waiting{socket, POLLOUT, 0};
        if (done < bytes.size() &&
            (left.count() <= 0 || poll(&waiting, 1, int(left.count())) == 0)) {
            return false;
        }
    }
    return true;
}

class Connection : public HttpConnection, public std::enable_shared_from_this<Connection> {
public:
    Connection(std::shared_ptr<HttpShared> shared, std::shared_ptr<HttpLoop> loop,
               tcp::socket socket)
        : _shared(std::move(shared)),
          _loop(std::move(loop)),
          _limits(_shared->options.limits),
          _socket(std::move(socket)),
          _timer(_socket.get_executor()),
          _lateTimer(_loop->io) {
        error_code ignored;
        _socket.set_option(tcp::no_delay(true), ignored);
        _peer = _socket.remote_endpoint(ignored).address().to_string();
    }

    void awaitRequest() override;
    void refuse(int status) override;
    void stop() override;

private:
    template <class Action>
    void _after(milliseconds time, Action action);
    void _readHeader();
    void _readBody();
    void _onReadFailed(error_code error);
    void _fillRecord();
    void _answer();
    void _work(HttpRequest& request, ResponseStream& stream) const;
    void _onLate(ResponseStream& stream);
    void _send(ResponseStream::End end);
    void _onSent(ResponseStream::Next next);
    void _log(int status, const ResponseStream* stream);
    void _drain();
    void _close();

    std::shared_ptr<HttpShared> _shared;
    std::shared_ptr<HttpLoop> _loop;
    const HttpLimits& _limits;
    tcp::socket _socket;
    asio::steady_timer _timer;
    asio::steady_timer _lateTimer;  // not on the strand, which a handler may hold
    boost::beast::flat_buffer _buffer;
    std::optional<http::request_parser<http::string_body>> _parser;
    std::string _peer;
    HttpLogRecord _record;
    steady_clock::time_point _started;
    ResponseStream::End _end;
    bool _isAnswering = false;
    bool _isClosed = false;
};

template <class Action>
void Connection::_after(milliseconds time, Action action) {
    _timer.expires_after(time);
    _timer.async_wait([self = shared_from_this(), action](error_code error) {
        if (!error && !self->_isClosed) {
            action(*self);
        }
    });
}

void Connection::awaitRequest() {
    if (_shared->isStopping) {
        return _close();
    }
    _parser.emplace();
    _parser->header_limit(std::uint32_t(_limits.headerBytes));
    _parser->body_limit(_limits.bodyBytes);
    if (_buffer.size() != 0) {
        return _readHeader();
    }
    _after(_limits.idle, [](Connection& self) { self._close(); });
    _socket.async_wait(tcp::socket::wait_read, [self = shared_from_this()](error_code error) {
        error ? self->_close() : self->_readHeader();
    });
}

void Connection::_readHeader() {
    if (_isClosed) {
        return;
    }
    _after(_limits.header, [](Connection& self) { self.refuse(408); });
    http::async_read_header(_socket, _buffer, *_parser,
                            [self = shared_from_this()](error_code error, std::size_t) {
                                error ? self->_onReadFailed(error) : self->_readBody();
                            });
}

void Connection::_readBody() {
    if (_isClosed || _isAnswering) {
        return;
    }
    const auto& request = _parser->get();
    const auto method = request.method_string();
    if (method != "POST" && method != "M-POST") {
        return refuse(405);
    }
    const auto expect = request.find(http::field::expect);
    if (expect != request.end() && sameHeader(std::string(expect->value()), "100-continue")) {
        static const std::string GO_ON = "HTTP/1.1 100 Continue\r\n\r\n";
        _sendNow(_socket.native_handle(), GO_ON.data(), GO_ON.size());
    }
    if (_parser->is_done()) {
        return _answer();
    }
    _after(_limits.body, [](Connection& self) { self.refuse(408); });
    http::async_read(_socket, _buffer, *_parser,
                     [self = shared_from_this()](error_code error, std::size_t) {
                         error ? self->_onReadFailed(error) : self->_answer();
                     });
}

void Connection::_onReadFailed(error_code error) {
    if (_isClosed || _isAnswering) {
        return;  // refused already, for the time it took
    }
    if (error == http::error::body_limit) {
        refuse(413);
    } else if (error == http::error::header_limit) {
        refuse(431);
    } else if (error.category() == make_error_code(http::error::bad_method).category() &&
               error != http::error::end_of_stream && error != http::error::partial_message) {
        refuse(400);
    } else {
        _close();
    }
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
    _isAnswering = true;
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

void Connection::_answer() {
    if (_isClosed || _isAnswering) {
        return;
    }
    _isAnswering = true;
    _timer.cancel();
    _fillRecord();
    auto& parsed = _parser->get();
    HttpRequest request;
    request.method = _record.method;
    request.target = _record.target;
    for (const auto& field : parsed) {
        request.headers.emplace_back(std::string(field.name_string()), std::string(field.value()));
    }
    request.body = std::move(parsed.body());
    request.peer = _peer;
    ResponseStream::Form form;
    form.isHttp11 = parsed.version() >= 11;
    form.keepsAlive = parsed.keep_alive();
    const std::string* const te = request.header("TE");
    form.acceptsTrailers = te && te->find("trailers") != std::string::npos;
    const auto stream = std::make_shared<ResponseStream>(form, [this](const std::string& bytes) {
        return _sendAll(_socket.native_handle(), bytes, _limits.sending);
    });
    _lateTimer.expires_after(_limits.answer);
    _lateTimer.async_wait([self = shared_from_this(), stream](error_code error) {
        if (!error) {
            self->_onLate(*stream);
        }
    });
    _shared->enterHandler(*_loop);
    _work(request, *stream);
    _loop->leaveHandler();
    std::optional<ResponseStream::End> end = stream->finish();
    if (!end) {
        _loop->returnThread();
        return _close();
    }
    _lateTimer.cancel();
    _log(0, stream.get());
    _send(std::move(*end));
}

void Connection::_work(HttpRequest& request, ResponseStream& stream) const {
    try {
        const auto& options = _shared->options;
        if (options.authenticate) {
            const std::string* const header = request.header("Authorization");
            const auto credentials = parseBasicCredentials(header ? *header : std::string());
            if (!credentials || !options.authenticate(credentials->user, credentials->password)) {
                stream.setStatus(401);
                stream.addHeader("WWW-Authenticate",
                                 "Basic realm=\"" + options.realm + "\", charset=\"UTF-8\"");
                return;
            }
            request.user = credentials->user;
            stream.setUser(request.user);
        }
        _shared->handler(request, stream);
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
    _sendNow(socket, end->bytes.data(), end->bytes.size());
    ::shutdown(socket, end->next == ResponseStream::Abort ? SHUT_RDWR : SHUT_WR);
    _log(0, &stream);
    _loop->loseThread();
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
    if (end.next == ResponseStream::Abort) {
        // A reset: whatever was sent is not the whole.
        error_code ignored;
        _socket.set_option(asio::socket_base::linger(true, 0), ignored);
        return _close();
    }
    const ssize_t sent = _sendNow(_socket.native_handle(), end.bytes.data(), end.bytes.size());
    if (sent < 0) {
        return _close();
    }
    if (std::size_t(sent) == end.bytes.size()) {
        return _onSent(end.next);
    }
    _end = std::move(end);
    _end.bytes.erase(0, std::size_t(sent));
    _after(_limits.sending, [](Connection& self) { self._close(); });
    asio::async_write(_socket, asio::buffer(_end.bytes),
                      [self = shared_from_this()](error_code error, std::size_t) {
                          error || self->_isClosed ? self->_close()
                                                   : self->_onSent(self->_end.next);
                      });
}

void Connection::_onSent(ResponseStream::Next next) {
    _timer.cancel();
    _end = {};
    if (next == ResponseStream::Close) {
        return _drain();
    }
    _isAnswering = false;
    awaitRequest();
}

// Reads what the client still sends, for a while: closing before that would reset the connection,
// and the answer with it.
void Connection::_drain() {
    error_code ignored;
    _socket.shutdown(tcp::socket::shutdown_send, ignored);
    _after(DRAIN_TIME, [](Connection& self) { self._close(); });
    _buffer.clear();
    const auto read = [self = shared_from_this()](const auto& again) -> void {
        self->_socket.async_read_some(self->_buffer.prepare(std::size_t(16) << 10),
                                      [self, again](error_code error, std::size_t) {
                                          if (error || self->_isClosed) {
                                              return self->_close();
                                          }
                                          again(again);
                                      });
    };
    read(read);
}

void Connection::stop() {
    asio::post(_socket.get_executor(), [self = shared_from_this()] {
        if (!self->_isAnswering) {
            self->_close();
        }
    });
}

void Connection::_close() {
    if (_isClosed) {
        return;
    }
    _isClosed = true;
    _timer.cancel();
    _lateTimer.cancel();
    error_code ignored;
    _socket.close(ignored);
    _shared->remove(shared_from_this());
}

}  // namespace

std::shared_ptr<HttpConnection> HttpConnection::make(std::shared_ptr<HttpShared> shared,
                                                     std::shared_ptr<HttpLoop> loop,
                                                     tcp::socket socket) {
    return std::make_shared<Connection>(std::move(shared), std::move(loop), std::move(socket));
}

}  // namespace QZ
