// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <functional>
#include <string>

#include "HttpServer.h"

namespace QZ {

// Takes the alerts that a CIM server sends to a listener: ours, and any other that speaks CIM-XML.
class AlertListener {
public:
    // Called by any thread, one alert at a time and several at once. The server is told that the
    // alert has arrived once this returns; what it throws makes the server try again.
    using Take = std::function<void(const Pegasus::CIMInstance& alert)>;

    // Listens on loopback, or on another address of this machine; on a free port where none is
    // given. Throws Error where it cannot.
    explicit AlertListener(Take take, const std::string& address = "127.0.0.1",
                           std::uint16_t port = 0);

    // Waits for alerts that are being taken, for ten seconds at most.
    ~AlertListener();

    // What a CIM_ListenerDestinationCIMXML has as its Destination.
    const std::string& url() const { return _url; }

private:
    static HttpServerOptions _options(const std::string& address, std::uint16_t port);
    void _handle(const HttpRequest& request, HttpReply& reply) const;

    Take _take;
    HttpServer _server;
    std::string _url;
};

}  // namespace QZ
