// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <openssl/ssl.h>

#include <memory>
#include <string>

#include "TemporaryFolder.h"

// A certificate and its key, made for one run of a test.
class TestCertificate {
public:
    struct Wishes {
        std::string names = "IP:127.0.0.1";       // as a subjectAltName has them
        const TestCertificate* issuer = nullptr;  // null: itself
        long validFrom = -3600;                   // seconds from now
        long validTo = 3600;
    };

    TestCertificate() : TestCertificate(Wishes()) {}
    explicit TestCertificate(const Wishes& wishes);

    X509* certificate() const { return _certificate.get(); }
    EVP_PKEY* key() const { return _key.get(); }
    std::string pem() const;

private:
    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> _key;
    std::unique_ptr<X509, decltype(&X509_free)> _certificate;
};

// A file of one certificate, for those who are to trust it.
class CertificateFile {
public:
    explicit CertificateFile(const TestCertificate& certificate)
        : path(_folder.write("trusted.pem", certificate.pem())) {}

private:
    TemporaryFolder _folder;

public:
    const std::string path;
};
