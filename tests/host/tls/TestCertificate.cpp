// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TestCertificate.h"

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <stdexcept>

namespace {

void _check(bool isDone) {
    if (!isDone) {
        throw std::runtime_error("a certificate cannot be made");
    }
}

void _addExtension(X509* certificate, int kind, const std::string& value) {
    X509_EXTENSION* const extension =
        X509V3_EXT_conf_nid(nullptr, nullptr, kind, const_cast<char*>(value.c_str()));
    _check(extension && X509_add_ext(certificate, extension, -1) == 1);
    X509_EXTENSION_free(extension);
}

void _setSubject(X509* certificate, const char* name) {
    X509_NAME* const subject = X509_get_subject_name(certificate);
    const auto* const text = reinterpret_cast<const unsigned char*>(name);
    _check(X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_UTF8, text, -1, -1, 0) == 1);
}

}  // namespace

TestCertificate::TestCertificate(const Wishes& wishes)
    : _key(EVP_EC_gen("P-256"), EVP_PKEY_free), _certificate(X509_new(), X509_free) {
    _check(_key && _certificate);
    X509* const made = _certificate.get();
    X509_set_version(made, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(made), 1);
    X509_gmtime_adj(X509_getm_notBefore(made), wishes.validFrom);
    X509_gmtime_adj(X509_getm_notAfter(made), wishes.validTo);
    _check(X509_set_pubkey(made, _key.get()) == 1);
    _setSubject(made, wishes.issuer ? "a listener of the tests" : "an authority of the tests");
    const TestCertificate& issuer = wishes.issuer ? *wishes.issuer : *this;
    X509_set_issuer_name(made, X509_get_subject_name(issuer.certificate()));
    _addExtension(made, NID_basic_constraints, wishes.issuer ? "CA:FALSE" : "critical,CA:TRUE");
    _addExtension(made, NID_subject_alt_name, wishes.names);
    _check(X509_sign(made, issuer.key(), EVP_sha256()) != 0);
}

std::string TestCertificate::pem() const {
    const std::unique_ptr<BIO, decltype(&BIO_free)> memory(BIO_new(BIO_s_mem()), BIO_free);
    _check(memory && PEM_write_bio_X509(memory.get(), certificate()) == 1);
    const char* text = nullptr;
    const long size = BIO_get_mem_data(memory.get(), &text);
    return std::string(text, std::size_t(size));
}
