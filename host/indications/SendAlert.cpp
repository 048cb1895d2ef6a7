// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SendAlert.h"

#include <atomic>

#include "ExportMessage.h"
#include "HttpClient.h"
#include "ListenerUrl.h"

namespace QZ {

namespace {

// A listener takes an alert and is done; who stops the server waits as long as this.
HttpClient::Limits _limits() {
    HttpClient::Limits limits;
    limits.connecting = std::chrono::seconds(5);
    limits.answering = std::chrono::seconds(10);
    limits.answerBytes = std::size_t(64) * 1024;
    return limits;
}

}  // namespace

void sendAlert(const DeliveryQueues::Alert& alert, const HttpTrust& trust) {
    static std::atomic<unsigned> messages{0};
    const ListenerUrl url = parseListenerUrl(alert.url);
    // A connection of its own: on one that was kept it could not be told whether an alert that got
    // no answer has arrived.
    HttpClient client({url.host, url.port, url.isSecure, trust}, _limits());
    const ExportRequest request{std::to_string(++messages), alert.instance};
    const HttpAnswer answer =
        client.post(url.target, exportRequestHeaders(), encodeExportRequest(request));
    if (answer.status != 200) {
        throw Error("it answered with HTTP status " + std::to_string(answer.status));
    }
    checkExportAnswer(answer.body, request.messageId);
}

}  // namespace QZ
