// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpConnection.h"

#include <boost/asio/posix/basic_stream_descriptor.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/use_future.hpp>
#include <optional>
#include <utility>

#include "BasicCredentials.h"
#include "HttpAnswering.h"
#include "HttpDeadline.h"
#include "HttpRecord.h"
#include "HttpRequestReader.h"

namespace QZ {

namespace asio = boost::asio;
using boost::system::error_code;
using std::chrono::milliseconds;

namespace {

using Socket = asio::posix::basic_stream_descriptor<HttpStrand>;

// What is read at once: most requests whole.
constexpr std::size_t READ_SIZE = std::size_t(8) << 10;

// For a client to read the answer that ends its connection.
constexpr milliseconds DRAIN_TIME{2000};

const std::string GO_ON = "HTTP/1.1 100 Continue\r\n\r\n";

class Connection : public HttpConnection, public std::enable_shared_from_this<Connection> {
public:
    Connection(std::shared_ptr<HttpShared> shared, std::shared_ptr<HttpLoop> loop,
               Descriptor socket, std::unique_ptr<HttpWire> wire, Login login)
        : _shared(std::move(shared)),
          _loop(std::move(loop)),
          _limits(_shared->options.limits),
          _socket(HttpStrand(_loop->io.get_executor()), socket.release()),
          _deadline(_socket.get_executor(), [this] { _onOver(); }),
          _wire(std::move(wire)),
          _login(std::move(login)),
          _reader(_limits) {}

    void start(bool isRefused) override;
    void stop() override;
    void onTurn() override;
    std::future<void> refuseTurn() override;

private:
    enum class State { Idle, Header, Judging, Body, Waiting, Answering, Sending, Draining, Closed };

    template <class Wait>
    void _await(HttpWire::Step::Kind what, Wait onReady);

    void _enter(State state, milliseconds limit);
    void _onOver();
    void _awaitRequest();
    void _receiveMore();
    void _receive();
    void _drain();
    void _read();
    void _judge();
    void _onVerdict(const Verdict& verdict);
    void _refuse(int status, HttpHeaders headers = {});
    void _takeTurn();
    void _answer();
    void _send(ResponseStream::End end);
    void _sendRest();
    void _onSent();
    void _close();

    const std::shared_ptr<HttpShared> _shared;
    const std::shared_ptr<HttpLoop> _loop;
    const HttpLimits& _limits;
    Socket _socket;
    HttpDeadline _deadline;  // of the state
    const std::unique_ptr<HttpWire> _wire;
    Login _login;
    HttpRequestReader _reader;
    State _state = State::Idle;
    bool _isNew = true;
    Caller _caller;  // of the request
    HttpRecord _record;
    ResponseStream::End _end;
    std::size_t _sent = 0;  // of it
};

void Connection::start(bool isRefused) {
    asio::post(_socket.get_executor(), [self = shared_from_this(), isRefused] {
        isRefused ? self->_refuse(503) : self->_awaitRequest();
    });
}

void Connection::_enter(State state, milliseconds limit) {
    _state = state;
    _deadline.set(limit, shared_from_this());
}

void Connection::_onOver() {
    switch (_state) {
        case State::Answering:
        case State::Closed:
            return;
        case State::Header:
        case State::Body:
            return _refuse(408);
        case State::Judging:
        case State::Waiting:
            return _refuse(503);
        case State::Idle:
        case State::Sending:
        case State::Draining:
            return _close();
    }
}

template <class Wait>
void Connection::_await(HttpWire::Step::Kind what, Wait onReady) {
    const auto wanted = what == HttpWire::Step::WantsRead
                            ? asio::posix::descriptor_base::wait_read
                            : asio::posix::descriptor_base::wait_write;
    _socket.async_wait(wanted, [self = shared_from_this(), onReady](error_code error) {
        if (self->_state != State::Closed) {
            error ? self->_close() : onReady(*self);
        }
    });
}

void Connection::_awaitRequest() {
    if (_shared->isStopping) {
        return _close();
    }
    _reader.next();
    _caller = {};
    // A handshake comes first, which has no reason to wait.
    _enter(State::Idle, _isNew && _login.isEncrypted ? _limits.header : _limits.idle);
    _isNew = false;
    if (!_reader.holdsBytes()) {
        return _receiveMore();
    }
    // The next request came with the last one. Others of the loop have their turn before.
    _await(HttpWire::Step::WantsWrite, [](Connection& self) { self._read(); });
}

void Connection::_receiveMore() {
    if (_wire->holdsBytes()) {
        return _receive();
    }
    _await(HttpWire::Step::WantsRead, [](Connection& self) { self._receive(); });
}

void Connection::_receive() {
    if (_state == State::Sending || _state == State::Judging) {
        return;  // refused meanwhile, for the time it took
    }
    const HttpWire::Step step = _wire->receive(_reader.prepare(READ_SIZE), READ_SIZE);
    switch (step.kind) {
        case HttpWire::Step::WantsRead:
        case HttpWire::Step::WantsWrite:
            return _await(step.kind, [](Connection& self) { self._receive(); });
        case HttpWire::Step::Ended:
        case HttpWire::Step::Lost:
            return _close();
        case HttpWire::Step::Moved:
            break;
    }
    _reader.commit(step.bytes);
    _state == State::Draining ? _drain() : _read();
}

// What is still sent behind a refusal is forgotten: closing before that would reset the connection,
// and the answer with it.
void Connection::_drain() {
    _reader.forget();
    _await(HttpWire::Step::WantsRead, [](Connection& self) { self._receive(); });
}

void Connection::_read() {
    const HttpRequestReader::State state = _reader.read();
    switch (state) {
        case HttpRequestReader::Empty:
            return _receiveMore();
        case HttpRequestReader::Header:
            if (_state != State::Header) {
                _enter(State::Header, _limits.header);
            }
            return _receiveMore();
        case HttpRequestReader::AtBody:
            return _judge();
        case HttpRequestReader::Body:
            if (_state != State::Body) {
                _enter(State::Body, _limits.body);
            }
            return _receiveMore();
        case HttpRequestReader::Complete:
            return _takeTurn();
        case HttpRequestReader::Refused:
            return _refuse(_reader.refusal());
    }
}

// Before the body is read: who may not ask sends none.
void Connection::_judge() {
    const auto& options = _shared->options;
    if (!options.authenticate) {
        return _onVerdict({Verdict::Accepted, {"", Rights::all()}, {}});
    }
    if (_login.isEncrypted && _login.certificateName.empty()) {
        _login.certificateName = _wire->certificateName();
    }
    const std::string* const header = _reader.request().header("Authorization");
    const auto credentials = parseBasicCredentials(header ? *header : std::string());
    _login.hasPassword = credentials.has_value();
    _login.user = credentials ? credentials->user : std::string();
    _login.password = credentials ? credentials->password : std::string();
    _state = State::Judging;
    const auto known =
        options.authenticate(_login, [self = shared_from_this()](const Verdict& verdict) {
            // It may come when the loop is over, and must not keep that alive.
            asio::post(self->_socket.get_executor(), [weak = self->weak_from_this(), verdict] {
                const auto judged = weak.lock();
                if (judged && judged->_state == State::Judging) {
                    judged->_onVerdict(verdict);
                }
            });
        });
    known ? _onVerdict(*known) : _enter(State::Judging, _limits.answer);
}

void Connection::_onVerdict(const Verdict& verdict) {
    switch (verdict.kind) {
        case Verdict::Accepted:
            break;
        case Verdict::Refused:
            return _refuse(401, {{"WWW-Authenticate", "Basic realm=\"" + _shared->options.realm +
                                                          "\", charset=\"UTF-8\""}});
        case Verdict::TooPlain:
            return _refuse(403);
        case Verdict::TooOften:
        case Verdict::Busy:
            return _refuse(verdict.kind == Verdict::Busy ? 503 : 429,
                           {{"Retry-After", std::to_string(verdict.retryAfter.count())}});
    }
    _caller = verdict.caller;
    if (_reader.expectsContinue() && !_reader.holdsBytes()) {
        _wire->sendAll(GO_ON, milliseconds(0));
    }
    _read();
}

void Connection::_refuse(int status, HttpHeaders headers) {
    _record.begin(_login.peer, _reader.request());
    if (status == 405) {
        headers.emplace_back("Allow", "POST, M-POST");
    }
    ResponseStream::Form form;
    form.keepsAlive = false;
    _record.report(_shared->options, _caller, status);
    _send(
        {ResponseStream::assemble({status, std::move(headers), {}}, form), ResponseStream::Close});
}

// Where too many are answered already it waits, with nobody's thread; what comes behind it stays
// with the system.
void Connection::_takeTurn() {
    switch (_shared->takeTurn(shared_from_this())) {
        case HttpShared::Now:
            return _answer();
        case HttpShared::Later:
            return _enter(State::Waiting, _limits.answer);
        case HttpShared::Never:
            return _refuse(503, {{"Retry-After", "1"}});
    }
}

void Connection::onTurn() {
    asio::post(_socket.get_executor(), [self = shared_from_this()] {
        // Time may be over.
        const bool answers = self->_shared->takeUpTurn(self) && self->_state == State::Waiting;
        answers ? self->_answer() : self->_shared->endTurn();
    });
}

std::future<void> Connection::refuseTurn() {
    return asio::post(_socket.get_executor(), asio::use_future([self = shared_from_this()] {
                          if (self->_state == State::Waiting) {
                              self->_refuse(503);
                          }
                      }));
}

void Connection::_answer() {
    _state = State::Answering;
    const auto begin = _record.begin(_login.peer, _reader.request());
    HttpRequest request = std::move(_reader.request());
    request.peer = _login.peer;
    request.caller = _caller;
    ResponseStream::Form form;
    form.isHttp11 = _reader.isHttp11();
    form.keepsAlive = _reader.keepsAlive();
    const std::string* const te = request.header("TE");
    form.acceptsTrailers = te && te->find("trailers") != std::string::npos;
    const auto answering = std::make_shared<HttpAnswering>(
        HttpAnswering::Place{shared_from_this(), *_shared, *_wire, _record, _caller}, form);
    _loop->enterHandler(answering, begin + _limits.answer);
    _shared->wakeWatcher();
    answering->work(request);
    std::optional<ResponseStream::End> end = answering->finish();
    _loop->leaveHandler(answering);
    if (!end) {
        return _close();
    }
    _send(std::move(*end));
}

void Connection::_send(ResponseStream::End end) {
    _state = State::Sending;
    if (end.next == ResponseStream::Abort) {
        _wire->resetAtClose();
        return _close();
    }
    _end = std::move(end);
    _sent = 0;
    _sendRest();
}

// What the socket takes at once leaves at once; for the rest nobody's thread waits.
void Connection::_sendRest() {
    while (_sent < _end.bytes.size()) {
        const auto step = _wire->send(_end.bytes.data() + _sent, _end.bytes.size() - _sent);
        _sent += step.bytes;
        if (step.kind == HttpWire::Step::Lost || step.kind == HttpWire::Step::Ended) {
            return _close();
        }
        if (step.kind != HttpWire::Step::Moved) {
            _enter(State::Sending, _limits.sending);
            return _await(step.kind, [](Connection& self) { self._sendRest(); });
        }
    }
    _onSent();
}

void Connection::_onSent() {
    const ResponseStream::Next next = _end.next;
    _end = {};
    if (next == ResponseStream::KeepAlive) {
        return _awaitRequest();
    }
    _wire->end();
    _reader.forget();
    _enter(State::Draining, DRAIN_TIME);
    _drain();
}

void Connection::stop() {
    asio::post(_socket.get_executor(), [self = shared_from_this()] {
        if (self->_state == State::Judging) {
            self->_refuse(503);
        } else if (self->_state != State::Sending && self->_state != State::Draining &&
                   self->_state != State::Waiting) {
            self->_close();
        }
    });
}

void Connection::_close() {
    if (_state == State::Closed) {
        return;
    }
    _state = State::Closed;
    _deadline.cancel();
    // First: a client that ended its connection, and sees that closed, may come again at once.
    _shared->leave(_login.peer);
    error_code ignored;
    _socket.close(ignored);
    _shared->remove(shared_from_this());
}

}  // namespace

std::shared_ptr<HttpConnection> HttpConnection::make(std::shared_ptr<HttpShared> shared,
                                                     std::shared_ptr<HttpLoop> loop,
                                                     Descriptor socket,
                                                     std::unique_ptr<HttpWire> wire, Login login) {
    return std::make_shared<Connection>(std::move(shared), std::move(loop), std::move(socket),
                                        std::move(wire), std::move(login));
}

}  // namespace QZ
