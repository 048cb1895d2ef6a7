// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Listeners.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "CommandLine.h"
#include "OwnCertificate.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

using testing::HasSubstr;

class ListenersTest : public testing::Test {
protected:
    Listeners make(const ServeRequest& request) {
        return makeListeners(request, [this](const std::string& line) { said.push_back(line); });
    }
    std::vector<std::string> urls(const ServeRequest& request) {
        std::vector<std::string> urls;
        for (const HttpListener& listener : make(request).all) {
            urls.push_back(urlOf(listener, listener.port, ""));
        }
        return urls;
    }
    std::string refusal(const std::string& listen, bool allowsPlain = false) {
        ServeRequest request;
        request.listen = {listen};
        request.allowsPlain = allowsPlain;
        try {
            (void)make(request);
        } catch (const UsageError& error) {
            return error.what();
        }
        return {};
    }

    std::vector<std::string> said;
    const TemporaryFolder folder;
    const ScopedEnvironment data{"TAVQZ_DATA_DIR", folder.file("data").c_str()};
};

using Urls = std::vector<std::string>;

TEST_F(ListenersTest, AreLoopbackUnlessToldOtherwise) {
    EXPECT_EQ(Urls{"http://127.0.0.1:5988"}, urls({}));
    EXPECT_FALSE(folder.contains("data")) << "there is nothing to make";
}

TEST_F(ListenersTest, AreWhatIsNamedAndNothingElse) {
    ServeRequest request;
    request.port = 80;
    request.listen = {"::1", "127.0.0.2:81", "http://[::1]:82/", "https://127.0.0.1",
                      "https://[::]:0"};
    request.sockets = {"/run/tavqz.sock"};
    const Urls found = urls(request);
    EXPECT_EQ((Urls{"http://[::1]:80", "http://127.0.0.2:81", "http://[::1]:82",
                    "https://127.0.0.1:5989"}),
              Urls(found.begin(), found.begin() + 4));
    EXPECT_THAT(found[4], testing::StartsWith("https://"));
    EXPECT_THAT(found[4], testing::EndsWith(":0"));
    EXPECT_EQ("unix:///run/tavqz.sock", found[5]);
    request.listen.clear();
    EXPECT_EQ(Urls{"unix:///run/tavqz.sock"}, urls(request));
}

TEST_F(ListenersTest, LetNoPasswordCrossTheNetworkInTheClear) {
    for (const char* remote : {"0.0.0.0", "192.0.2.1:80", "[::]:80", "http://192.0.2.1"}) {
        EXPECT_THAT(refusal(remote), HasSubstr("in the clear")) << remote;
        EXPECT_EQ("", refusal(remote, true)) << remote;
    }
    EXPECT_EQ("", refusal("https://192.0.2.1"));
}

TEST_F(ListenersTest, RefuseWhatIsNoAddress) {
    for (const char* wrong :
         {"localhost", "127.0.0.1:http", "127.0.0.1:65536", "ftp://127.0.0.1", "https://",
          "https://a:b@127.0.0.1", "127.0.0.1/cimom", "127.0.0.1:", "[::1"}) {
        EXPECT_NE("", refusal(wrong)) << wrong;
    }
}

TEST_F(ListenersTest, MakeACertificateOnce) {
    ServeRequest request;
    request.listen = {"https://127.0.0.3:0"};
    EXPECT_TRUE(make(request).identity);
    EXPECT_EQ(folder.file("data/certificate.pem"), ownCertificateFile());
    const std::string certificate = folder.read("data/certificate.pem");
    EXPECT_THAT(certificate, testing::StartsWith("-----BEGIN CERTIFICATE-----"));
    struct stat key {};
    ASSERT_EQ(0, stat(folder.file("data/key.pem").c_str(), &key));
    EXPECT_EQ(0600U, key.st_mode & 0777U);
    EXPECT_TRUE(make(request).identity);
    EXPECT_EQ(certificate, folder.read("data/certificate.pem")) << "clients trust the first";
}

TEST_F(ListenersTest, MakeTheirOwnCertificateAnewForAnotherAddress) {
    ServeRequest request;
    request.listen = {"https://127.0.0.3:0"};
    (void)make(request);
    const std::string first = folder.read("data/certificate.pem");
    request.listen = {"https://0.0.0.0:0", "https://[::1]:0"};
    (void)make(request);
    EXPECT_EQ(first, folder.read("data/certificate.pem")) << "cards come and go";
    EXPECT_EQ(std::vector<std::string>(), said);
    request.listen = {"https://127.0.0.4:0"};
    (void)make(request);
    const std::string second = folder.read("data/certificate.pem");
    EXPECT_NE(first, second);
    ASSERT_EQ(1U, said.size());
    EXPECT_THAT(said.front(), HasSubstr(folder.file("data/certificate.pem")));
    (void)make(request);
    EXPECT_EQ(second, folder.read("data/certificate.pem"));
    EXPECT_EQ(1U, said.size());
}

TEST_F(ListenersTest, AreNamedInTheirCertificateByAllThatTheMachineHas) {
    ServeRequest request;
    request.listen = {"https://[::]:0"};
    (void)make(request);
    std::vector<std::string> names = namesOfThisMachine();
    for (const std::string& address : addressesOfThisMachine()) {
        names.push_back(address);
    }
    EXPECT_THAT(names, testing::IsSupersetOf({"localhost", "127.0.0.1", "::1"}));
    EXPECT_FALSE(isOwnForOthers(ownCertificateFile(), names));
    EXPECT_TRUE(isOwnForOthers(ownCertificateFile(), {"192.0.2.77"}));
    EXPECT_TRUE(isOwnForOthers(ownCertificateFile(), {"another"}));
    EXPECT_FALSE(isOwnForOthers(folder.file("missing.pem"), {"another"}));
}

TEST_F(ListenersTest, SayWhichCertificateCannotBeUsed) {
    ServeRequest request;
    request.listen = {"https://127.0.0.1:0"};
    request.certificateFile = request.keyFile = folder.write("no.pem", "nothing");
    try {
        (void)make(request);
        ADD_FAILURE() << "it is used";
    } catch (const Error& error) {
        EXPECT_THAT(error.what(), HasSubstr("no.pem"));
    }
}

}  // namespace
}  // namespace QZ
