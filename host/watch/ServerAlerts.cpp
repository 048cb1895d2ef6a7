// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServerAlerts.h"

#include <Pegasus/Common/Exception.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <random>
#include <utility>

#include "CimText.h"
#include "Error.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Of CIM_IndicationFilter, CIM_ListenerDestination and CIM_IndicationSubscription.
constexpr Uint16 _transient = 3;
constexpr Uint16 _enabled = 2;

// The address of this machine that the server's is reached from, as numbers. Nothing is sent.
std::string _addressTowards(const ServerAddress& server) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    const std::string port = std::to_string(server.port);
    if (getaddrinfo(server.host.c_str(), port.c_str(), &hints, &found) != 0) {
        throw Error("The server at " + server.text() + ": there is no host of that name");
    }
    std::string address;
    for (const addrinfo* at = found; at && address.empty(); at = at->ai_next) {
        const int socket = ::socket(at->ai_family, at->ai_socktype | SOCK_CLOEXEC, 0);
        sockaddr_storage own{};
        socklen_t size = sizeof own;
        auto* const name = reinterpret_cast<sockaddr*>(&own);
        char text[NI_MAXHOST];
        if (socket >= 0 && connect(socket, at->ai_addr, at->ai_addrlen) == 0 &&
            getsockname(socket, name, &size) == 0 &&
            getnameinfo(name, size, text, sizeof text, nullptr, 0, NI_NUMERICHOST) == 0) {
            address = text;
        }
        if (socket >= 0) {
            close(socket);
        }
    }
    freeaddrinfo(found);
    if (address.empty()) {
        throw Error("The server at " + server.text() + " cannot be reached from here");
    }
    return address;
}

// Unlike that of any other watch.
std::string _uniqueName() {
    char host[256] = {};
    (void)gethostname(host, sizeof host - 1);
    return std::string("tavqz watch ") + host + " " + std::to_string(getpid()) + " " +
           std::to_string(std::random_device()());
}

template <class T>
void _set(CIMInstance& instance, const char* name, const T& value) {
    instance.addProperty(CIMProperty(CIMName(name), CIMValue(value)));
}

}  // namespace

ServerAlerts::ServerAlerts(const ServerAddress& address, const HttpTrust& trust)
    : _address(address), _server(address, trust) {}

ServerAlerts::~ServerAlerts() {
    ServerAlerts::stop();
}

void ServerAlerts::start(Take take) {
    _listener = std::make_unique<AlertListener>(
        [this, take = std::move(take)](const CIMInstance& alert) {
            const std::lock_guard<std::mutex> lock(_mutex);
            take(alert);
        },
        _addressTowards(_address));
    try {
        _subscribe();
    } catch (...) {
        stop();
        throw;
    }
}

void ServerAlerts::_subscribe() {
    const String name = make_String(_uniqueName());
    CIMInstance filter(CIMName("CIM_IndicationFilter"));
    _set(filter, "Name", name);
    _set(filter, "SourceNamespace", String(MODEL_NAMESPACE));
    _set(filter, "Query", String("SELECT * FROM CIM_AlertIndication"));
    _set(filter, "QueryLanguage", String("WQL"));
    CIMInstance destination(CIMName("CIM_ListenerDestinationCIMXML"));
    _set(destination, "Name", name);
    _set(destination, "Destination", make_String(_listener->url()));
    _set(destination, "PersistenceType", _transient);
    const std::string interop = _server.interopNamespace("CIM_IndicationFilter");
    if (interop.empty()) {
        throw Error("The server at " + _address.text() + " keeps no subscriptions");
    }
    _interop = CIMNamespaceName(make_String(interop));
    CIMInstance subscription(CIMName("CIM_IndicationSubscription"));
    _set(subscription, "Filter", _create(filter));
    _set(subscription, "Handler", _create(destination));
    _set(subscription, "SubscriptionState", _enabled);
    _create(subscription);
}

CIMObjectPath ServerAlerts::_create(CIMInstance instance) {
    instance.setPath(CIMObjectPath(String(), _interop, instance.getClassName()));
    _created.push_back(_server.createInstance(instance));
    return _created.back();
}

void ServerAlerts::stop() noexcept {
    for (; !_created.empty(); _created.pop_back()) {
        try {
            _server.deleteInstance(_created.back());
        } catch (const std::exception&) {
            // The server is gone, or has deleted it.
        } catch (const Exception&) {
        }
    }
    _listener.reset();
}

}  // namespace QZ
