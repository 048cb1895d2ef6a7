// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpAcceptor.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "Error.h"

namespace QZ {

namespace {

// Before a connection is taken again that could not be taken, for want of descriptors for example.
constexpr int PAUSE_MILLISECONDS = 100;

union SocketAddress {
    sockaddr any;
    sockaddr_in v4;
    sockaddr_in6 v6;
    sockaddr_un local;
};

socklen_t _addressOf(const HttpListener& listener, SocketAddress& address) {
    if (inet_pton(AF_INET, listener.address.c_str(), &address.v4.sin_addr) == 1) {
        address.v4.sin_family = AF_INET;
        address.v4.sin_port = htons(listener.port);
        return sizeof address.v4;
    }
    if (inet_pton(AF_INET6, listener.address.c_str(), &address.v6.sin6_addr) == 1) {
        address.v6.sin6_family = AF_INET6;
        address.v6.sin6_port = htons(listener.port);
        return sizeof address.v6;
    }
    throw Error("Cannot listen on " + listener.address +
                ": it is no address, such as 127.0.0.1 or ::1");
}

Descriptor _newSocket(int family, const std::string& where) {
    Descriptor made(::socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!made.isOpen()) {
        throwSystemError("Cannot listen on", where, errno);
    }
    return made;
}

Descriptor _listenTcp(const HttpListener& listener, std::uint16_t& port) {
    const std::string where = listener.address + ", port " + std::to_string(listener.port);
    SocketAddress address{};
    socklen_t size = _addressOf(listener, address);
    Descriptor made = _newSocket(address.any.sa_family, where);
    const int on = 1;
    if (::setsockopt(made.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
        ::bind(made.get(), &address.any, size) != 0 || ::listen(made.get(), SOMAXCONN) != 0 ||
        ::getsockname(made.get(), &address.any, &size) != 0) {
        throwSystemError("Cannot listen on", where, errno);
    }
    port = ntohs(address.any.sa_family == AF_INET ? address.v4.sin_port : address.v6.sin6_port);
    return made;
}

// A socket that a server left behind when it was killed is taken away; one that answers is
// another's, and so is what is no socket.
void _removeLeftover(const SocketAddress& address) {
    const std::string path = address.local.sun_path;
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        return;
    }
    if (!S_ISSOCK(status.st_mode)) {
        throw Error("Cannot listen on " + path + ": it is there already, and no socket");
    }
    const Descriptor asking(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (::connect(asking.get(), &address.any, sizeof address.local) != 0 && errno == ECONNREFUSED) {
        ::unlink(path.c_str());
    }
}

Descriptor _listenLocally(const std::string& path) {
    SocketAddress address{};
    address.local.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.local.sun_path) {
        throwSystemError("Cannot listen on", path, ENAMETOOLONG);
    }
    std::memcpy(address.local.sun_path, path.data(), path.size());
    Descriptor made = _newSocket(AF_UNIX, path);
    _removeLeftover(address);
    constexpr mode_t FOR_ALL = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    if (::bind(made.get(), &address.any, sizeof address.local) != 0) {
        throwSystemError("Cannot listen on", path, errno);
    }
    if (::chmod(path.c_str(), FOR_ALL) != 0 || ::listen(made.get(), SOMAXCONN) != 0) {
        const int error = errno;
        ::unlink(path.c_str());
        throwSystemError("Cannot listen on", path, error);
    }
    return made;
}

Login _loginOf(int socket, const SocketAddress& address) {
    Login login;
    char text[INET6_ADDRSTRLEN] = "";
    if (address.any.sa_family == AF_UNIX) {
        ucred peer{};
        socklen_t size = sizeof peer;
        if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0) {
            login.localUser = peer.uid;
        }
        login.peer = login.localUser ? "uid " + std::to_string(*login.localUser) : "local";
    } else if (address.any.sa_family == AF_INET) {
        login.peer = inet_ntop(AF_INET, &address.v4.sin_addr, text, sizeof text);
    } else if (IN6_IS_ADDR_V4MAPPED(&address.v6.sin6_addr)) {
        login.peer = inet_ntop(AF_INET, &address.v6.sin6_addr.s6_addr[12], text, sizeof text);
    } else {
        login.peer = inet_ntop(AF_INET6, &address.v6.sin6_addr, text, sizeof text);
    }
    return login;
}

}  // namespace

HttpAcceptor::HttpAcceptor(const std::vector<HttpListener>& listeners)
    : _wakeUp(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!_wakeUp.isOpen()) {
        throw Error("Cannot wait for connections: " + systemErrorText(errno));
    }
    try {
        for (const HttpListener& listener : listeners) {
            Listening& made = _listening.emplace_back();
            made.socket = listener.socketFile.empty() ? _listenTcp(listener, made.port)
                                                      : _listenLocally(listener.socketFile);
            made.listener = listener;
        }
    } catch (...) {
        stop();  // with those that could be had
        throw;
    }
}

HttpAcceptor::~HttpAcceptor() {
    stop();
}

void HttpAcceptor::start(OnAccepted onAccepted) {
    _onAccepted = std::move(onAccepted);
    _thread = std::thread([this] { _run(); });
}

void HttpAcceptor::stop() {
    if (_ends.exchange(true)) {
        return;
    }
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(_wakeUp.get(), &one, sizeof one);
    if (_thread.joinable()) {
        _thread.join();
    }
    for (Listening& listening : _listening) {
        listening.socket = Descriptor();
        // A listener that could not be had is nobody's to remove.
        if (!listening.listener.socketFile.empty()) {
            ::unlink(listening.listener.socketFile.c_str());
        }
    }
}

void HttpAcceptor::_run() {
    std::vector<pollfd> waiting{{_wakeUp.get(), POLLIN, 0}};
    for (const Listening& listening : _listening) {
        waiting.push_back({listening.socket.get(), POLLIN, 0});
    }
    while (!_ends) {
        ::poll(waiting.data(), waiting.size(), -1);
        bool isWell = true;
        for (std::size_t i = 0; i < _listening.size() && !_ends; ++i) {
            isWell = (waiting[i + 1].revents == 0 || _accept(_listening[i])) && isWell;
        }
        if (!isWell) {
            ::poll(waiting.data(), 1, PAUSE_MILLISECONDS);
        }
    }
}

// False where the system does not hand it out now.
bool HttpAcceptor::_accept(const Listening& listening) const {
    SocketAddress address{};
    socklen_t size = sizeof address;
    Descriptor taken(
        ::accept4(listening.socket.get(), &address.any, &size, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!taken.isOpen()) {
        return errno == EAGAIN || errno == EINTR || errno == ECONNABORTED;
    }
    if (address.any.sa_family != AF_UNIX) {
        const int on = 1;
        ::setsockopt(taken.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    }
    Login login = _loginOf(taken.get(), address);
    login.isEncrypted = listening.listener.tls != nullptr;
    try {
        _onAccepted(std::move(taken), std::move(login), listening.listener);
    } catch (const std::exception&) {
        return false;  // no memory: the client is let go
    }
    return true;
}

}  // namespace QZ
