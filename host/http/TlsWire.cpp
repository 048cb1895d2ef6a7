// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TlsWire.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/x509.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <new>

namespace QZ {

namespace {

// OpenSSL's own writes to a socket end the process where the client is gone; these do not, and
// never wait.
int _writeSocket(BIO* bio, const char* from, int size) {
    const int socket = *static_cast<const int*>(BIO_get_data(bio));
    const ssize_t count = ::send(socket, from, std::size_t(size), MSG_DONTWAIT | MSG_NOSIGNAL);
    BIO_clear_retry_flags(bio);
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) {
        BIO_set_retry_write(bio);
    }
    return int(count);
}

int _readSocket(BIO* bio, char* to, int size) {
    const int socket = *static_cast<const int*>(BIO_get_data(bio));
    const ssize_t count = ::recv(socket, to, std::size_t(size), MSG_DONTWAIT);
    BIO_clear_retry_flags(bio);
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) {
        BIO_set_retry_read(bio);
    }
    return int(count);
}

long _controlSocket(BIO* /*bio*/, int command, long /*number*/, void* /*pointer*/) {
    return command == BIO_CTRL_FLUSH ? 1 : 0;
}

const BIO_METHOD* _socketMethod() {
    static const std::unique_ptr<BIO_METHOD, decltype(&BIO_meth_free)> METHOD = [] {
        std::unique_ptr<BIO_METHOD, decltype(&BIO_meth_free)> made(
            BIO_meth_new(BIO_get_new_index() | BIO_TYPE_SOURCE_SINK, "socket"), BIO_meth_free);
        if (!made) {
            throw std::bad_alloc();
        }
        BIO_meth_set_write(made.get(), _writeSocket);
        BIO_meth_set_read(made.get(), _readSocket);
        BIO_meth_set_ctrl(made.get(), _controlSocket);
        return made;
    }();
    return METHOD.get();
}

class TlsWire : public HttpWire {
public:
    TlsWire(int socket, SSL_CTX* context)
        : HttpWire(socket), _descriptor(socket), _connection(SSL_new(context), SSL_free) {
        BIO* const bio = _connection ? BIO_new(_socketMethod()) : nullptr;
        if (!bio) {
            throw std::bad_alloc();
        }
        BIO_set_data(bio, &_descriptor);
        BIO_set_init(bio, 1);
        SSL_set_bio(_connection.get(), bio, bio);
        SSL_set_accept_state(_connection.get());
    }

    Step receive(char* to, std::size_t size) override {
        ERR_clear_error();
        const int count =
            SSL_read(_connection.get(), to, int(std::min<std::size_t>(size, INT_MAX)));
        return _step(count);
    }

    Step send(const char* from, std::size_t size) override {
        ERR_clear_error();
        const int count =
            SSL_write(_connection.get(), from, int(std::min<std::size_t>(size, INT_MAX)));
        return _step(count);
    }

    bool holdsBytes() const override { return SSL_pending(_connection.get()) > 0; }

    void end() override {
        if (!_isBroken) {
            ERR_clear_error();
            SSL_shutdown(_connection.get());
        }
        ::shutdown(socket(), SHUT_WR);
    }

    std::string certificateName() const override {
        X509* const certificate = SSL_get0_peer_certificate(_connection.get());
        if (!certificate || SSL_get_verify_result(_connection.get()) != X509_V_OK) {
            return {};
        }
        char name[256] = "";
        const int length = X509_NAME_get_text_by_NID(X509_get_subject_name(certificate),
                                                     NID_commonName, name, sizeof name);
        // One with a NUL inside is nobody's.
        const std::string text = name;
        return length == int(text.size()) ? text : std::string();
    }

private:
    Step _step(int count) {
        if (count > 0) {
            return {Step::Moved, std::size_t(count)};
        }
        switch (SSL_get_error(_connection.get(), count)) {
            case SSL_ERROR_WANT_READ:
                return {Step::WantsRead};
            case SSL_ERROR_WANT_WRITE:
                return {Step::WantsWrite};
            case SSL_ERROR_ZERO_RETURN:
                return {Step::Ended};
            default:
                _isBroken = true;
                ERR_clear_error();
                return {Step::Lost};
        }
    }

    int _descriptor;  // where OpenSSL's calls back find it
    const std::unique_ptr<SSL, decltype(&SSL_free)> _connection;
    bool _isBroken = false;  // then nothing more may be said, not even that it ends
};

}  // namespace

std::unique_ptr<HttpWire> makeTlsWire(int socket, SSL_CTX* context) {
    return std::make_unique<TlsWire>(socket, context);
}

}  // namespace QZ
