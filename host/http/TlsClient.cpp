// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "TlsClient.h"

#include <arpa/inet.h>
#include <openssl/err.h>
#include <openssl/x509v3.h>

#include <memory>

#include "Error.h"

namespace QZ {

namespace {

bool _isAddress(const std::string& host) {
    unsigned char address[sizeof(in6_addr)];
    return inet_pton(AF_INET, host.c_str(), address) == 1 ||
           inet_pton(AF_INET6, host.c_str(), address) == 1;
}

// A server's own certificate may be in a file without that of who issued it.
void _believeWithoutIssuer(SSL_CTX* context) {
    X509_VERIFY_PARAM_set_flags(SSL_CTX_get0_param(context), X509_V_FLAG_PARTIAL_CHAIN);
}

void _believeOwn(SSL_CTX* context, const std::string& file) {
    if (!file.empty() && SSL_CTX_load_verify_file(context, file.c_str()) == 1) {
        _believeWithoutIssuer(context);
    }
    ERR_clear_error();
}

std::string _certificateFailure(long result) {
    switch (result) {
        case X509_V_OK:
            return {};
        case X509_V_ERR_HOSTNAME_MISMATCH:
        case X509_V_ERR_IP_ADDRESS_MISMATCH:
            return "has a certificate for another name: ask it by the name that it is for";
        case X509_V_ERR_CERT_HAS_EXPIRED:
            return "has a certificate that has expired: it needs a new one";
        case X509_V_ERR_CERT_NOT_YET_VALID:
            return "has a certificate that is not valid yet: set the clock that is wrong, here or "
                   "there";
        case X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT:
        case X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN:
        case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT:
        case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY:
        case X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE:
        // By one that is trusted only for having the same name.
        case X509_V_ERR_CERT_SIGNATURE_FAILURE:
            return "has a certificate from nobody who is trusted here: name the file of who "
                   "issued it with --cacert";
        default:
            return std::string("has a certificate that is not accepted: ") +
                   X509_verify_cert_error_string(result) + "; it needs another one";
    }
}

}  // namespace

void setTrust(SSL_CTX* context, const HttpTrust& trust) {
    SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION);
    SSL_CTX_set_verify(context, trust.acceptsAny ? SSL_VERIFY_NONE : SSL_VERIFY_PEER, nullptr);
    if (trust.authorityFile.empty()) {
        SSL_CTX_set_default_verify_paths(context);
        _believeOwn(context, trust.ownCertificateFile);
        return;
    }
    ERR_clear_error();
    if (SSL_CTX_load_verify_file(context, trust.authorityFile.c_str()) != 1) {
        const unsigned long error = ERR_peek_error();
        ERR_clear_error();
        // Its first error is the system's where the file could not be opened.
        throw Error("Cannot read certificates from " + trust.authorityFile + ": " +
                    (ERR_SYSTEM_ERROR(error) ? systemErrorText(int(ERR_GET_REASON(error)))
                                             : std::string("it is no file in PEM form")));
    }
    _believeWithoutIssuer(context);
}

void checkTrust(const HttpTrust& trust) {
    const std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> context(
        SSL_CTX_new(TLS_client_method()), SSL_CTX_free);
    if (!context) {
        throw Error("TLS cannot be used: the system has no memory for it");
    }
    setTrust(context.get(), trust);
}

void expectServer(SSL* connection, const std::string& host) {
    X509_VERIFY_PARAM* const wanted = SSL_get0_param(connection);
    X509_VERIFY_PARAM_set_hostflags(wanted, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
    // RFC 6066, 3: an address is no server name.
    const bool isSet = _isAddress(host)
                           ? X509_VERIFY_PARAM_set1_ip_asc(wanted, host.c_str()) == 1
                           : X509_VERIFY_PARAM_set1_host(wanted, host.data(), host.size()) == 1 &&
                                 SSL_set_tlsext_host_name(connection, host.c_str()) == 1;
    if (!isSet) {
        throw Error("No certificate can be for the name " + host);
    }
}

std::string handshakeFailure(const SSL* connection, unsigned long error) {
    std::string failure = _certificateFailure(SSL_get_verify_result(connection));
    if (!failure.empty() && SSL_get_verify_mode(connection) != SSL_VERIFY_NONE) {
        return failure;
    }
    if (ERR_GET_LIB(error) != ERR_LIB_SSL) {
        return {};
    }
    switch (ERR_GET_REASON(error)) {
        case SSL_R_WRONG_VERSION_NUMBER:
        case SSL_R_HTTP_REQUEST:
            return "does not speak TLS: ask it with http://, where the network is trusted";
        case SSL_R_UNSUPPORTED_PROTOCOL:
        case SSL_R_TLSV1_ALERT_PROTOCOL_VERSION:
            return "speaks only TLS older than 1.2: it has to be set up to speak a newer one";
        default: {
            const char* const reason = ERR_reason_error_string(error);
            return std::string("does not agree on TLS: ") +
                   (reason ? reason : "for no known reason");
        }
    }
}

}  // namespace QZ
