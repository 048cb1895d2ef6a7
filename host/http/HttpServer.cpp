// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpServer.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <deque>
#include <future>
#include <optional>
#include <set>
#include <thread>
#include <utility>

#include "BasicCredentials.h"
#include "ResponseStream.h"
#include "WorkerPool.h"

namespace QZ {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;
using std::chrono::milliseconds;

namespace {

class Connection;

// What the connections share. All of it but the pool is used on the one thread that does the input
// and output.
struct Shared {
    Shared(HttpServerOptions given, HttpServer::Handler answers)
        : options(std::move(given)),
          handler(std::move(answers)),
          pool({options.limits.workers, options.limits.waiting, options.limits.lostWorkers}) {}

    HttpServerOptions options;
    HttpServer::Handler handler;
    asio::io_context io{1};
    WorkerPool pool;
    std::set<std::shared_ptr<Connection>> connections;
    bool isStopping = false;
};

// One client's connection: reads a request, has it answered, sends the answer, and again.
class Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(std::shared_ptr<Shared> shared, tcp::socket socket)
        : _shared(std::move(shared)),
          _limits(_shared->options.limits),
          _socket(std::move(socket)),
          _readTimer(_shared->io),
          _sendTimer(_shared->io) {
        error_code ignored;
        _socket.set_option(tcp::no_delay(true), ignored);
        _peer = _socket.remote_endpoint(ignored).address().to_string();
    }

    void awaitRequest();
    void refuse(int status);
    // Lets an answer that is under way leave, and then goes.
    void stop();
    bool isBusy() const { return _isAnswering || !_queue.empty(); }

private:
    struct Part {
        std::string bytes;
        ResponseStream::Next next;
    };

    template <class Action>
    void _after(asio::steady_timer& timer, milliseconds time, Action action);
    void _readHeader();
    void _readBody();
    void _onReadFailed(error_code error);
    void _answer();
    void _work(const HttpRequest& request, ResponseStream& stream) const;
    void _onLate();
    void _send(Part part);
    void _sendNext();
    void _onAnswered(bool closes);
    void _drain();
    void _close();

    std::shared_ptr<Shared> _shared;
    const HttpLimits& _limits;
    tcp::socket _socket;
    asio::steady_timer _readTimer;
    asio::steady_timer _sendTimer;
    boost::beast::flat_buffer _buffer;
    std::optional<http::request_parser<http::string_body>> _parser;
    std::string _peer;
    std::shared_ptr<ResponseStream> _stream;
    std::shared_ptr<WorkerPool::Job> _job;
    HttpLogRecord _record;
    std::chrono::steady_clock::time_point _started;
    std::deque<Part> _queue;
    bool _isAnswering = false;
    bool _isUnread = false;  // a body stands before the next request, and nobody wants it
    bool _isClosed = false;
};

template <class Action>
void Connection::_after(asio::steady_timer& timer, milliseconds time, Action action) {
    timer.expires_after(time);
    timer.async_wait([self = shared_from_this(), action](error_code error) {
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
    _after(_readTimer, _limits.idle, [](Connection& self) { self._close(); });
    _socket.async_wait(tcp::socket::wait_read, [self = shared_from_this()](error_code error) {
        error ? self->_close() : self->_readHeader();
    });
}

void Connection::_readHeader() {
    _after(_readTimer, _limits.header, [](Connection& self) { self.refuse(408); });
    http::async_read_header(_socket, _buffer, *_parser,
                            [self = shared_from_this()](error_code error, std::size_t) {
                                error ? self->_onReadFailed(error) : self->_readBody();
                            });
}

void Connection::_readBody() {
    const auto& request = _parser->get();
    const auto method = request.method_string();
    if (method != "POST" && method != "M-POST") {
        return refuse(405);
    }
    _after(_readTimer, _limits.body, [](Connection& self) { self.refuse(408); });
    const auto expect = request.find(http::field::expect);
    if (expect != request.end() && sameHeader(std::string(expect->value()), "100-continue")) {
        static const std::string GO_ON = "HTTP/1.1 100 Continue\r\n\r\n";
        asio::async_write(_socket, asio::buffer(GO_ON),
                          [self = shared_from_this()](error_code, std::size_t) {});
    }
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

void Connection::refuse(int status) {
    _readTimer.cancel();
    _isUnread = true;
    HttpAnswer answer{status, {}, {}};
    if (status == 405) {
        answer.headers.emplace_back("Allow", "POST, M-POST");
    }
    ResponseStream::Form form;
    form.keepsAlive = false;
    _isAnswering = true;
    _started = std::chrono::steady_clock::now();
    _record = {};
    _record.peer = _peer;
    _record.status = status;
    _stream.reset();
    _send({ResponseStream::assemble(answer, form), ResponseStream::CloseBehind});
}

void Connection::_answer() {
    _readTimer.cancel();
    _started = std::chrono::steady_clock::now();
    auto request = std::make_shared<HttpRequest>();
    auto& parsed = _parser->get();
    request->method = std::string(parsed.method_string());
    request->target = std::string(parsed.target());
    for (const auto& field : parsed) {
        request->headers.emplace_back(std::string(field.name_string()), std::string(field.value()));
    }
    request->body = std::move(parsed.body());
    request->peer = _peer;
    ResponseStream::Form form;
    form.isHttp11 = parsed.version() >= 11;
    form.keepsAlive = parsed.keep_alive();
    const std::string* const te = request->header("TE");
    form.acceptsTrailers = te && te->find("trailers") != std::string::npos;
    _record = {};
    _record.peer = _peer;
    _record.method = request->method;
    _record.target = request->target;
    const std::weak_ptr<Connection> weak = shared_from_this();
    _stream = std::make_shared<ResponseStream>(
        form, [weak, shared = _shared](std::string bytes, ResponseStream::Next next) {
            asio::post(shared->io, [weak, part = Part{std::move(bytes), next}]() mutable {
                if (const auto self = weak.lock()) {
                    self->_send(std::move(part));
                }
            });
        });
    _isAnswering = true;
    _job = _shared->pool.submit([self = shared_from_this(), request, stream = _stream] {
        self->_work(*request, *stream);
        stream->finish();
    });
    if (!_job) {
        return refuse(503);
    }
    _after(_readTimer, _limits.answer, [](Connection& self) { self._onLate(); });
}

// On a worker's thread.
void Connection::_work(const HttpRequest& received, ResponseStream& stream) const {
    try {
        const auto& options = _shared->options;
        HttpRequest request = received;
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
        }
        _shared->handler(request, stream);
    } catch (const Disconnected&) {
        // Nobody is there to be told.
    } catch (...) {
        // The CIM interface's exceptions are no std::exception.
        stream.discard({});
        stream.setStatus(500);
    }
}

void Connection::_onLate() {
    if (_stream && _stream->expire()) {
        _shared->pool.giveUp(_job);
    }
}

void Connection::_send(Part part) {
    if (_isClosed) {
        return;
    }
    if (part.next == ResponseStream::Abort) {
        // A reset: where an answer ends with the connection, an orderly close would look complete.
        error_code ignored;
        _socket.set_option(tcp::socket::linger(true, 0), ignored);
        return _close();
    }
    _queue.push_back(std::move(part));
    if (_queue.size() == 1) {
        _sendNext();
    }
}

void Connection::_sendNext() {
    _after(_sendTimer, _limits.sending, [](Connection& self) { self._close(); });
    asio::async_write(_socket, asio::buffer(_queue.front().bytes),
                      [self = shared_from_this()](error_code error, std::size_t bytes) {
                          self->_sendTimer.cancel();
                          if (error || self->_isClosed) {
                              return self->_close();
                          }
                          if (self->_stream) {
                              self->_stream->onSent(bytes);
                          }
                          const ResponseStream::Next next = self->_queue.front().next;
                          self->_queue.pop_front();
                          if (!self->_queue.empty()) {
                              self->_sendNext();
                          } else if (next != ResponseStream::MoreFollows) {
                              self->_onAnswered(next == ResponseStream::CloseBehind);
                          }
                      });
}

void Connection::_onAnswered(bool closes) {
    _readTimer.cancel();
    _isAnswering = false;
    if (_shared->options.log) {
        if (_stream) {
            const auto summary = _stream->summary();
            _record.status = summary.status;
            _record.bytes = summary.bytes;
            _record.text = summary.text;
        }
        _record.time = std::chrono::duration_cast<std::chrono::microseconds>(
            std::chrono::steady_clock::now() - _started);
        _shared->options.log(_record);
    }
    _stream.reset();
    _job.reset();
    if (_isUnread) {
        _drain();
    } else if (closes) {
        error_code ignored;
        _socket.shutdown(tcp::socket::shutdown_send, ignored);
        _drain();
    } else {
        awaitRequest();
    }
}

// Reads what the client still sends, for a while: closing before that would reset the connection,
// and the answer with it.
void Connection::_drain() {
    error_code ignored;
    _socket.shutdown(tcp::socket::shutdown_send, ignored);
    _after(_readTimer, milliseconds(2000), [](Connection& self) { self._close(); });
    _buffer.clear();
    _isUnread = false;
    const auto read = [self = shared_from_this()](const auto& again) -> void {
        self->_socket.async_read_some(self->_buffer.prepare(16 * 1024),
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
    if (!isBusy()) {
        _close();
    }
}

void Connection::_close() {
    if (_isClosed) {
        return;
    }
    _isClosed = true;
    _readTimer.cancel();
    _sendTimer.cancel();
    error_code ignored;
    _socket.close(ignored);
    if (_stream) {
        _stream->onGone();
    }
    _shared->connections.erase(shared_from_this());
}

}  // namespace

class HttpServer::Core {
public:
    Core(HttpServerOptions options, Handler handler)
        : shared(std::make_shared<Shared>(std::move(options), std::move(handler))),
          acceptor(shared->io) {
        listen();
        accept();
        thread = std::thread([this, io = shared] {
            io->io.run();
            ended.set_value();
        });
    }

    void listen() {
        const auto& options = shared->options;
        error_code error;
        const auto address = asio::ip::make_address(options.address, error);
        if (!error) {
            const tcp::endpoint endpoint(address, options.port);
            acceptor.open(endpoint.protocol(), error);
            error ? error : acceptor.set_option(tcp::acceptor::reuse_address(true), error);
            error ? error : acceptor.bind(endpoint, error);
            error ? error : acceptor.listen(tcp::acceptor::max_listen_connections, error);
            port = error ? options.port : acceptor.local_endpoint(error).port();
        }
        if (error) {
            throw Error("Cannot listen on " + options.address + ", port " +
                        std::to_string(options.port) + ": " + error.message());
        }
    }

    void accept() {
        acceptor.async_accept([this](error_code error, tcp::socket socket) {
            if (!acceptor.is_open()) {
                return;
            }
            if (!error) {
                const auto connection = std::make_shared<Connection>(shared, std::move(socket));
                shared->connections.insert(connection);
                shared->connections.size() > shared->options.limits.connections
                    ? connection->refuse(503)
                    : connection->awaitRequest();
            }
            accept();
        });
    }

    // On the thread that does the input and output.
    void closeListener() {
        error_code ignored;
        acceptor.close(ignored);
        shared->isStopping = true;
        const auto connections = shared->connections;
        for (const auto& connection : connections) {
            connection->stop();
        }
    }

    std::shared_ptr<Shared> shared;
    tcp::acceptor acceptor;
    std::uint16_t port = 0;
    std::promise<void> ended;  // of the thread's loop
    std::thread thread;
};

HttpServer::HttpServer(HttpServerOptions options, Handler handler)
    : _core(std::make_shared<Core>(std::move(options), std::move(handler))) {}

HttpServer::~HttpServer() {
    stop(milliseconds(0));
}

std::uint16_t HttpServer::port() const {
    return _core->port;
}

std::size_t HttpServer::lostWorkers() const {
    return _core->shared->pool.lost();
}

bool HttpServer::stop(milliseconds time) {
    if (!_core->thread.joinable()) {
        return true;
    }
    const auto end = std::chrono::steady_clock::now() + time;
    auto& shared = *_core->shared;
    asio::post(shared.io, [core = _core] { core->closeListener(); });
    const bool isDone = shared.pool.waitIdle(time) && shared.pool.lost() == 0;
    if (isDone) {
        // The loop is over when the last answer left and no connection is open.
        _core->ended.get_future().wait_until(end);
    }
    shared.io.stop();
    _core->thread.join();
    shared.connections.clear();
    return isDone;
}

}  // namespace QZ
