// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Listeners.h"

#include <arpa/inet.h>

#include <algorithm>
#include <filesystem>

#include "CommandLine.h"
#include "HttpUrl.h"
#include "Login.h"
#include "MachinePaths.h"
#include "OwnCertificate.h"
#include "Product.h"

namespace QZ {

namespace {

constexpr const char* STANDARD_ADDRESS = "127.0.0.1";
constexpr std::uint16_t HTTPS_PORT = 5989;

// In the data folder.
constexpr const char* CERTIFICATE_FILE = "certificate.pem";
constexpr const char* KEY_FILE = "key.pem";

struct Address {
    std::string address;
    std::uint16_t port = 0;
    bool isSecure = false;
};

[[noreturn]] void _refuse(const std::string& text, const std::string& what) {
    throw UsageError("listen " + text + ": " + what);
}

bool _isAddress(const std::string& text) {
    unsigned char bytes[sizeof(in6_addr)];
    return inet_pton(AF_INET, text.c_str(), bytes) == 1 ||
           inet_pton(AF_INET6, text.c_str(), bytes) == 1;
}

Address _parse(const std::string& text, std::uint16_t httpPort) {
    if (_isAddress(text)) {
        return {text, httpPort};
    }
    const auto parts = splitUrl(text.find("://") == std::string::npos ? "http://" + text : text);
    if (!parts || (parts->scheme != "http" && parts->scheme != "https") || parts->userInfo ||
        (!parts->target.empty() && parts->target != "/") || !_isAddress(parts->host)) {
        _refuse(text, "an address is expected, such as 127.0.0.1, [::1]:5988 or https://0.0.0.0");
    }
    Address address{parts->host, 0, parts->scheme == "https"};
    address.port = portOf(*parts, address.isSecure ? HTTPS_PORT : httpPort);
    // 0 is any that is free.
    if (address.port == 0 && !parts->port.empty() && parts->port != ":0") {
        _refuse(text, "a port from 0 to 65535 is expected");
    }
    return address;
}

std::vector<Address> _addresses(const ServeRequest& request) {
    std::vector<std::string> texts = request.listen;
    if (texts.empty() && request.sockets.empty()) {
        texts.emplace_back(STANDARD_ADDRESS);
    }
    std::vector<Address> addresses;
    for (const std::string& text : texts) {
        const Address& address = addresses.emplace_back(_parse(text, std::uint16_t(request.port)));
        if (!address.isSecure && !request.allowsPlain && !isLoopback(address.address)) {
            _refuse(text,
                    "passwords would cross the network in the clear: ask for https://, or for "
                    "allow-plain where the network is trusted");
        }
    }
    return addresses;
}

bool _isAny(const std::string& address) {
    return address == "0.0.0.0" || address == "::";
}

// Each once.
void _add(std::vector<std::string>& names, const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        names.push_back(name);
    }
}

// For the addresses that it is asked at; where that is any, for those that the machine has. These
// come and go: a certificate that clients know is not made anew for one of them.
TlsFiles _ownFiles(const std::vector<Address>& addresses,
                   const std::function<void(const std::string&)>& say) {
    const std::string folder = MachinePaths::dataDirectory();
    TlsFiles files{folder + CERTIFICATE_FILE, folder + KEY_FILE, {}};
    std::vector<std::string> names = namesOfThisMachine();
    for (const Address& address : addresses) {
        if (!_isAny(address.address)) {
            _add(names, address.address);
        }
    }
    const bool isThere =
        std::filesystem::exists(files.certificate) && std::filesystem::exists(files.key);
    if (isThere && !isOwnForOthers(files.certificate, names)) {
        return files;
    }
    std::string reason;
    if (!Product::makeDataDirectory(reason)) {
        throw Error(reason);
    }
    for (const Address& address : addresses) {
        if (_isAny(address.address)) {
            for (const std::string& own : addressesOfThisMachine()) {
                _add(names, own);
            }
        }
    }
    makeOwnCertificate(files.certificate, files.key, names);
    if (isThere) {
        say("the certificate was for other names and is made anew: clients need the new " +
            files.certificate);
    }
    return files;
}

}  // namespace

Listeners makeListeners(const ServeRequest& request,
                        const std::function<void(const std::string& line)>& say) {
    const std::vector<Address> addresses = _addresses(request);
    Listeners listeners;
    for (const Address& address : addresses) {
        if (address.isSecure && !listeners.identity) {
            TlsFiles files = request.certificateFile.empty()
                                 ? _ownFiles(addresses, say)
                                 : TlsFiles{request.certificateFile, request.keyFile, {}};
            files.clientAuthorities = request.clientAuthorityFile;
            listeners.identity = std::make_shared<TlsIdentity>(std::move(files));
        }
        HttpListener& listener = listeners.all.emplace_back();
        listener.address = address.address;
        listener.port = address.port;
        listener.tls = address.isSecure ? listeners.identity : nullptr;
    }
    for (const std::string& path : request.sockets) {
        listeners.all.emplace_back().socketFile = path;
    }
    return listeners;
}

std::string urlOf(const HttpListener& listener, std::uint16_t port, const std::string& userInfo) {
    if (!listener.socketFile.empty()) {
        return "unix://" + listener.socketFile;
    }
    return (listener.tls ? "https://" : "http://") + userInfo +
           hostAndPort(_isAny(listener.address) ? namesOfThisMachine().front() : listener.address,
                       port);
}

std::string ownCertificateFile() {
    return MachinePaths::dataDirectory() + CERTIFICATE_FILE;
}

}  // namespace QZ
