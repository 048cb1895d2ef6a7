// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// The server over TLS, with a certificate that it made itself.

#include <gmock/gmock.h>
#include <openssl/pem.h>
#include <sys/stat.h>

#include "Error.h"
#include "HttpClient.h"
#include "HttpServer.h"
#include "OwnCertificate.h"
#include "RawClient.h"
#include "TemporaryFolder.h"
#include "TestCertificate.h"
#include "TlsIdentity.h"

using namespace QZ;
using std::chrono::milliseconds;
using testing::HasSubstr;
using testing::Not;

namespace {

// The files of a server that makes its own certificate.
struct OwnFiles {
    OwnFiles() { make(); }
    void make() const { makeOwnCertificate(files.certificate, files.key, {"127.0.0.1", "box"}); }

    TemporaryFolder folder;
    TlsFiles files{folder.file("server.crt"), folder.file("server.key"), ""};
};

HttpServerOptions _options(const std::shared_ptr<const TlsIdentity>& identity) {
    HttpServerOptions options;
    options.listeners.front().tls = identity;
    return options;
}

void _echo(const HttpRequest& request, HttpReply& reply) {
    reply.write("<" + request.body + ">");
}

std::string _post(const HttpServer& server, const std::string& trusted, const std::string& body) {
    HttpClient client({"127.0.0.1", server.port(), true, {trusted, false}});
    return client.post("/", {}, body).body;
}

// A client of OpenSSL's own, for what ours does not do.
class OtherClient {
public:
    OtherClient(std::uint16_t port, int newest, const TestCertificate* shown)
        : _tcp(port), _context(SSL_CTX_new(TLS_client_method()), SSL_CTX_free) {
        SSL_CTX_set_max_proto_version(_context.get(), newest);
        // Else OpenSSL itself would not speak the old ones.
        SSL_CTX_set_cipher_list(_context.get(), "ALL:@SECLEVEL=0");
        if (shown) {
            SSL_CTX_use_certificate(_context.get(), shown->certificate());
            SSL_CTX_use_PrivateKey(_context.get(), shown->key());
        }
        _connection.reset(SSL_new(_context.get()));
        SSL_set_fd(_connection.get(), _tcp.descriptor());
    }

    bool connects() { return SSL_connect(_connection.get()) == 1; }

    std::string ask(const std::string& text) {
        SSL_write(_connection.get(), text.data(), int(text.size()));
        std::string answer;
        char part[4096];
        for (int count = 1; count > 0;) {
            count = SSL_read(_connection.get(), part, sizeof part);
            answer.append(part, std::size_t(std::max(count, 0)));
        }
        return answer;
    }

private:
    RawClient _tcp;
    std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> _context;
    std::unique_ptr<SSL, decltype(&SSL_free)> _connection{nullptr, SSL_free};
};

const char* const LAST_REQUEST =
    "POST / HTTP/1.1\r\nHost: a\r\nConnection: close\r\nContent-Length: 0\r\n\r\n";

}  // namespace

TEST(HttpsServer, AnswersWithItsOwnCertificate) {
    const OwnFiles own;
    const HttpServer server(_options(std::make_shared<TlsIdentity>(own.files)), _echo);
    EXPECT_EQ(_post(server, own.files.certificate, "one"), "<one>");
    const std::string longBody(1'000'000, 'x');
    EXPECT_EQ(_post(server, own.files.certificate, longBody), "<" + longBody + ">");
    EXPECT_THROW(_post(server, "", "one"), Error) << "the system's authorities do not know it";
}

TEST(HttpsServer, KeepsItsKeyToItsOwner) {
    const OwnFiles own;
    struct stat status {};
    ASSERT_EQ(stat(own.files.key.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(HttpsServer, ShowsANewCertificateToNewConnections) {
    const OwnFiles own;
    const auto identity = std::make_shared<TlsIdentity>(own.files);
    const HttpServer server(_options(identity), _echo);
    HttpClient before({"127.0.0.1", server.port(), true, {own.files.certificate, false}});
    EXPECT_EQ(before.post("/", {}, "one").body, "<one>");
    own.make();
    EXPECT_THROW(_post(server, own.files.certificate, "new"), Error) << "not read yet";
    identity->reload();
    EXPECT_EQ(_post(server, own.files.certificate, "new"), "<new>");
    EXPECT_EQ(before.post("/", {}, "two").body, "<two>") << "goes on";

    own.folder.write("server.key", "no key");
    EXPECT_THROW(identity->reload(), Error);
    EXPECT_EQ(_post(server, own.files.certificate, "still"), "<still>");
}

TEST(HttpsServer, SpeaksNothingOlderThanTls12) {
    const OwnFiles own;
    const HttpServer server(_options(std::make_shared<TlsIdentity>(own.files)), _echo);
    EXPECT_FALSE(OtherClient(server.port(), TLS1_1_VERSION, nullptr).connects());
    EXPECT_TRUE(OtherClient(server.port(), TLS1_2_VERSION, nullptr).connects());
}

TEST(HttpsServer, KnowsAClientByItsCertificate) {
    const OwnFiles own;
    const TestCertificate authority;
    TestCertificate::Wishes wishes;
    wishes.issuer = &authority;
    const TestCertificate client(wishes);
    TlsFiles files = own.files;
    files.clientAuthorities = own.folder.write("clients.pem", authority.pem());
    HttpServerOptions options = _options(std::make_shared<TlsIdentity>(files));
    options.authenticate = [](const Login& login, const TakeVerdict&) {
        return Verdict{Verdict::Accepted, {login.certificateName, {}}, {}};
    };
    const HttpServer server(options, [](const HttpRequest& request, HttpReply& reply) {
        reply.write("<" + request.caller.name + ">");
    });
    OtherClient known(server.port(), TLS1_3_VERSION, &client);
    ASSERT_TRUE(known.connects());
    char name[64] = "";
    X509_NAME_get_text_by_NID(X509_get_subject_name(client.certificate()), NID_commonName, name,
                              sizeof name);
    EXPECT_STRNE(name, "");
    EXPECT_THAT(known.ask(LAST_REQUEST), HasSubstr("<" + std::string(name) + ">"));

    OtherClient nobody(server.port(), TLS1_3_VERSION, nullptr);
    ASSERT_TRUE(nobody.connects());
    EXPECT_THAT(nobody.ask(LAST_REQUEST), HasSubstr("<>"));

    const TestCertificate stranger;
    EXPECT_FALSE(OtherClient(server.port(), TLS1_2_VERSION, &stranger).connects());
}

TEST(HttpsServer, ClosesWhereNoHandshakeComes) {
    const OwnFiles own;
    HttpServerOptions options = _options(std::make_shared<TlsIdentity>(own.files));
    options.limits.header = milliseconds(20);
    const HttpServer server(options, _echo);
    EXPECT_EQ(RawClient(server.port()).receive(), "");
    const RawClient plain(server.port());
    plain.send(LAST_REQUEST);
    char part[1000] = "";
    EXPECT_LE(plain.receive(part, sizeof part - 1), 100);
    EXPECT_THAT(std::string(part), Not(HasSubstr("HTTP")));
}

TEST(HttpsServer, AsksNobodyForTheKeysPassword) {
    const OwnFiles own;
    const TestCertificate other;
    FILE* const file = std::fopen(own.files.key.c_str(), "w");
    ASSERT_TRUE(file);
    EXPECT_EQ(PEM_write_PKCS8PrivateKey(file, other.key(), EVP_aes_256_cbc(), "secret", 6, nullptr,
                                        nullptr),
              1);
    ASSERT_EQ(std::fclose(file), 0);
    try {
        const TlsIdentity identity(own.files);
        ADD_FAILURE() << "it is used";
    } catch (const Error& error) {
        EXPECT_EQ(error.what(), "Cannot use " + own.files.key +
                                    " as the key of the server's certificate: it is encrypted, "
                                    "and nobody is asked for its password");
    }
}

TEST(HttpsServer, SaysWhichFileItCannotUse) {
    const OwnFiles own;
    const auto refusal = [](const TlsFiles& files) {
        try {
            const TlsIdentity identity(files);
        } catch (const Error& error) {
            return std::string(error.what());
        }
        return std::string("taken");
    };
    EXPECT_THAT(refusal({"/nowhere/a.crt", own.files.key, ""}),
                HasSubstr("/nowhere/a.crt as the server's certificate: No such file"));
    EXPECT_THAT(refusal({own.files.certificate, own.files.certificate, ""}),
                HasSubstr("as the key of the server's certificate: "));
    const OwnFiles other;
    EXPECT_THAT(refusal({own.files.certificate, other.files.key, ""}), HasSubstr("mismatch"));
    EXPECT_THAT(refusal({own.files.certificate, own.files.key, own.files.key}),
                HasSubstr("as the authorities of clients: "));
}
