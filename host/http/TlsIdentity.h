// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "HttpWire.h"

// OpenSSL's SSL_CTX.
struct ssl_ctx_st;

namespace QZ {

// Files in PEM form.
struct TlsFiles {
    std::string certificate;  // the server's, and behind it those of who issued it
    std::string key;
    // Whose clients' certificates are believed; a client without one is served as well. Empty: none
    // is asked for.
    std::string clientAuthorities;
};

// What a server shows of itself over TLS 1.2 and newer. Any thread.
class TlsIdentity {
public:
    // Throws Error with the file that cannot be used, and why.
    explicit TlsIdentity(TlsFiles files);
    ~TlsIdentity();

    // Reads the files again, for the connections that come from now on. Throws Error; then all
    // stays as it was.
    void reload();

    // The wire of a connection that was taken. The handshake comes with the first bytes.
    std::unique_ptr<HttpWire> accept(int socket) const;

private:
    const TlsFiles _files;
    mutable std::mutex _mutex;
    std::shared_ptr<ssl_ctx_st> _context;
};

}  // namespace QZ
