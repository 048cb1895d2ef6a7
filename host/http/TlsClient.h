// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <openssl/ssl.h>

#include <string>

#include "HttpTrust.h"

namespace QZ {

// What a client wants of TLS, in OpenSSL's terms.

// TLS 1.2 and newer, and certificates as the trust says. Throws Error as checkTrust() does.
void setTrust(SSL_CTX* context, const HttpTrust& trust);

// Before the handshake: the name or address that the certificate must be for. Throws Error.
void expectServer(SSL* connection, const std::string& host);

// After a handshake that failed, with the error of OpenSSL's queue or 0: why and what can be done,
// to be read behind "The server at host:port ". Empty where TLS is not to blame.
std::string handshakeFailure(const SSL* connection, unsigned long error);

}  // namespace QZ
