// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <openssl/ssl.h>

#include <memory>

#include "HttpWire.h"

namespace QZ {

// The server's side of a connection over TLS. Throws std::bad_alloc.
std::unique_ptr<HttpWire> makeTlsWire(int socket, SSL_CTX* context);

}  // namespace QZ
