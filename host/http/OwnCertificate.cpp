// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "OwnCertificate.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <memory>

#include "Clock.h"
#include "Error.h"
#include "FileReplacement.h"

namespace QZ {

namespace {

constexpr int VALID_DAYS = 10 * 365;

// The subject's organization, by which we know our own.
constexpr const char* OWN_MARK = "tavqz serve, for itself";

template <class Type, void (*release)(Type*)>
struct Release {
    void operator()(Type* object) const { release(object); }
};
using Key = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY, EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Release<X509, X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Release<X509_EXTENSION, X509_EXTENSION_free>>;
using AlternativeNames = std::unique_ptr<GENERAL_NAMES, Release<GENERAL_NAMES, GENERAL_NAMES_free>>;
using Text = std::unique_ptr<ASN1_OCTET_STRING, Release<ASN1_OCTET_STRING, ASN1_OCTET_STRING_free>>;
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

bool _isAddress(const std::string& name) {
    unsigned char address[sizeof(in6_addr)];
    return inet_pton(AF_INET, name.c_str(), address) == 1 ||
           inet_pton(AF_INET6, name.c_str(), address) == 1;
}

std::string _alternativeNames(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text.append(text.empty() ? "" : ",").append(_isAddress(name) ? "IP:" : "DNS:").append(name);
    }
    return text;
}

void _addToName(X509_NAME* name, int kind, const std::string& text) {
    _require(X509_NAME_add_entry_by_NID(name, kind, MBSTRING_UTF8,
                                        reinterpret_cast<const unsigned char*>(text.data()),
                                        int(text.size()), -1, 0) == 1);
}

// Empty where the subject says none.
std::string _organizationOf(const X509* certificate) {
    char text[64] = "";
    (void)X509_NAME_get_text_by_NID(X509_get_subject_name(certificate), NID_organizationName, text,
                                    sizeof text);
    return text;
}

// None where it cannot be read.
Certificate _read(const std::string& file) {
    const Memory memory(BIO_new_file(file.c_str(), "r"));
    Certificate read(memory ? PEM_read_bio_X509(memory.get(), nullptr, nullptr, nullptr) : nullptr);
    ERR_clear_error();
    return read;
}

// Among its alternative names, exactly as it was given to _alternativeNames.
bool _isNamedIn(const X509* certificate, const std::string& name) {
    const AlternativeNames all(static_cast<GENERAL_NAMES*>(
        X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr)));
    const Text address(_isAddress(name) ? a2i_IPADDRESS(name.c_str()) : nullptr);
    const int count = all ? sk_GENERAL_NAME_num(all.get()) : 0;
    for (int i = 0; i < count; ++i) {
        int kind = 0;
        const auto* const value = static_cast<const ASN1_STRING*>(
            GENERAL_NAME_get0_value(sk_GENERAL_NAME_value(all.get(), i), &kind));
        if (kind == GEN_IPADD && address && ASN1_STRING_cmp(value, address.get()) == 0) {
            return true;
        }
        if (kind == GEN_DNS && !address &&
            name == std::string(reinterpret_cast<const char*>(ASN1_STRING_get0_data(value)),
                                std::size_t(ASN1_STRING_length(value)))) {
            return true;
        }
    }
    return false;
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
    _addToName(subject, NID_commonName, names.front().substr(0, 64));
    _addToName(subject, NID_organizationName, OWN_MARK);
    _require(X509_set_issuer_name(made.get(), subject) == 1 &&
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

bool isOwnForOthers(const std::string& certificateFile, const std::vector<std::string>& names) {
    const Certificate certificate = _read(certificateFile);
    if (!certificate || _organizationOf(certificate.get()) != OWN_MARK) {
        return false;
    }
    return !std::all_of(names.begin(), names.end(), [&](const std::string& name) {
        return _isNamedIn(certificate.get(), name);
    });
}

std::vector<std::string> namesOfThisMachine() {
    std::vector<std::string> names;
    char name[HOST_NAME_MAX + 1] = "";
    if (gethostname(name, sizeof name - 1) == 0 && *name != '\0') {
        names.emplace_back(name);
        const std::size_t dot = names.front().find('.');
        if (dot != std::string::npos && dot > 0) {
            names.push_back(names.front().substr(0, dot));
        }
    }
    names.insert(names.end(), {"localhost", "127.0.0.1", "::1"});
    return names;
}

std::vector<std::string> addressesOfThisMachine() {
    ifaddrs* all = nullptr;
    if (getifaddrs(&all) != 0) {
        return {};
    }
    const std::unique_ptr<ifaddrs, Release<ifaddrs, freeifaddrs>> owner(all);
    std::vector<std::string> addresses;
    for (const ifaddrs* at = all; at; at = at->ifa_next) {
        char text[INET6_ADDRSTRLEN] = "";
        if (at->ifa_addr && at->ifa_addr->sa_family == AF_INET) {
            inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in*>(at->ifa_addr)->sin_addr, text,
                      sizeof text);
        } else if (at->ifa_addr && at->ifa_addr->sa_family == AF_INET6) {
            inet_ntop(AF_INET6, &reinterpret_cast<const sockaddr_in6*>(at->ifa_addr)->sin6_addr,
                      text, sizeof text);
        }
        if (*text != '\0') {
            addresses.emplace_back(text);
        }
    }
    return addresses;
}

}  // namespace QZ
