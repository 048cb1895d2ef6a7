// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TlsIdentity.h"

#include <openssl/err.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

#include <utility>

#include "Error.h"
#include "TlsWire.h"

namespace QZ {

namespace {

using Context = std::shared_ptr<SSL_CTX>;

[[noreturn]] void _fail(const std::string& what, const std::string& file) {
    const unsigned long error = ERR_peek_error();
    ERR_clear_error();
    const char* const reason = ERR_SYSTEM_ERROR(error) ? nullptr : ERR_reason_error_string(error);
    throw Error("Cannot use " + file + " as " + what + ": " +
                (ERR_SYSTEM_ERROR(error) ? systemErrorText(int(ERR_GET_REASON(error)))
                                         : std::string(reason ? reason : "it is no PEM file")));
}

// In place of OpenSSL's own, which asks on the terminal. Says in what it is given that it was
// called.
int _giveNoPassword(char* /*text*/, int /*size*/, int /*isNew*/, void* wasAsked) {
    *static_cast<bool*>(wasAsked) = true;
    return -1;
}

void _useKey(SSL_CTX* context, const std::string& file) {
    bool isEncrypted = false;
    SSL_CTX_set_default_passwd_cb(context, _giveNoPassword);
    SSL_CTX_set_default_passwd_cb_userdata(context, &isEncrypted);
    const bool isUsed = SSL_CTX_use_PrivateKey_file(context, file.c_str(), SSL_FILETYPE_PEM) == 1;
    SSL_CTX_set_default_passwd_cb(context, nullptr);
    SSL_CTX_set_default_passwd_cb_userdata(context, nullptr);
    if (isEncrypted) {
        ERR_clear_error();
        throw Error("Cannot use " + file +
                    " as the key of the server's certificate: it is "
                    "encrypted, and nobody is asked for its password");
    }
    if (!isUsed) {
        _fail("the key of the server's certificate", file);
    }
}

void _askForCertificates(SSL_CTX* context, const std::string& file) {
    if (SSL_CTX_load_verify_file(context, file.c_str()) != 1) {
        _fail("the authorities of clients", file);
    }
    STACK_OF(X509_NAME)* const names = SSL_load_client_CA_file(file.c_str());
    if (!names) {
        _fail("the authorities of clients", file);
    }
    SSL_CTX_set_client_CA_list(context, names);
    SSL_CTX_set_verify(context, SSL_VERIFY_PEER | SSL_VERIFY_CLIENT_ONCE, nullptr);
}

Context _load(const TlsFiles& files) {
    ERR_clear_error();
    Context context(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
    if (!context) {
        throw Error("TLS cannot be used: the system has no memory for it");
    }
    SSL_CTX_set_min_proto_version(context.get(), TLS1_2_VERSION);
    SSL_CTX_set_options(context.get(), SSL_OP_NO_RENEGOTIATION | SSL_OP_CIPHER_SERVER_PREFERENCE);
    SSL_CTX_set_mode(context.get(), SSL_MODE_ENABLE_PARTIAL_WRITE |
                                        SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER |
                                        SSL_MODE_RELEASE_BUFFERS);
    // A session taken up again must be one of this server.
    static const unsigned char SESSION[] = "tavqz";
    SSL_CTX_set_session_id_context(context.get(), SESSION, sizeof SESSION - 1);
    if (SSL_CTX_use_certificate_chain_file(context.get(), files.certificate.c_str()) != 1) {
        _fail("the server's certificate", files.certificate);
    }
    _useKey(context.get(), files.key);
    if (!files.clientAuthorities.empty()) {
        _askForCertificates(context.get(), files.clientAuthorities);
    }
    return context;
}

}  // namespace

TlsIdentity::TlsIdentity(TlsFiles files) : _files(std::move(files)), _context(_load(_files)) {}

TlsIdentity::~TlsIdentity() = default;

void TlsIdentity::reload() {
    Context context = _load(_files);
    const std::lock_guard<std::mutex> lock(_mutex);
    _context = std::move(context);
}

std::unique_ptr<HttpWire> TlsIdentity::accept(int socket) const {
    Context context;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        context = _context;
    }
    return makeTlsWire(socket, context.get());
}

}  // namespace QZ
