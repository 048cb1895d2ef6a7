// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// Whom a client believes that a server with a certificate is the one it asks for.
struct HttpTrust {
    // Certificates (PEM): of authorities, or servers' own. Empty: the system's authorities.
    std::string authorityFile;
    bool acceptsAny = false;  // whoever answers: no certificate is looked at
    // Another file of the same, which is believed besides the system's authorities where it is
    // there.
    std::string ownCertificateFile = {};
};

// Throws Error where the file cannot be read or holds no certificate.
void checkTrust(const HttpTrust& trust);

}  // namespace QZ
