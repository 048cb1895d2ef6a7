// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertListener.h"

#include <utility>

#include "ExportMessage.h"
#include "HttpUrl.h"

namespace QZ {

AlertListener::AlertListener(Take take, const std::string& address, std::uint16_t port)
    : _take(std::move(take)),
      _server(_options(address, port),
              [this](const HttpRequest& request, HttpReply& reply) { _handle(request, reply); }) {
    _url = "http://" + hostAndPort(address, _server.port()) + "/alerts";
}

AlertListener::~AlertListener() {
    (void)_server.stop(std::chrono::seconds(10));
}

HttpServerOptions AlertListener::_options(const std::string& address, std::uint16_t port) {
    HttpServerOptions options;
    options.listeners.front().address = address;
    options.listeners.front().port = port;
    return options;
}

void AlertListener::_handle(const HttpRequest& request, HttpReply& reply) const {
    ExportRequest message;
    try {
        message = decodeExportRequest(request.body);
    } catch (const NoExportMessage& error) {
        reply.setStatus(400);
        reply.addHeader("CIMError", "request-not-valid");
        reply.setLogText(error.what());
        return;
    }
    _take(message.alert);
    for (const auto& [name, value] : exportAnswerHeaders()) {
        reply.addHeader(name, value);
    }
    reply.write(encodeExportAnswer(message.messageId));
}

}  // namespace QZ
