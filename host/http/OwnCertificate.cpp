// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "OwnCertificate.h"

#include <arpa/inet.h>
#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>
#include <unistd.h>

#include <climits>
#include <memory>

#include "Clock.h"
#include "Error.h"
#include "FileReplacement.h"

namespace QZ {

namespace {

constexpr int VALID_DAYS = 10 * 365;

template <class Type, void (*release)(Type*)>
struct Release {
    void operator()(Type* object) const { release(object); }
};
using Key = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY, EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Release<X509, X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Release<X509_EXTENSION, X509_EXTENSION_free>>;
using Memory = std::unique_ptr<BIO, Release<BIO, BIO_free_all>>;

void _require(bool isDone) {
    if (!isDone) {
        const char* const reason = ERR_reason_error_string(ERR_peek_error());
        const std::string text = reason ? reason : "for no known reason";
        ERR_clear_error();
        throw Error("Cannot make a certificate: " + text);
    }
}

void _addExtension(X509* certificate, int kind, const std::string& value) {
    const Extension made(X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str()));
    _require(made && X509_add_ext(certificate, made.get(), -1) == 1);
}

std::string _alternativeNames(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        unsigned char address[sizeof(in6_addr)];
        const bool isAddress = inet_pton(AF_INET, name.c_str(), address) == 1 ||
                               inet_pton(AF_INET6, name.c_str(), address) == 1;
        text.append(text.empty() ? "" : ",").append(isAddress ? "IP:" : "DNS:").append(name);
    }
    return text;
}

void _setSerial(X509* certificate) {
    std::uint64_t number = 0;
    _require(RAND_bytes(reinterpret_cast<unsigned char*>(&number), sizeof number) == 1);
    // RFC 5280, 4.1.2.2: positive.
    number >>= 1U;
    _require(ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate), number | 1U) == 1);
}

Certificate _sign(EVP_PKEY* key, const std::vector<std::string>& names) {
    Certificate made(X509_new());
    _require(made && X509_set_version(made.get(), X509_VERSION_3) == 1);
    _setSerial(made.get());
    std::time_t now = Clock::current().seconds();
    _require(X509_time_adj_ex(X509_getm_notBefore(made.get()), -1, 0, &now) &&
             X509_time_adj_ex(X509_getm_notAfter(made.get()), VALID_DAYS, 0, &now));
    X509_NAME* const subject = X509_get_subject_name(made.get());
    // RFC 5280, A.1: 64 characters at most.
    const std::string common = names.front().substr(0, 64);
    _require(X509_NAME_add_entry_by_NID(subject, NID_commonName, MBSTRING_UTF8,
                                        reinterpret_cast<const unsigned char*>(common.data()),
                                        int(common.size()), -1, 0) == 1 &&
             X509_set_issuer_name(made.get(), subject) == 1 &&
             X509_set_pubkey(made.get(), key) == 1);
    _addExtension(made.get(), NID_subject_alt_name, _alternativeNames(names));
    _addExtension(made.get(), NID_basic_constraints, "critical,CA:FALSE");
    _addExtension(made.get(), NID_key_usage, "critical,digitalSignature");
    _addExtension(made.get(), NID_ext_key_usage, "serverAuth");
    _require(X509_sign(made.get(), key, EVP_sha256()) != 0);
    return made;
}

template <class Write>
std::string _pem(Write write) {
    const Memory memory(BIO_new(BIO_s_mem()));
    _require(memory && write(memory.get()) == 1);
    char* text = nullptr;
    const long size = BIO_get_mem_data(memory.get(), &text);
    return std::string(text, std::size_t(size));
}

}  // namespace

void makeOwnCertificate(const std::string& certificateFile, const std::string& keyFile,
                        const std::vector<std::string>& names) {
    ERR_clear_error();
    const Key key(EVP_EC_gen("P-256"));
    _require(key != nullptr);
    const Certificate certificate = _sign(key.get(), names);
    replaceFile(keyFile, _pem([&](BIO* to) {
                    return PEM_write_bio_PKCS8PrivateKey(to, key.get(), nullptr, nullptr, 0,
                                                         nullptr, nullptr);
                }));
    replaceFile(certificateFile,
                _pem([&](BIO* to) { return PEM_write_bio_X509(to, certificate.get()); }));
}

std::vector<std::string> namesOfThisMachine() {
    std::vector<std::string> names;
    char name[HOST_NAME_MAX + 1] = "";
    if (gethostname(name, sizeof name - 1) == 0 && *name != '\0') {
        names.emplace_back(name);
    }
    names.insert(names.end(), {"localhost", "127.0.0.1", "::1"});
    return names;
}

}  // namespace QZ
