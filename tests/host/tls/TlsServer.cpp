// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TlsServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace {

using Connection = std::unique_ptr<SSL, decltype(&SSL_free)>;

// Up to the end of the body; empty where the client is gone.
std::string _body(SSL* connection) {
    std::string text;
    std::size_t header = std::string::npos;
    std::size_t size = 0;
    while (header == std::string::npos || text.size() < header + 4 + size) {
        char part[4096];
        const int count = SSL_read(connection, part, sizeof part);
        if (count <= 0) {
            return {};
        }
        text.append(part, std::size_t(count));
        header = text.find("\r\n\r\n");
        const std::size_t length = text.find("Content-Length: ");
        size = length < header ? std::strtoul(text.c_str() + length + 16, nullptr, 10) : 0;
    }
    return text.substr(header + 4);
}

}  // namespace

SilentServer::SilentServer() : _socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const name = reinterpret_cast<sockaddr*>(&address);
    if (bind(_socket, name, size) != 0 || listen(_socket, 8) != 0 ||
        getsockname(_socket, name, &size) != 0) {
        throw std::runtime_error("no port to listen on");
    }
    _port = ntohs(address.sin_port);
}

SilentServer::~SilentServer() {
    close();
}

bool SilentServer::awaitClient() const {
    pollfd waited{_socket, POLLIN, 0};
    return poll(&waited, 1, 20'000) == 1;
}

void SilentServer::close() {
    if (_socket >= 0) {
        ::close(std::exchange(_socket, -1));
    }
}

TlsServer::TlsServer(const TestCertificate& certificate, Answer answer, Settings settings)
    : _answer(std::move(answer)),
      _settings(settings),
      _context(SSL_CTX_new(TLS_server_method()), SSL_CTX_free) {
    // OpenSSL writes to a client that is gone, too.
    (void)std::signal(SIGPIPE, SIG_IGN);
    SSL_CTX_set_max_proto_version(_context.get(), _settings.newestVersion);
    // Versions before 1.2 need it.
    SSL_CTX_set_security_level(_context.get(), 0);
    if (SSL_CTX_use_certificate(_context.get(), certificate.certificate()) != 1 ||
        SSL_CTX_use_PrivateKey(_context.get(), certificate.key()) != 1) {
        throw std::runtime_error("the certificate cannot be used");
    }
    _thread = std::thread([this] { _accept(); });
}

TlsServer::~TlsServer() {
    // Ends accept(), which a mere close() does not.
    shutdown(socket(), SHUT_RDWR);
    _thread.join();
}

void TlsServer::_accept() {
    for (;;) {
        const int client = accept(socket(), nullptr, nullptr);
        if (client < 0) {
            return;
        }
        {
            const Connection connection(SSL_new(_context.get()), SSL_free);
            SSL_set_fd(connection.get(), client);
            if (SSL_accept(connection.get()) == 1) {
                const char* const name =
                    SSL_get_servername(connection.get(), TLSEXT_NAMETYPE_host_name);
                _serverName = name ? name : "";
                ++_connections;
                _serve(connection.get());
            }
        }
        ::close(client);
    }
}

void TlsServer::_serve(SSL* connection) const {
    for (std::string body = _body(connection); !body.empty(); body = _body(connection)) {
        const std::string answer = _answer(body);
        const std::string text =
            "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(answer.size()) + "\r\n\r\n" +
            answer;
        SSL_write(connection, text.data(), int(text.size()));
        if (_settings.closesAfterAnswer) {
            return;
        }
    }
}
