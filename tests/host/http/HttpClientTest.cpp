// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpClient.h"

#include <gmock/gmock.h>

#include "Error.h"
#include "HttpServer.h"
#include "TemporaryFolder.h"
#include "TlsServer.h"

using namespace QZ;
using testing::HasSubstr;

namespace {

std::string _echo(const std::string& body) {
    return "<" + body + ">";
}

HttpPeer _peer(std::uint16_t port, const HttpTrust& trust, const char* host = "127.0.0.1") {
    return {host, port, true, trust};
}

std::string _post(HttpClient& client, const std::string& body = "one") {
    return client.post("/", {}, body).body;
}

// What came of a request to a server.
std::string _asked(const HttpPeer& peer) {
    HttpClient::Limits limits;
    limits.connecting = std::chrono::milliseconds(500);
    HttpClient client(peer, limits);
    try {
        return _post(client);
    } catch (const Error& error) {
        return error.what();
    }
}

std::string _askedOf(const TestCertificate& shown, const HttpTrust& trust,
                     const char* host = "127.0.0.1") {
    const TlsServer server(shown, _echo);
    return _asked(_peer(server.port(), trust, host));
}

TestCertificate _issued(const TestCertificate& authority, const char* names) {
    TestCertificate::Wishes wishes;
    wishes.issuer = &authority;
    wishes.names = names;
    return TestCertificate(wishes);
}

}  // namespace

TEST(HttpClient, AsksOverTls) {
    const TestCertificate authority;
    const CertificateFile file(authority);
    TlsServer server(_issued(authority, "IP:127.0.0.1"), _echo);
    HttpClient client(_peer(server.port(), {file.path, false}));
    EXPECT_EQ(_post(client, "one"), "<one>");
    const std::string large(1000000, 'x');
    EXPECT_EQ(_post(client, large), "<" + large + ">");
    EXPECT_EQ(server.connections(), 1U) << "one connection for both";
}

TEST(HttpClient, ConnectsAnewWhereTheServerHasClosed) {
    const TestCertificate own;
    const CertificateFile file(own);
    TlsServer::Settings settings;
    settings.closesAfterAnswer = true;
    TlsServer server(own, _echo, settings);
    HttpClient client(_peer(server.port(), {file.path, false}));
    EXPECT_EQ(_post(client, "one"), "<one>");
    EXPECT_EQ(_post(client, "two"), "<two>");
    EXPECT_EQ(server.connections(), 2U);
}

TEST(HttpClient, TakesACertificateForTheNameThatItAsks) {
    const TestCertificate authority;
    const CertificateFile file(authority);
    const TestCertificate named = _issued(authority, "DNS:localhost");
    TlsServer server(named, _echo);
    EXPECT_EQ(_asked(_peer(server.port(), {file.path, false}, "localhost")), "<one>");
    EXPECT_EQ(server.serverName(), "localhost") << "RFC 6066, 3";
    EXPECT_THAT(_askedOf(named, {file.path, false}),
                HasSubstr("has a certificate for another name: "));
    EXPECT_THAT(_askedOf(_issued(authority, "DNS:l*st"), {file.path, false}, "localhost"),
                HasSubstr("for another name"));
    EXPECT_THAT(_askedOf(_issued(authority, "DNS:127.0.0.1"), {file.path, false}),
                HasSubstr("for another name"))
        << "an address is no name";
}

TEST(HttpClient, TrustsAServersOwnCertificate) {
    const TestCertificate authority;
    const TestCertificate own = _issued(authority, "IP:127.0.0.1");
    EXPECT_EQ(_askedOf(own, {CertificateFile(own).path, false}), "<one>")
        << "without that of its issuer";
}

TEST(HttpClient, RefusesACertificateOfNobodyItKnows) {
    const TestCertificate authority;
    const TestCertificate other;
    const TestCertificate issued = _issued(authority, "IP:127.0.0.1");
    const char* const refusal = "has a certificate from nobody who is trusted here: name the file";
    EXPECT_THAT(_askedOf(issued, {CertificateFile(other).path, false}), HasSubstr(refusal));
    EXPECT_THAT(_askedOf(issued, {}), HasSubstr(refusal)) << "the system's authorities";
    EXPECT_THAT(_askedOf(authority, {}), HasSubstr(refusal)) << "signed by itself";
}

TEST(HttpClient, TrustsTheMachinesOwnServerToo) {
    const TestCertificate own = _issued(TestCertificate(), "IP:127.0.0.1");
    HttpTrust trust;
    trust.ownCertificateFile = "/nowhere";
    EXPECT_THAT(_askedOf(own, trust), HasSubstr("nobody who is trusted here"));
    const CertificateFile file(own);
    trust.ownCertificateFile = file.path;
    EXPECT_EQ(_askedOf(own, trust), "<one>");
    const CertificateFile other{TestCertificate()};
    trust.authorityFile = other.path;
    EXPECT_THAT(_askedOf(own, trust), HasSubstr("nobody who is trusted here")) << "that file alone";
}

TEST(HttpClient, AsksOverAUnixSocket) {
    const TemporaryFolder folder;
    HttpServerOptions options;
    options.listeners.front().socketFile = folder.file("s");
    HttpPeer peer{"127.0.0.1", 1};
    peer.socketFile = options.listeners.front().socketFile;
    EXPECT_THAT(_asked(peer), HasSubstr("unix://" + peer.socketFile + " cannot be reached"));
    HttpServer server(options, [](const HttpRequest& request, HttpReply& reply) {
        reply.write("<" + request.body + ">");
    });
    HttpClient client(peer);
    EXPECT_EQ(_post(client, "one"), "<one>");
    EXPECT_EQ(_post(client, "two"), "<two>") << "over the same connection";
    peer.socketFile = std::string(200, 'a');
    EXPECT_THAT(_asked(peer), HasSubstr("its name is too long"));
}

TEST(HttpClient, RefusesACertificateOutsideItsTime) {
    const TestCertificate authority;
    const CertificateFile file(authority);
    TestCertificate::Wishes wishes;
    wishes.issuer = &authority;
    wishes.validTo = -60;
    EXPECT_THAT(_askedOf(TestCertificate(wishes), {file.path, false}),
                HasSubstr("that has expired"));
    wishes.validFrom = 1800;
    wishes.validTo = 3600;
    EXPECT_THAT(_askedOf(TestCertificate(wishes), {file.path, false}),
                HasSubstr("is not valid yet"));
}

TEST(HttpClient, AcceptsAnyCertificateWhereItIsTold) {
    TestCertificate::Wishes wishes;
    wishes.names = "DNS:elsewhere";
    wishes.validTo = -60;
    HttpTrust any;
    any.acceptsAny = true;
    EXPECT_EQ(_askedOf(TestCertificate(wishes), any), "<one>");
}

TEST(HttpClient, SpeaksTls12AndNothingOlder) {
    const TestCertificate own;
    const CertificateFile file(own);
    TlsServer::Settings settings;
    settings.newestVersion = TLS1_2_VERSION;
    const TlsServer newer(own, _echo, settings);
    EXPECT_EQ(_asked(_peer(newer.port(), {file.path, false})), "<one>");
    settings.newestVersion = TLS1_1_VERSION;
    const TlsServer older(own, _echo, settings);
    EXPECT_THAT(_asked(_peer(older.port(), {file.path, false})),
                HasSubstr("only TLS older than 1.2"));
}

TEST(HttpClient, SaysThatAServerSpeaksNoTls) {
    HttpServer server({}, [](const HttpRequest&, HttpReply& reply) { reply.write("plain"); });
    EXPECT_THAT(_asked(_peer(server.port(), {})), HasSubstr("does not speak TLS: "));
}

TEST(HttpClient, WaitsForAHandshakeOnlySoLong) {
    const SilentServer server;
    EXPECT_THAT(_asked(_peer(server.port(), {})),
                HasSubstr("does not agree on TLS: it takes too long"));
}

TEST(HttpClient, RefusesAFileThatHoldsNoCertificates) {
    const TemporaryFolder folder;
    const auto refusal = [](const std::string& path) -> std::string {
        try {
            const HttpClient client(_peer(1, {path, false}));
        } catch (const Error& error) {
            return error.what();
        }
        return "accepted";
    };
    const std::string missing = folder.file("missing.pem");
    EXPECT_EQ(refusal(missing),
              "Cannot read certificates from " + missing + ": No such file or directory");
    const std::string other = folder.write("other.pem", "no certificate\n");
    EXPECT_EQ(refusal(other),
              "Cannot read certificates from " + other + ": it is no file in PEM form");
    EXPECT_THAT(refusal(folder.path()), HasSubstr("Cannot read certificates from "));
    EXPECT_EQ(refusal(""), "accepted") << "the system's";
}
